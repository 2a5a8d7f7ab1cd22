#pragma once

#include "library/library_meta.h"
#include "library/stored_text.h"

#include <QHash>
#include <QJsonObject>
#include <QSet>
#include <QString>
#include <QUuid>
#include <optional>

// All that the catalog knows, by file name.
struct CatalogData {
    QHash<QString, StoredText> texts; // recognised; an empty one says that there is none
    QSet<QString> favorites;
    LibraryMeta meta;

    bool operator==(const CatalogData &) const = default;
};

// A change of the catalog as the values that it leaves, not as what was done: applied twice it gives the
// same.
struct CatalogPatch {
    using Texts = QHash<QString, std::optional<QString>>; // nothing: the entry goes

    Texts texts;
    Texts sources;
    Texts descriptions;
    QHash<QString, bool> favorites;
    // In this order; nothing: the collection goes. New ones come last.
    QList<std::pair<QUuid, std::optional<LibraryCollection>>> collections;

    static CatalogPatch between(const LibraryMeta &before, const LibraryMeta &after);
    static CatalogPatch between(const CatalogData &before, const CatalogData &after);
    // What makes everything known of one name known of the other, and what makes it forgotten.
    static CatalogPatch renaming(const CatalogData &data, const QString &oldName, const QString &newName);
    static CatalogPatch forgetting(const CatalogData &data, const QString &name);

    bool isEmpty() const;
    bool touchesMeta() const
    {
        return !sources.isEmpty() || !descriptions.isEmpty() || !collections.isEmpty();
    }
    void apply(CatalogData &data) const;
    // What comes after it.
    void add(const CatalogPatch &later);
    // The files of which it says something; what changed in collections is not among them.
    QSet<QString> names() const;

    QJsonObject toJson() const;
    static std::optional<CatalogPatch> fromJson(const QJsonObject &object);
};
