#include "library/library_meta.h"

#include "base/json.h"
#include "library/shared_names.h"

#include <QJsonArray>
#include <algorithm>

namespace {

using Texts = QHash<QString, QString>;

QJsonObject toObject(const Texts &texts)
{
    QJsonObject object;
    for (auto entry = texts.begin(); entry != texts.end(); ++entry)
        object.insert(entry.key(), entry.value());
    return object;
}

QString asItIs(const QString &text)
{
    return text;
}

// The values of some are the same few.
std::optional<Texts> toTexts(const std::optional<QJsonObject> &object, QString (*kept)(const QString &))
{
    if (!object)
        return std::nullopt;
    Texts texts;
    for (auto entry = object->begin(); entry != object->end(); ++entry) {
        if (!entry.value().isString())
            return std::nullopt;
        texts.insert(sharedName(entry.key()), kept(entry.value().toString()));
    }
    return texts;
}

} // namespace

QJsonObject LibraryCollection::toJson() const
{
    return {{QStringLiteral("id"), id.toString(QUuid::WithoutBraces).toUpper()},
            {QStringLiteral("name"), name},
            {QStringLiteral("items"), QJsonArray::fromStringList(items)}};
}

std::optional<LibraryCollection> LibraryCollection::fromJson(const QJsonValue &value)
{
    const QJsonObject object = value.toObject();
    const auto id = Json::string(object, "id");
    const auto name = Json::string(object, "name");
    const auto items = Json::array(object, "items");
    if (!id || !name || !items)
        return std::nullopt;
    LibraryCollection collection{QUuid::fromString(*id), *name, {}};
    if (collection.id.isNull())
        return std::nullopt;
    for (const QJsonValue &item : *items) {
        if (!item.isString())
            return std::nullopt;
        collection.items.append(item.toString());
    }
    return collection;
}

LibraryCollection *LibraryMeta::collection(const QUuid &id)
{
    const auto found = std::find_if(collections.begin(), collections.end(),
                                    [&id](const LibraryCollection &entry) { return entry.id == id; });
    return found == collections.end() ? nullptr : &*found;
}

QJsonObject LibraryMeta::toJson() const
{
    QJsonArray list;
    for (const LibraryCollection &entry : collections)
        list.append(entry.toJson());
    return {{QStringLiteral("collections"), list},
            {QStringLiteral("sources"), toObject(sources)},
            {QStringLiteral("descriptions"), toObject(descriptions)}};
}

std::optional<LibraryMeta> LibraryMeta::fromJson(const QJsonObject &object)
{
    const auto list = Json::array(object, "collections");
    const auto sources = toTexts(Json::object(object, "sources"), sharedName);
    const auto descriptions = toTexts(Json::object(object, "descriptions"), asItIs);
    if (!list || !sources || !descriptions)
        return std::nullopt;
    LibraryMeta meta{{}, *sources, *descriptions};
    for (const QJsonValue &value : *list) {
        const auto collection = LibraryCollection::fromJson(value);
        if (!collection)
            return std::nullopt;
        meta.collections.append(*collection);
    }
    return meta;
}
