#pragma once

#include "library/model/library_choices.h"
#include "library/model/library_contents.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class Clock;
class Defaults;

// What a Library window shows: the files, which of them match the query and the sidebar, their order and
// sections, the selection, and what is under way. It runs without a window. What is shown is made anew within
// a frame for a hundred thousand captures. Main thread only.
class LibraryModel : public QObject {
    Q_OBJECT
public:
    // All outlive the model. Reads nothing by itself: call `reload` or `load`.
    LibraryModel(Library &library, Defaults &defaults, const Clock &clock, QObject *parent = nullptr);
    ~LibraryModel() override;

    // As in LibraryContents.
    void reload() { m_contents.reload(); }
    void load() { m_contents.load(); }
    using Reading = LibraryContents::Reading;
    Reading reading() const { return m_contents.reading(); }

    // Files
    int itemCount() const { return table().size(); }
    qint64 totalBytes() const;
    QList<LibraryItem> items() const; // newest first
    // The `count` largest, the largest first.
    QList<LibraryItem> largest(int count) const;

    // What is asked for
    QString query() const { return m_query; }
    void setQuery(const QString &query);
    SidebarItem sidebar() const { return m_sidebar; }
    void setSidebar(const SidebarItem &sidebar);
    DateRange dateRange() const { return m_dateRange; }
    void setDateRange(DateRange range);
    LibrarySort sort() const { return m_sort; }
    void setSort(LibrarySort sort);
    double cardSize() const { return m_cardSize; }
    void setCardSize(double size);

    // The sidebar
    // In order of creation; none until the catalog is read.
    QList<LibraryCollection> collections() const;
    int count(const SidebarItem &sidebar) const;
    struct Application {
        QString name;
        int count = 0;
        bool operator==(const Application &) const = default;
    };
    QList<Application> apps() const;
    // Of what the sidebar has chosen.
    QString title() const;

    // What is shown, in order
    int visibleCount() const { return static_cast<int>(m_visible.size()); }
    LibraryItem visibleItem(int index) const { return item(m_visible[static_cast<size_t>(index)]); }
    QString visiblePath(int index) const { return path(m_visible[static_cast<size_t>(index)]); }
    bool isVisibleFavorite(int index) const
    {
        return table().at(m_visible[static_cast<size_t>(index)]).isFavorite;
    }
    // Its place among them, or -1.
    int visibleIndex(const QString &path) const;
    QList<LibraryItem> visible() const;
    struct Section {
        QString title; // empty when there are no sections
        int first = 0;
        int count = 0;
        bool operator==(const Section &) const = default;
    };
    const QList<Section> &sections() const { return m_sections; }

    // The selection, which may hold what isn't shown at the moment
    const QSet<QString> &selection() const { return m_selection; }
    bool isSelected(const QString &path) const { return m_selection.contains(path); }
    void setSelection(const QSet<QString> &paths);
    // In the order shown, without what isn't.
    QStringList selectedPaths() const;
    QList<LibraryItem> selectedItems() const;
    void click(const QString &path, Qt::KeyboardModifiers modifiers);
    // Selects the one so many places from the first selected one.
    void move(int delta);
    void selectAll();

    std::optional<QString> previewing() const { return m_previewing; }
    void setPreviewing(const std::optional<QString> &path);
    bool showsInspector() const { return m_showsInspector; }
    void setShowsInspector(bool on);
    const std::optional<LibrarySheet> &sheet() const { return m_sheet; }
    void setSheet(const std::optional<LibrarySheet> &sheet);

    // What is under way, in words.
    std::optional<QString> indexProgress() const { return m_indexProgress; }
    std::optional<QString> aiProgress() const { return m_aiProgress; }
    void setAiProgress(const std::optional<QString> &text);

    Library &library() { return m_library; }

Q_SIGNALS:
    // What is shown, or its order.
    void visibleChanged();
    // Of these files something else than their place: their picture or their star.
    void cardsChanged(const QStringList &paths);
    // Rows, names or counts.
    void sidebarChanged();
    void selectionChanged();
    void previewingChanged();
    void inspectorChanged();
    void sheetChanged();
    void cardSizeChanged();
    void progressChanged();
    void readingChanged();

private:
    using Row = CaptureTable::Row;
    struct Counts;

    const CaptureTable &table() const { return m_contents.table(); }
    QString path(Row row) const { return m_contents.path(row); }
    LibraryItem item(Row row) const { return m_contents.item(row); }
    std::optional<LibraryCollection> collectionOf(const QUuid &id) const;
    const Counts &counts() const;

    void contentsReplaced();
    void contentsChanged();
    void forget(const QStringList &paths);
    void fileRenamed(const QString &oldPath, const QString &newPath);
    void tellIndexing(int done, int total);
    void watchMidnight();
    void updateVisible();
    void updateSections();
    std::function<bool(Row)> sidebarRule();
    void selectOnly(const QString &path);

    Library &m_library;
    Defaults &m_defaults;
    const Clock &m_clock;
    LibraryContents m_contents;

    QString m_query;
    SidebarItem m_sidebar = LibraryFilter::All;
    DateRange m_dateRange = DateRange::Any;
    LibrarySort m_sort = LibrarySort::Newest;
    double m_cardSize = 220;

    std::vector<Row> m_visible;
    std::vector<int> m_places; // by row; -1 for what isn't shown
    QList<Section> m_sections;
    mutable std::unique_ptr<Counts> m_counts; // made when first asked for
    QTimer m_update;                          // gathers the changes of one round of the event loop
    QTimer m_midnight;

    QSet<QString> m_selection;
    QString m_anchor; // of a selection that reaches from one to another
    std::optional<QString> m_previewing;
    bool m_showsInspector = false;
    std::optional<LibrarySheet> m_sheet;
    std::optional<QString> m_indexProgress;
    std::optional<QString> m_aiProgress;
};
