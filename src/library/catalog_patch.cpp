#include "library/catalog_patch.h"

#include "base/json.h"

#include <QJsonArray>
#include <QJsonValue>
#include <algorithm>

namespace {

template <typename Text>
void apply(const CatalogPatch::Texts &patch, QHash<QString, Text> &texts)
{
    for (auto entry = patch.begin(); entry != patch.end(); ++entry) {
        if (entry.value())
            texts.insert(entry.key(), *entry.value());
        else
            texts.remove(entry.key());
    }
}

template <typename Text>
CatalogPatch::Texts between(const QHash<QString, Text> &before, const QHash<QString, Text> &after)
{
    CatalogPatch::Texts patch;
    for (auto entry = before.begin(); entry != before.end(); ++entry) {
        if (!after.contains(entry.key()))
            patch.insert(entry.key(), std::nullopt);
    }
    for (auto entry = after.begin(); entry != after.end(); ++entry) {
        const auto old = before.find(entry.key());
        if (old == before.end() || *old != entry.value())
            patch.insert(entry.key(), QString(entry.value()));
    }
    return patch;
}

template <typename Text>
void moveEntry(const QHash<QString, Text> &texts, const QString &oldName, const QString &newName,
               CatalogPatch::Texts &patch)
{
    if (const auto entry = texts.find(oldName); entry != texts.end()) {
        patch.insert(oldName, std::nullopt);
        patch.insert(newName, QString(*entry));
    }
}

QJsonObject toJson(const CatalogPatch::Texts &texts)
{
    QJsonObject object;
    for (auto entry = texts.begin(); entry != texts.end(); ++entry)
        object.insert(entry.key(), entry.value() ? QJsonValue(*entry.value()) : QJsonValue());
    return object;
}

std::optional<CatalogPatch::Texts> toTexts(const QJsonValue &value)
{
    CatalogPatch::Texts texts;
    const QJsonObject object = value.toObject();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!entry.value().isString() && !entry.value().isNull())
            return std::nullopt;
        texts.insert(entry.key(),
                     entry.value().isString() ? std::optional(entry.value().toString()) : std::nullopt);
    }
    return texts;
}

} // namespace

CatalogPatch CatalogPatch::between(const LibraryMeta &before, const LibraryMeta &after)
{
    CatalogPatch patch;
    patch.sources = ::between(before.sources, after.sources);
    patch.descriptions = ::between(before.descriptions, after.descriptions);
    if (before.collections == after.collections)
        return patch;
    const auto find = [](const QList<LibraryCollection> &list, const QUuid &id) {
        return std::find_if(list.begin(), list.end(),
                            [&id](const LibraryCollection &entry) { return entry.id == id; });
    };
    for (const LibraryCollection &old : before.collections) {
        if (find(after.collections, old.id) == after.collections.end())
            patch.collections.append({old.id, std::nullopt});
    }
    for (const LibraryCollection &entry : after.collections) {
        const auto old = find(before.collections, entry.id);
        if (old == before.collections.end() || *old != entry)
            patch.collections.append({entry.id, entry});
    }
    return patch;
}

CatalogPatch CatalogPatch::between(const CatalogData &before, const CatalogData &after)
{
    CatalogPatch patch = between(before.meta, after.meta);
    patch.texts = ::between(before.texts, after.texts);
    for (const QString &name : before.favorites) {
        if (!after.favorites.contains(name))
            patch.favorites.insert(name, false);
    }
    for (const QString &name : after.favorites) {
        if (!before.favorites.contains(name))
            patch.favorites.insert(name, true);
    }
    return patch;
}

CatalogPatch CatalogPatch::renaming(const CatalogData &data, const QString &oldName, const QString &newName)
{
    CatalogPatch patch;
    moveEntry(data.texts, oldName, newName, patch.texts);
    moveEntry(data.meta.sources, oldName, newName, patch.sources);
    moveEntry(data.meta.descriptions, oldName, newName, patch.descriptions);
    if (data.favorites.contains(oldName)) {
        patch.favorites.insert(oldName, false);
        patch.favorites.insert(newName, true);
    }
    for (LibraryCollection collection : data.meta.collections) {
        if (!collection.items.contains(oldName))
            continue;
        std::replace(collection.items.begin(), collection.items.end(), oldName, newName);
        patch.collections.append({collection.id, collection});
    }
    return patch;
}

CatalogPatch CatalogPatch::forgetting(const CatalogData &data, const QString &name)
{
    CatalogPatch patch;
    patch.texts.insert(name, std::nullopt);
    patch.sources.insert(name, std::nullopt);
    patch.descriptions.insert(name, std::nullopt);
    if (data.favorites.contains(name))
        patch.favorites.insert(name, false);
    for (LibraryCollection collection : data.meta.collections) {
        if (collection.items.removeAll(name) > 0)
            patch.collections.append({collection.id, collection});
    }
    return patch;
}

bool CatalogPatch::isEmpty() const
{
    return texts.isEmpty() && favorites.isEmpty() && !touchesMeta();
}

void CatalogPatch::apply(CatalogData &data) const
{
    ::apply(texts, data.texts);
    ::apply(sources, data.meta.sources);
    ::apply(descriptions, data.meta.descriptions);
    for (auto entry = favorites.begin(); entry != favorites.end(); ++entry) {
        if (entry.value())
            data.favorites.insert(entry.key());
        else
            data.favorites.remove(entry.key());
    }
    for (const auto &[id, value] : collections) {
        if (!value)
            data.meta.collections.removeIf(
                [&wanted = id](const LibraryCollection &entry) { return entry.id == wanted; });
        else if (LibraryCollection *present = data.meta.collection(id))
            *present = *value;
        else
            data.meta.collections.append(*value);
    }
}

void CatalogPatch::add(const CatalogPatch &later)
{
    texts.insert(later.texts);
    sources.insert(later.sources);
    descriptions.insert(later.descriptions);
    favorites.insert(later.favorites);
    collections.append(later.collections);
}

QSet<QString> CatalogPatch::names() const
{
    QSet<QString> names;
    for (const Texts *part : {&texts, &sources, &descriptions}) {
        for (auto entry = part->begin(); entry != part->end(); ++entry)
            names.insert(entry.key());
    }
    for (auto entry = favorites.begin(); entry != favorites.end(); ++entry)
        names.insert(entry.key());
    return names;
}

QJsonObject CatalogPatch::toJson() const
{
    QJsonObject object;
    if (!texts.isEmpty())
        object.insert(QStringLiteral("texts"), ::toJson(texts));
    if (!sources.isEmpty())
        object.insert(QStringLiteral("sources"), ::toJson(sources));
    if (!descriptions.isEmpty())
        object.insert(QStringLiteral("descriptions"), ::toJson(descriptions));
    if (!favorites.isEmpty()) {
        QJsonObject flags;
        for (auto entry = favorites.begin(); entry != favorites.end(); ++entry)
            flags.insert(entry.key(), entry.value());
        object.insert(QStringLiteral("favorites"), flags);
    }
    if (!collections.isEmpty()) {
        QJsonArray list;
        for (const auto &[id, value] : collections) {
            if (value)
                list.append(value->toJson());
            else
                list.append(id.toString(QUuid::WithoutBraces));
        }
        object.insert(QStringLiteral("collections"), list);
    }
    return object;
}

std::optional<CatalogPatch> CatalogPatch::fromJson(const QJsonObject &object)
{
    CatalogPatch patch;
    const auto texts = toTexts(object.value(QLatin1String("texts")));
    const auto sources = toTexts(object.value(QLatin1String("sources")));
    const auto descriptions = toTexts(object.value(QLatin1String("descriptions")));
    if (!texts || !sources || !descriptions)
        return std::nullopt;
    patch.texts = *texts;
    patch.sources = *sources;
    patch.descriptions = *descriptions;
    const QJsonObject flags = object.value(QLatin1String("favorites")).toObject();
    for (auto entry = flags.begin(); entry != flags.end(); ++entry)
        patch.favorites.insert(entry.key(), entry.value().toBool());
    const QJsonArray list = object.value(QLatin1String("collections")).toArray();
    for (const QJsonValue &value : list) {
        if (value.isString()) {
            patch.collections.append({QUuid::fromString(value.toString()), std::nullopt});
            continue;
        }
        const auto collection = LibraryCollection::fromJson(value);
        if (!collection)
            return std::nullopt;
        patch.collections.append({collection->id, *collection});
    }
    return patch;
}
