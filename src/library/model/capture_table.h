#pragma once

#include "library/folder_watch.h"
#include "library/library_filter.h"
#include "library/model/search_index.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

// The files of the Library as lists need them, in the four orders that they can be shown in. Rows are numbers
// that a file keeps as long as it is there. A plain value: made on any thread, used by one.
class CaptureTable {
public:
    using Row = quint32;
    static constexpr qint64 kUnknownDate = std::numeric_limits<qint64>::min();

    struct File {
        QString name;
        qint64 modified = kUnknownDate; // milliseconds since 1970
        qint64 bytes = 0;
    };
    struct Capture : File {
        QByteArray sortKey; // by which names are ordered; empty while that isn't known
        quint32 source = 0; // as sourceNumber has it; 0 for none
        SearchIndex::Slot slot = 0;
        bool isVideo = false;
        bool isFavorite = false;
        bool isThere = false;
    };

    // The images and films at the top level of a folder, hidden ones left out.
    static std::vector<File> list(const QString &folder);
    static std::vector<File> filesOf(const FolderWatch::Listing &listing);

    // Rows for these files, in their order.
    static CaptureTable of(const std::vector<File> &files);
    // All orders take some tenths of a second for a hundred thousand, which are better spent on a worker:
    // `files` is what that needs, by row, and its orders are taken over if nothing has changed since.
    struct Orders;
    std::vector<File> files() const;
    static std::shared_ptr<Orders> ordersOf(const std::vector<File> &files);
    bool take(Orders &orders);

    // Takes the named ones out, and takes these in or their new dates and sizes. The rows of the latter.
    std::vector<Row> change(const QStringList &removed, const std::vector<File> &present);

    std::optional<Row> find(const QString &name) const;
    const Capture &at(Row row) const { return m_captures[row]; }
    Capture &at(Row row) { return m_captures[row]; }
    // Of all rows, those that are free too.
    Row rowCount() const { return static_cast<Row>(m_captures.size()); }
    int size() const { return static_cast<int>(m_rows.size()); }

    // The rows in that order. Ties are in the order of newest first, and then by name.
    const std::vector<Row> &order(LibrarySort sort) const;

    quint32 sourceNumber(const QString &application);
    const QString &source(quint32 number) const { return m_sources[number]; }
    quint32 sourceCount() const { return static_cast<quint32>(m_sources.size()); }

    // Bytes whose order is that in which people put names: whatever the case and the marks on letters, and
    // with numbers by their value, "Shot 2" before "Shot 10". Some names share theirs.
    static QByteArray naturalKey(const QString &text);

private:
    QByteArray sortKey(Row row) const;
    bool comesBefore(LibrarySort sort, Row a, Row b) const;
    void sortByDate(std::vector<Row> &rows) const;
    void fill(Capture &capture, const File &file);
    void takeFromOrders(const std::vector<Row> &rows);
    void putIntoOrders(const std::vector<Row> &rows);

    mutable std::vector<Capture> m_captures; // whose sort keys are made when first asked for
    std::vector<Row> m_free;
    QHash<QString, Row> m_rows;
    // Made when first asked for, and kept up afterwards.
    mutable std::array<std::optional<std::vector<Row>>, 4> m_orders;
    mutable bool m_isAsListed = false; // nothing has changed since `files`
    std::vector<QString> m_sources{QString()};
    QHash<QString, quint32> m_sourceNumbers;
};
