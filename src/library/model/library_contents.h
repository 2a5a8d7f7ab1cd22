#pragma once

#include "library/library.h"
#include "library/model/capture_table.h"
#include "library/model/search_index.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <memory>
#include <optional>

// The files of the Library's folder with what is known of them, and their texts as they are searched. Reads
// both on workers and follows the Library by its fine signals. Main thread only.
class LibraryContents : public QObject {
    Q_OBJECT
public:
    using Row = CaptureTable::Row;
    enum class Reading { Nothing, Files, Texts, Done };

    // It outlives the contents. Reads nothing by itself.
    explicit LibraryContents(Library &library, QObject *parent = nullptr);
    ~LibraryContents() override;

    // Reads everything at once, for who can wait.
    void reload();
    // The same on workers: first the files, then what is known of them, then the texts. Until those are
    // there, only names are found.
    void load();
    Reading reading() const { return m_reading; }

    const CaptureTable &table() const { return m_table; }
    // As the captures of the table have it; an unknown name gets a number of its own.
    quint32 sourceNumber(const QString &application) { return m_table.sourceNumber(application); }
    QString path(Row row) const { return m_folder + QLatin1Char('/') + m_table.at(row).name; }
    LibraryItem item(Row row) const;
    // Nothing for a file that isn't of the folder.
    std::optional<Row> find(const QString &path) const;
    // The slots of the captures with these words in their name, application, text or description.
    SearchIndex::Slots search(const QString &words) const { return m_index->find(words); }

Q_SIGNALS:
    // All of it was read anew.
    void replaced();
    // Files came, went or are known otherwise than before.
    void changed();
    void removed(const QStringList &paths);
    void renamed(const QString &oldPath, const QString &newPath);
    // Of these files something else than their place: their picture or their star.
    void cardsChanged(const QStringList &paths);
    // More may be found than before.
    void textsRead();
    void readingChanged();

private:
    struct Loaded;
    struct Document;
    struct Known;

    using Documents = std::shared_ptr<const std::vector<Document>>;
    enum class Fields { Names, All };

    static std::shared_ptr<Loaded> filesOf(const QString &folder, const FolderWatch::Listing &listing);
    void takeFiles(Loaded &loaded);
    void makeOrders();
    void learn();
    void take(const Known &known);
    Documents documents() const;
    bool isThere(const Document &document) const;
    void buildIndex(Fields fields, Documents documents);
    void takeIndex(std::unique_ptr<SearchIndex> index, const std::vector<Document> &documents, Fields fields);

    bool follows() const { return m_reading == Reading::Texts || m_reading == Reading::Done; }
    bool follows(const QStringList &paths);
    bool isMine(const QString &path) const;
    void filesCame(const QStringList &paths);
    void filesWent(const QStringList &paths);
    void fileRenamed(const QString &oldPath, const QString &newPath);
    void namesChanged(const QStringList &names);
    void folderChanged();
    QStringList takeIn(const QStringList &paths);
    void takeOut(const QStringList &paths);
    void readMeta(Row row);
    void indexRow(Row row);
    std::array<QString, 3> fieldsOf(Row row) const;

    Library &m_library;
    QString m_folder;
    CaptureTable m_table;
    Documents m_listed; // all captures as they were listed, until they are indexed
    std::unique_ptr<SearchIndex> m_index;
    Reading m_reading = Reading::Nothing;
    QStringList m_missed;             // told while a worker listed the files
    int m_generation = 0;             // of what workers read; older results are dropped
    QSet<QString> m_changedMeanwhile; // names of which something changed while workers read
};
