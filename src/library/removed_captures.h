#pragma once

#include "base/scratch_folder.h"
#include "library/catalog_patch.h"

#include <QHash>
#include <QString>
#include <QUuid>
#include <deque>
#include <memory>
#include <optional>

// What the last removals took away beside the files themselves, so that they can be undone: what was known of
// a capture, its project and its versions. Those lie in a hidden folder that is gone with this, or cleared by
// whoever comes next.
class RemovedCaptures {
public:
    struct Capture {
        QString path; // where it was
        std::optional<QString> text;
        std::optional<QString> source;
        std::optional<QString> description;
        bool isFavorite = false;
        QList<std::pair<QUuid, int>> places; // in collections
        QString aside;                       // the folder of its project and versions; empty without
        std::shared_ptr<ScratchFolder> scratch;

        static Capture of(const CatalogData &data, const QString &path);
        // What makes it known again, under this name.
        CatalogPatch patch(const CatalogData &data, const QString &name) const;
    };

    // What is removed from now on belongs together; of what was removed long before nothing is kept.
    void begin();
    // A folder to put things of the next capture into, inside `hidden`; empty where none can be made.
    QString nextAside(const QString &hidden);
    void add(const QString &trashed, Capture capture);
    std::optional<Capture> find(const QString &trashed) const;
    // It has come back.
    void forget(const QString &trashed);

private:
    struct Batch {
        std::shared_ptr<ScratchFolder> scratch;
        int count = 0;
        QHash<QString, Capture> captures; // by their paths in the Trash
    };
    std::deque<Batch> m_batches;
};
