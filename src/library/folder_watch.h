#pragma once

#include "base/async.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

// Tells which files of a folder other programs added, removed, renamed or wrote. What many events announce is
// looked at once, on a worker, when things have settled. Main thread only.
class FolderWatch : public QObject {
    Q_OBJECT
public:
    // A file as a listing knows it; a renamed one keeps all three.
    struct State {
        quint64 inode = 0;
        qint64 size = 0;
        qint64 modified = 0; // nanoseconds since 1970; kUnknown for a file that can't be looked at

        static constexpr qint64 kUnknown = std::numeric_limits<qint64>::min();
        bool operator==(const State &) const = default;
    };
    using Listing = QHash<QString, State>;
    struct News {
        QStringList added;
        QStringList removed;
        QStringList modified;
        QList<std::pair<QString, QString>> renamed; // from, to

        bool isEmpty() const
        {
            return added.isEmpty() && removed.isEmpty() && modified.isEmpty() && renamed.isEmpty();
        }
    };

    // Only names that `concerns` matter; it is called on workers.
    FolderWatch(QString folder, std::function<bool(const QString &name)> concerns, QObject *parent = nullptr);

    // What this program itself did to these names is no news.
    void know(const QStringList &names);

    // Calls with the listing of the last look, or of the first one, when that is there. Not after the owner or
    // the watch is gone.
    void whenListed(QObject *owner, std::function<void(const Listing &)> callback);

    static Listing list(const QString &folder, const std::function<bool(const QString &)> &concerns);
    static News difference(const Listing &before, const Listing &after);

Q_SIGNALS:
    void changed(const FolderWatch::News &news);

private:
    void rescan();
    void compare(const Listing &now);

    QString m_folder;
    std::function<bool(const QString &)> m_concerns;
    QFileSystemWatcher m_watcher;
    QTimer m_settle;
    std::optional<Listing> m_listing; // nothing before the first look
    std::vector<std::pair<QPointer<QObject>, std::function<void(const Listing &)>>> m_waiting;
    QSet<QString> m_knownMeanwhile;   // since the present look began
    bool m_isLooking = false;
    bool m_looksAgain = false;
};
