#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

// The hashes that an earlier scan found, in one file; valid for a file as long as its size and date stay. A
// cache that can't be read counts as empty. Reading is safe from several threads.
class HashCache {
public:
    struct Entry {
        qint64 bytes = -1;           // -1 for a file that isn't there
        qint64 modified = 0;         // milliseconds since 1970
        std::optional<quint64> hash; // nothing for what is no picture
    };

    // An empty path keeps nothing.
    explicit HashCache(QString path);

    // The file's present size and date, without its hash.
    static Entry stateOf(const QString &file);
    // What is known of the file in that state.
    std::optional<Entry> find(const QString &file, const Entry &state) const;
    // Keeps these, and drops what else is known of files in their folders. Writes only when that changes
    // something.
    void replace(const QStringList &files, const std::vector<Entry> &entries);

private:
    QString m_path;
    QHash<QString, Entry> m_entries;
};
