#include "library/batch/hash_cache.h"

#include "base/atomic_file.h"
#include "base/log.h"

#include <QDataStream>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <zlib.h>

namespace {

// Changes with the format and with what a hash means.
constexpr quint32 kSignature = 0x4c504801;

quint32 checksumOf(const QByteArray &bytes)
{
    return static_cast<quint32>(
        crc32(0, reinterpret_cast<const Bytef *>(bytes.constData()), static_cast<uInt>(bytes.size())));
}

bool isSameState(const HashCache::Entry &a, const HashCache::Entry &b)
{
    return a.bytes == b.bytes && a.modified == b.modified;
}

QString folderOf(const QString &file)
{
    return file.left(file.lastIndexOf(QLatin1Char('/')));
}

} // namespace

HashCache::HashCache(QString path) : m_path(std::move(path))
{
    QFile file(m_path);
    if (m_path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return;
    QDataStream outer(&file);
    quint32 signature = 0;
    quint32 checksum = 0;
    QByteArray bytes;
    outer >> signature;
    if (signature != kSignature)
        return;
    outer >> checksum >> bytes;
    if (outer.status() != QDataStream::Ok || checksumOf(bytes) != checksum)
        return;
    QDataStream stream(bytes);
    quint32 count = 0;
    stream >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        QByteArray name;
        Entry entry;
        bool hasHash = false;
        quint64 hash = 0;
        stream >> name >> entry.bytes >> entry.modified >> hasHash >> hash;
        if (hasHash)
            entry.hash = hash;
        m_entries.insert(QString::fromUtf8(name), entry);
    }
}

HashCache::Entry HashCache::stateOf(const QString &file)
{
    const QFileInfo info(file);
    if (!info.exists())
        return {};
    return {info.size(), info.lastModified().toMSecsSinceEpoch(), std::nullopt};
}

std::optional<HashCache::Entry> HashCache::find(const QString &file, const Entry &state) const
{
    const auto found = m_entries.constFind(file);
    if (found == m_entries.constEnd() || state.bytes < 0 || !isSameState(*found, state))
        return std::nullopt;
    return *found;
}

void HashCache::replace(const QStringList &files, const std::vector<Entry> &entries)
{
    if (m_path.isEmpty())
        return;
    QSet<QString> folders;
    QHash<QString, Entry> present;
    bool isChanged = false;
    for (qsizetype i = 0; i < files.size(); ++i) {
        const Entry &entry = entries[static_cast<size_t>(i)];
        if (entry.bytes < 0)
            continue;
        folders.insert(folderOf(files[i]));
        isChanged = isChanged || !find(files[i], entry);
        present.insert(files[i], entry);
    }
    for (auto known = m_entries.constBegin(); known != m_entries.constEnd(); ++known) {
        if (present.contains(known.key()))
            continue;
        if (folders.contains(folderOf(known.key())))
            isChanged = true;
        else
            present.insert(known.key(), known.value());
    }
    if (!isChanged)
        return;
    m_entries = std::move(present);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << static_cast<quint32>(m_entries.size());
    for (auto entry = m_entries.constBegin(); entry != m_entries.constEnd(); ++entry)
        stream << entry.key().toUtf8() << entry->bytes << entry->modified << entry->hash.has_value()
               << entry->hash.value_or(0);
    QDir().mkpath(QFileInfo(m_path).path());
    const auto written = AtomicFile::write(m_path, [&bytes](QIODevice &device) {
        QDataStream outer(&device);
        outer << kSignature << checksumOf(bytes) << bytes;
        return outer.status() == QDataStream::Ok;
    });
    if (!written)
        Log::error(QStringLiteral("The hashes of pictures could not be kept"), written.error());
}
