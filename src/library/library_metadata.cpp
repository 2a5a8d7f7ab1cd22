#include "library/library.h"

#include "base/json.h"
#include "base/log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

// The three JSON files of the hidden directory and everything that changes them.

namespace {

const QString kIndexFile = QStringLiteral("text-index.json");
const QString kFavoritesFile = QStringLiteral("favorites.json");
const QString kMetaFile = QStringLiteral("library.json");

QString nameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

std::optional<QHash<QString, QString>> toIndex(const QJsonDocument &document)
{
    if (!document.isObject())
        return std::nullopt;
    QHash<QString, QString> index;
    const QJsonObject object = document.object();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!entry.value().isString())
            return std::nullopt;
        index.insert(entry.key(), entry.value().toString());
    }
    return index;
}

std::optional<QSet<QString>> toNames(const QJsonDocument &document)
{
    if (!document.isArray())
        return std::nullopt;
    QSet<QString> names;
    const QJsonArray array = document.array();
    for (const QJsonValue &value : array) {
        if (!value.isString())
            return std::nullopt;
        names.insert(value.toString());
    }
    return names;
}

// A file that is missing or can't be read counts as empty; the next save replaces it.
template <typename Value, typename Parse>
Value loaded(const QString &path, Parse parse)
{
    const auto document = Json::readFile(path);
    if (!document)
        return {};
    return parse(*document).value_or(Value{});
}

} // namespace

QHash<QString, QString> &Library::loadedIndex() const
{
    if (!m_textIndex)
        m_textIndex = loaded<QHash<QString, QString>>(hiddenPath(kIndexFile), toIndex);
    return *m_textIndex;
}

QSet<QString> &Library::loadedFavorites() const
{
    if (!m_favoriteNames)
        m_favoriteNames = loaded<QSet<QString>>(hiddenPath(kFavoritesFile), toNames);
    return *m_favoriteNames;
}

LibraryMeta &Library::loadedMeta() const
{
    if (!m_metaCache) {
        m_metaCache = loaded<LibraryMeta>(hiddenPath(kMetaFile), [](const QJsonDocument &document) {
            return LibraryMeta::fromJson(document.object());
        });
    }
    return *m_metaCache;
}

void Library::saveHidden(const QString &name, const QJsonDocument &document) const
{
    const QString path = hiddenPath(name);
    QDir().mkpath(QFileInfo(path).path());
    if (const auto written = Json::writeFile(path, document); !written)
        Log::error(QStringLiteral("Library metadata could not be saved"), written.error());
}

void Library::saveIndex() const
{
    QJsonObject object;
    const auto &index = loadedIndex();
    for (auto entry = index.begin(); entry != index.end(); ++entry)
        object.insert(entry.key(), entry.value());
    saveHidden(kIndexFile, QJsonDocument(object));
}

void Library::saveFavorites() const
{
    QJsonArray array;
    for (const QString &name : loadedFavorites())
        array.append(name);
    saveHidden(kFavoritesFile, QJsonDocument(array));
}

void Library::dropCaches()
{
    m_textIndex.reset();
    m_favoriteNames.reset();
    m_metaCache.reset();
}

const LibraryMeta &Library::meta() const
{
    return loadedMeta();
}

void Library::updateMeta(const std::function<void(LibraryMeta &)> &change)
{
    change(loadedMeta());
    saveHidden(kMetaFile, QJsonDocument(loadedMeta().toJson()));
}

bool Library::isFavorite(const QString &path) const
{
    return loadedFavorites().contains(nameOf(path));
}

void Library::setFavorite(const QString &path, bool on)
{
    if (on)
        loadedFavorites().insert(nameOf(path));
    else
        loadedFavorites().remove(nameOf(path));
    saveFavorites();
}

std::optional<QString> Library::text(const QString &path) const
{
    const QString name = nameOf(path);
    const auto &index = loadedIndex();
    const auto &descriptions = loadedMeta().descriptions;
    const bool hasText = index.contains(name);
    if (!descriptions.contains(name))
        return hasText ? std::optional(index.value(name)) : std::nullopt;
    const QString description = descriptions.value(name);
    return hasText ? index.value(name) + QLatin1Char('\n') + description : description;
}

QHash<QString, QString> Library::textIndex() const
{
    return loadedIndex();
}

void Library::setIndexedText(const QString &path, const QString &text)
{
    loadedIndex().insert(nameOf(path), text);
    saveIndex();
}

void Library::setSource(const QString &path, const QString &application)
{
    updateMeta([&](LibraryMeta &meta) { meta.sources.insert(nameOf(path), application); });
}

QUuid Library::createCollection(const QString &name)
{
    const QUuid id = QUuid::createUuid();
    updateMeta([&](LibraryMeta &meta) { meta.collections.append({id, name, {}}); });
    return id;
}

void Library::renameCollection(const QUuid &id, const QString &name)
{
    updateMeta([&](LibraryMeta &meta) {
        if (LibraryCollection *collection = meta.collection(id))
            collection->name = name;
    });
}

void Library::deleteCollection(const QUuid &id)
{
    updateMeta([&](LibraryMeta &meta) {
        meta.collections.removeIf([&](const LibraryCollection &entry) { return entry.id == id; });
    });
}

void Library::add(const QStringList &paths, const QUuid &collection)
{
    updateMeta([&](LibraryMeta &meta) {
        LibraryCollection *target = meta.collection(collection);
        if (!target)
            return;
        for (const QString &path : paths) {
            if (!target->items.contains(nameOf(path)))
                target->items.append(nameOf(path));
        }
    });
}

void Library::removeFrom(const QStringList &paths, const QUuid &collection)
{
    QSet<QString> names;
    for (const QString &path : paths)
        names.insert(nameOf(path));
    updateMeta([&](LibraryMeta &meta) {
        if (LibraryCollection *target = meta.collection(collection))
            target->items.removeIf([&](const QString &name) { return names.contains(name); });
    });
    Q_EMIT changed();
}

bool Library::isInAnyCollection(const QString &path) const
{
    const QString name = nameOf(path);
    const auto &collections = meta().collections;
    return std::any_of(collections.begin(), collections.end(),
                       [&](const LibraryCollection &entry) { return entry.items.contains(name); });
}
