#include "library/model/capture_table.h"

#include "base/file_name.h"
#include "library/library.h"

#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr std::array kSorts{LibrarySort::Newest, LibrarySort::Oldest, LibrarySort::Name, LibrarySort::Size};

QString baseOf(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

} // namespace

std::vector<CaptureTable::File> CaptureTable::list(const QString &folder)
{
    std::vector<File> files;
    const std::unique_ptr<DIR, int (*)(DIR *)> directory(opendir(FileName::toBytes(folder).constData()),
                                                         closedir);
    if (!directory)
        return files;
    const int place = dirfd(directory.get());
    while (const dirent *entry = readdir(directory.get())) {
        if (entry->d_name[0] == '.')
            continue;
        const QString name = FileName::fromBytes(entry->d_name);
        if (!Library::isImage(name) && !Library::isVideo(name))
            continue;
        struct stat state{};
        if (fstatat(place, entry->d_name, &state, 0) != 0) {
            if (errno != ENOENT)
                files.push_back({name});
            continue;
        }
        if (S_ISREG(state.st_mode))
            files.push_back(
                {name, state.st_mtim.tv_sec * 1000 + state.st_mtim.tv_nsec / 1'000'000, state.st_size});
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
    // What only marks and zeros tell apart.
    key += '\0';
    key += letters;
    return key;
}

void CaptureTable::fill(Capture &capture, const File &file)
{
    static_cast<File &>(capture) = file;
    capture.sortKey = naturalKey(baseOf(file.name));
    capture.isVideo = Library::isVideo(file.name);
    capture.isThere = true;
}

CaptureTable CaptureTable::of(std::vector<File> files, Orders orders)
{
    CaptureTable table;
    table.m_captures.resize(files.size());
    table.m_rows.reserve(static_cast<qsizetype>(files.size()));
    for (Row row = 0; row < files.size(); ++row) {
        table.fill(table.m_captures[row], files[row]);
        table.m_rows.insert(files[row].name, row);
    }
    if (orders == Orders::Ready) {
        for (const LibrarySort sort : kSorts)
            table.order(sort);
    }
    return table;
}

std::vector<CaptureTable::Row> CaptureTable::change(const QStringList &removed,
                                                    const std::vector<File> &present)
{
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
        if (const int order = one.sortKey.compare(other.sortKey); order != 0)
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
