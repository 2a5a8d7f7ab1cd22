#include "library/batch/duplicates.h"

#include "base/parallel.h"
#include "document/image_files.h"
#include "library/batch/hash_cache.h"
#include "library/library.h"
#include "platform/paths.h"

#include <QFileInfo>
#include <QHash>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <bit>
#include <mutex>
#include <numeric>
#include <span>
#include <vector>

namespace {

class Components {
public:
    explicit Components(size_t count) : m_parents(count)
    {
        std::iota(m_parents.begin(), m_parents.end(), 0u);
    }

    quint32 root(quint32 i)
    {
        while (m_parents[i] != i) {
            m_parents[i] = m_parents[m_parents[i]];
            i = m_parents[i];
        }
        return i;
    }
    void unite(quint32 a, quint32 b)
    {
        a = root(a);
        b = root(b);
        m_parents[std::max(a, b)] = std::min(a, b);
    }

private:
    std::vector<quint32> m_parents;
};

// Unites all pairs of hashes that differ in at most `threshold` bits without comparing all pairs. With the
// bits dealt into `threshold` + 1 bands, such a pair is equal in one band at least; so only those that share
// a band are compared. Where many share it, their other bits are dealt out again.
class Grouping {
public:
    Grouping(std::vector<quint64> hashes, int threshold)
        : m_hashes(std::move(hashes)), m_threshold(threshold), m_components(m_hashes.size())
    {
        std::vector<quint32> all(m_hashes.size());
        std::iota(all.begin(), all.end(), 0u);
        join(all, ~quint64(0));
    }
    Components &components() { return m_components; }

private:
    // Below, comparing each with each is the cheapest.
    static constexpr size_t kFew = 48;

    void join(std::span<quint32> members, quint64 unlike)
    {
        // What can differ only in so few bits is alike.
        if (std::popcount(unlike) <= m_threshold) {
            for (const quint32 member : members)
                m_components.unite(members.front(), member);
            return;
        }
        if (members.size() <= kFew)
            return compareAll(members);
        for (int band = 0; band <= m_threshold && !areUnited(members); ++band) {
            const quint64 bits = bandOf(unlike, band);
            std::sort(members.begin(), members.end(),
                      [&](quint32 a, quint32 b) { return (m_hashes[a] & bits) < (m_hashes[b] & bits); });
            size_t from = 0;
            for (size_t to = 1; to <= members.size(); ++to) {
                if (to < members.size() && (m_hashes[members[from]] & bits) == (m_hashes[members[to]] & bits))
                    continue;
                if (to - from > 1) {
                    std::vector<quint32> alike(members.begin() + static_cast<std::ptrdiff_t>(from),
                                               members.begin() + static_cast<std::ptrdiff_t>(to));
                    join(alike, unlike & ~bits);
                }
                from = to;
            }
        }
    }

    // Every (threshold + 1)th of the bits: neighbours in a picture are often alike, and a band of them would
    // tell little.
    quint64 bandOf(quint64 bits, int band) const
    {
        quint64 result = 0;
        for (int i = 0; bits != 0; bits &= bits - 1, ++i) {
            if (i % (m_threshold + 1) == band)
                result |= bits & (~bits + 1);
        }
        return result;
    }

    void compareAll(std::span<const quint32> members)
    {
        for (size_t i = 0; i < members.size(); ++i) {
            for (size_t j = i + 1; j < members.size(); ++j) {
                if (std::popcount(m_hashes[members[i]] ^ m_hashes[members[j]]) <= m_threshold)
                    m_components.unite(members[i], members[j]);
            }
        }
    }

    bool areUnited(std::span<const quint32> members)
    {
        const quint32 first = m_components.root(members.front());
        return std::all_of(members.begin(), members.end(),
                           [&](quint32 member) { return m_components.root(member) == first; });
    }

    std::vector<quint64> m_hashes;
    int m_threshold;
    Components m_components;
};

} // namespace

std::optional<quint64> Duplicates::dHash(const QImage &image)
{
    if (image.isNull())
        return std::nullopt;
    constexpr int kWidth = 9;
    constexpr int kHeight = 8;
    const QImage small = image
                             .convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                                      : QImage::Format_RGB32)
                             .scaled(kWidth, kHeight, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    quint64 hash = 0;
    for (int y = 0; y < kHeight; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(small.constScanLine(y));
        for (int x = 0; x + 1 < kWidth; ++x)
            hash = (hash << 1) | (qGray(row[x]) > qGray(row[x + 1]) ? 1u : 0u);
    }
    return hash;
}

QList<QStringList> Duplicates::groups(const QList<Hashed> &files, int threshold)
{
    // Equal hashes are one node: many copies of one picture cost nothing.
    QHash<quint64, quint32> nodes;
    std::vector<quint64> hashes;
    std::vector<quint32> nodeOf;
    for (const Hashed &file : files) {
        const auto found = nodes.constFind(file.hash);
        if (found == nodes.constEnd()) {
            nodeOf.push_back(static_cast<quint32>(hashes.size()));
            nodes.insert(file.hash, nodeOf.back());
            hashes.push_back(file.hash);
        } else {
            nodeOf.push_back(*found);
        }
    }
    Grouping grouping(std::move(hashes), threshold);

    QList<QStringList> groups;
    QHash<quint32, qsizetype> groupOf;
    for (qsizetype i = 0; i < files.size(); ++i) {
        const quint32 root = grouping.components().root(nodeOf[static_cast<size_t>(i)]);
        const auto found = groupOf.constFind(root);
        if (found == groupOf.constEnd()) {
            groupOf.insert(root, groups.size());
            groups.append({files[i].path});
        } else {
            groups[*found].append(files[i].path);
        }
    }
    groups.removeIf([](const QStringList &group) { return group.size() < 2; });
    std::stable_sort(groups.begin(), groups.end(),
                     [](const QStringList &a, const QStringList &b) { return a.size() > b.size(); });
    return groups;
}

Result<QList<QStringList>> Duplicates::scan(const QStringList &paths, const QString &cacheFile,
                                            const Progress &progress)
{
    QStringList images;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(images),
                 [](const QString &path) { return !Library::isVideo(path); });
    const auto count = static_cast<int>(images.size());
    HashCache cache(cacheFile);
    std::vector<HashCache::Entry> entries(static_cast<size_t>(count));
    std::atomic<int> next = 0;
    std::atomic<bool> isStopped = false;
    std::mutex telling;
    int done = 0;
    inParallel(std::clamp(QThread::idealThreadCount(), 1, std::max(count, 1)), [&](int) {
        for (int i = next++; i < count && !isStopped; i = next++) {
            HashCache::Entry &entry = entries[static_cast<size_t>(i)];
            entry = HashCache::stateOf(images[i]);
            if (const auto known = cache.find(images[i], entry)) {
                entry = *known;
            } else if (const auto small = ImageFiles::thumbnail(images[i], 64)) {
                entry.hash = dHash(*small);
            }
            const std::lock_guard lock(telling);
            if (!goesOn(progress, ++done, count))
                isStopped = true;
        }
    });
    if (isStopped && done < count)
        return cancelled();
    cache.replace(images, entries);
    QList<Hashed> hashed;
    for (int i = 0; i < count; ++i) {
        if (const auto hash = entries[static_cast<size_t>(i)].hash)
            hashed.append({images[i], *hash});
    }
    return groups(hashed);
}

QString Duplicates::cacheFile(const Paths &paths)
{
    return paths.cache() + QStringLiteral("/image-hashes");
}

void Duplicates::sortNewestFirst(QList<QStringList> &groups)
{
    for (QStringList &group : groups) {
        QHash<QString, qint64> dates;
        for (const QString &path : group) {
            const QDateTime date = QFileInfo(path).lastModified();
            dates.insert(path,
                         date.isValid() ? date.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min());
        }
        std::stable_sort(group.begin(), group.end(),
                         [&](const QString &a, const QString &b) { return dates[a] > dates[b]; });
    }
}
