#include "library/model/capture_table.h"

#include "library/library.h"

#include <algorithm>

namespace {

constexpr std::array kSorts{LibrarySort::Newest, LibrarySort::Oldest, LibrarySort::Name, LibrarySort::Size};

QString baseOf(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

} // namespace

struct CaptureTable::Orders {
    std::vector<QByteArray> sortKeys;
    std::array<std::optional<std::vector<Row>>, 4> rows;
};

std::vector<CaptureTable::File> CaptureTable::list(const QString &folder)
{
    return filesOf(FolderWatch::list(folder, Library::isOfLibrary));
}

std::vector<CaptureTable::File> CaptureTable::filesOf(const FolderWatch::Listing &listing)
{
    std::vector<File> files;
    files.reserve(static_cast<size_t>(listing.size()));
    for (auto file = listing.begin(); file != listing.end(); ++file) {
        const qint64 modified = file->modified;
        // To full milliseconds, downwards before 1970, too.
        files.push_back({file.key(),
                         modified == FolderWatch::State::kUnknown
                             ? kUnknownDate
                             : modified / 1'000'000 - (modified % 1'000'000 < 0 ? 1 : 0),
                         file->size});
    }
    return files;
}

QByteArray CaptureTable::naturalKey(const QString &text)
{
    const QByteArray letters = SearchIndex::folded(text);
    const bool hasMarks = std::any_of(letters.begin(), letters.end(), [](char c) { return (c & 0x80) != 0; });
    QByteArray plain = letters;
    if (hasMarks) {
        QString bare = QString::fromUtf8(letters).normalized(QString::NormalizationForm_D);
        bare.removeIf([](QChar letter) { return letter.category() == QChar::Mark_NonSpacing; });
        plain = bare.toUtf8();
    }
    QByteArray key;
    key.reserve(plain.size() + 8);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    for (qsizetype at = 0; at < plain.size();) {
        if (!isDigit(plain[at])) {
            key += plain[at++];
            continue;
        }
        while (at + 1 < plain.size() && plain[at] == '0' && isDigit(plain[at + 1]))
            ++at;
        qsizetype end = at;
        while (end < plain.size() && isDigit(plain[end]))
            ++end;
        // More digits are a larger number. The length stands behind a digit, to sort where digits sort.
        key += '0';
        key += static_cast<char>(std::min<qsizetype>(end - at, 255));
        key += plain.mid(at, end - at);
        at = end;
    }
    return key;
}

void CaptureTable::fill(Capture &capture, const File &file)
{
    static_cast<File &>(capture) = file;
    capture.sortKey.clear();
    capture.isVideo = Library::isVideo(file.name);
    capture.isThere = true;
}

CaptureTable CaptureTable::of(const std::vector<File> &files)
{
    CaptureTable table;
    table.m_captures.resize(files.size());
    table.m_rows.reserve(static_cast<qsizetype>(files.size()));
    for (Row row = 0; row < files.size(); ++row) {
        table.fill(table.m_captures[row], files[row]);
        table.m_rows.insert(files[row].name, row);
    }
    return table;
}

std::vector<CaptureTable::File> CaptureTable::files() const
{
    m_isAsListed = true;
    return {m_captures.begin(), m_captures.end()};
}

std::shared_ptr<CaptureTable::Orders> CaptureTable::ordersOf(const std::vector<File> &files)
{
    CaptureTable table;
    table.m_captures.resize(files.size());
    auto orders = std::make_shared<Orders>();
    for (Row row = 0; row < files.size(); ++row) {
        Capture &capture = table.m_captures[row];
        static_cast<File &>(capture) = files[row];
        capture.isThere = !files[row].name.isEmpty();
        capture.sortKey = naturalKey(baseOf(files[row].name));
        orders->sortKeys.push_back(capture.sortKey);
    }
    for (const LibrarySort sort : kSorts)
        table.order(sort);
    orders->rows = std::move(table.m_orders);
    return orders;
}

bool CaptureTable::take(Orders &orders)
{
    if (!m_isAsListed)
        return false;
    for (Row row = 0; row < rowCount(); ++row)
        m_captures[row].sortKey = std::move(orders.sortKeys[row]);
    m_orders = std::move(orders.rows);
    return true;
}

std::vector<CaptureTable::Row> CaptureTable::change(const QStringList &removed,
                                                    const std::vector<File> &present)
{
    m_isAsListed = false;
    std::vector<Row> outdated;
    for (const QString &name : removed) {
        if (const auto row = find(name))
            outdated.push_back(*row);
    }
    const size_t gone = outdated.size();
    for (const File &file : present) {
        if (const auto row = find(file.name))
            outdated.push_back(*row);
    }
    takeFromOrders(outdated);
    for (size_t i = 0; i < gone; ++i) {
        if (!m_captures[outdated[i]].isThere)
            continue; // named twice
        m_rows.remove(m_captures[outdated[i]].name);
        m_captures[outdated[i]] = {};
        m_free.push_back(outdated[i]);
    }
    std::vector<Row> rows;
    const bool hasKeys = m_orders[static_cast<size_t>(LibrarySort::Name)].has_value();
    for (const File &file : present) {
        Row row = 0;
        if (const auto known = find(file.name)) {
            row = *known;
        } else if (!m_free.empty()) {
            row = m_free.back();
            m_free.pop_back();
        } else {
            row = rowCount();
            m_captures.emplace_back();
        }
        fill(m_captures[row], file);
        if (hasKeys)
            m_captures[row].sortKey = sortKey(row);
        m_rows.insert(file.name, row);
        rows.push_back(row);
    }
    putIntoOrders(rows);
    return rows;
}

std::optional<CaptureTable::Row> CaptureTable::find(const QString &name) const
{
    const auto found = m_rows.constFind(name);
    return found == m_rows.constEnd() ? std::nullopt : std::optional(*found);
}

QByteArray CaptureTable::sortKey(Row row) const
{
    const QByteArray &known = m_captures[row].sortKey;
    return known.isEmpty() ? naturalKey(baseOf(m_captures[row].name)) : known;
}

bool CaptureTable::comesBefore(LibrarySort sort, Row a, Row b) const
{
    const Capture &one = m_captures[a];
    const Capture &other = m_captures[b];
    switch (sort) {
    case LibrarySort::Newest:
        break;
    case LibrarySort::Oldest:
        if (one.modified != other.modified)
            return one.modified < other.modified;
        break;
    case LibrarySort::Name:
        if (const int order = sortKey(a).compare(sortKey(b)); order != 0)
            return order < 0;
        // What only marks and zeros tell apart.
        if (const int order = SearchIndex::folded(one.name).compare(SearchIndex::folded(other.name));
            order != 0)
            return order < 0;
        break;
    case LibrarySort::Size:
        if (one.bytes != other.bytes)
            return one.bytes > other.bytes;
        break;
    }
    if (one.modified != other.modified)
        return one.modified > other.modified;
    return one.name < other.name;
}

// As `comesBefore` has it; the first cards wait for this, and dates beside each other are compared faster.
void CaptureTable::sortByDate(std::vector<Row> &rows) const
{
    std::vector<std::pair<qint64, Row>> dated;
    dated.reserve(rows.size());
    for (const Row row : rows)
        dated.emplace_back(m_captures[row].modified, row);
    std::sort(dated.begin(), dated.end(), [this](const auto &a, const auto &b) {
        return a.first != b.first ? a.first > b.first : m_captures[a.second].name < m_captures[b.second].name;
    });
    std::ranges::transform(dated, rows.begin(), &std::pair<qint64, Row>::second);
}

const std::vector<CaptureTable::Row> &CaptureTable::order(LibrarySort sort) const
{
    auto &order = m_orders[static_cast<size_t>(sort)];
    if (!order) {
        order.emplace();
        order->reserve(static_cast<size_t>(m_rows.size()));
        for (Row row = 0; row < rowCount(); ++row) {
            if (m_captures[row].isThere)
                order->push_back(row);
        }
        if (sort == LibrarySort::Newest) {
            sortByDate(*order);
            return *order;
        }
        if (sort == LibrarySort::Name) {
            for (const Row row : *order)
                m_captures[row].sortKey = sortKey(row);
        }
        std::sort(order->begin(), order->end(), [&](Row a, Row b) { return comesBefore(sort, a, b); });
    }
    return *order;
}

void CaptureTable::takeFromOrders(const std::vector<Row> &rows)
{
    if (rows.empty())
        return;
    std::vector<bool> isOutdated(m_captures.size());
    for (const Row row : rows)
        isOutdated[row] = true;
    for (auto &order : m_orders) {
        if (order)
            std::erase_if(*order, [&](Row row) { return isOutdated[row]; });
    }
}

void CaptureTable::putIntoOrders(const std::vector<Row> &rows)
{
    // So few are put into their places one by one; merging looks at all the others.
    constexpr size_t kFew = 32;
    for (const LibrarySort sort : kSorts) {
        auto &order = m_orders[static_cast<size_t>(sort)];
        if (!order)
            continue;
        const auto isBefore = [&](Row a, Row b) { return comesBefore(sort, a, b); };
        if (rows.size() <= kFew) {
            for (const Row row : rows)
                order->insert(std::lower_bound(order->begin(), order->end(), row, isBefore), row);
            continue;
        }
        const auto old = static_cast<std::ptrdiff_t>(order->size());
        order->insert(order->end(), rows.begin(), rows.end());
        std::sort(order->begin() + old, order->end(), isBefore);
        std::inplace_merge(order->begin(), order->begin() + old, order->end(), isBefore);
    }
}

quint32 CaptureTable::sourceNumber(const QString &application)
{
    if (application.isEmpty())
        return 0;
    const auto known = m_sourceNumbers.constFind(application);
    if (known != m_sourceNumbers.constEnd())
        return *known;
    const quint32 number = sourceCount();
    m_sources.push_back(application);
    m_sourceNumbers.insert(application, number);
    return number;
}
