#include "library/library_backup.h"

#include "base/async.h"
#include "base/atomic_file.h"
#include "base/json.h"
#include "base/log.h"
#include "library/companions.h"
#include "library/library.h"
#include "library/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace {

QJsonObject toObject(const QHash<QString, StoredText> &texts)
{
    QJsonObject object;
    for (auto entry = texts.begin(); entry != texts.end(); ++entry)
        object.insert(entry.key(), entry.value().toString());
    return object;
}

std::optional<QHash<QString, StoredText>> toTexts(const std::optional<QJsonObject> &object)
{
    if (!object)
        return std::nullopt;
    QHash<QString, StoredText> texts;
    for (auto entry = object->begin(); entry != object->end(); ++entry) {
        if (!entry.value().isString())
            return std::nullopt;
        texts.insert(entry.key(), entry.value().toString());
    }
    return texts;
}

std::optional<QSet<QString>> toNames(const std::optional<QJsonArray> &array)
{
    if (!array)
        return std::nullopt;
    QSet<QString> names;
    for (const QJsonValue &value : *array) {
        if (!value.isString())
            return std::nullopt;
        names.insert(value.toString());
    }
    return names;
}

// Of both; on a key of both the first's value stays.
template <typename Value>
QHash<QString, Value> united(QHash<QString, Value> present, const QHash<QString, Value> &other)
{
    for (auto entry = other.begin(); entry != other.end(); ++entry) {
        if (!present.contains(entry.key()))
            present.insert(entry.key(), entry.value());
    }
    return present;
}

} // namespace

QByteArray LibraryBackup::toJson(const Contents &contents)
{
    QStringList favorites(contents.data.favorites.begin(), contents.data.favorites.end());
    favorites.sort();
    const QJsonObject object{
        {QStringLiteral("created"), contents.created.toUTC().toString(Qt::ISODate)},
        {QStringLiteral("favorites"), QJsonArray::fromStringList(favorites)},
        {QStringLiteral("meta"), contents.data.meta.toJson()},
        {QStringLiteral("textIndex"), toObject(contents.data.texts)},
    };
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

Result<LibraryBackup::Contents> LibraryBackup::read(const QString &path)
{
    const auto document = Json::readFile(path);
    if (!document)
        return std::unexpected(document.error());
    const QJsonObject object = document->object();
    const auto created = Json::string(object, "created");
    const auto favorites = toNames(Json::array(object, "favorites"));
    const auto metaObject = Json::object(object, "meta");
    const auto meta = metaObject ? LibraryMeta::fromJson(*metaObject) : std::nullopt;
    const auto texts = toTexts(Json::object(object, "textIndex"));
    const QDateTime date = QDateTime::fromString(created.value_or(QString()), Qt::ISODate);
    if (!date.isValid() || !favorites || !meta || !texts)
        return fail(Error::Kind::Invalid,
                    LibraryTexts::tr("%1 is not the data of a Library that this version can read.")
                        .arg(QFileInfo(path).fileName()),
                    path);
    return Contents{date, {*texts, *favorites, *meta}};
}

CatalogData LibraryBackup::merged(const CatalogData &present, const CatalogData &other)
{
    CatalogData all = present;
    all.favorites.unite(other.favorites);
    all.texts = united(present.texts, other.texts);
    all.meta.sources = united(present.meta.sources, other.meta.sources);
    all.meta.descriptions = united(present.meta.descriptions, other.meta.descriptions);
    for (const LibraryCollection &collection : other.meta.collections) {
        LibraryCollection *known = all.meta.collection(collection.id);
        if (!known) {
            all.meta.collections.append(collection);
            continue;
        }
        known->items.append(collection.items);
        known->items.removeDuplicates();
    }
    return all;
}

LibraryBackup::News LibraryBackup::newsOf(const CatalogData &present, const CatalogData &merged)
{
    const auto more = [](const auto &after, const auto &before) {
        return static_cast<int>(after.size() - before.size());
    };
    return {more(merged.favorites, present.favorites),
            more(merged.meta.collections, present.meta.collections), more(merged.texts, present.texts),
            more(merged.meta.sources, present.meta.sources),
            more(merged.meta.descriptions, present.meta.descriptions)};
}

Result<void> LibraryBackup::exportData(const Library &library, const QString &path, const QDateTime &now)
{
    return AtomicFile::write(path, toJson({now, library.catalog().data()}));
}

Result<LibraryBackup::News> LibraryBackup::importData(Library &library, const QString &path)
{
    const auto contents = read(path);
    if (!contents)
        return std::unexpected(contents.error());
    LibraryCatalog &catalog = library.catalog();
    News news;
    {
        const auto lock = catalog.begin();
        const CatalogData before = catalog.data();
        const CatalogData after = merged(before, contents->data);
        news = newsOf(before, after);
        catalog.store(lock, CatalogPatch::between(before, after));
    }
    if (auto stored = catalog.flush(); !stored)
        return std::unexpected(stored.error());
    library.postChanged();
    return news;
}

void LibraryBackup::backUp(const CatalogData &data, const QString &backups, const QDateTime &now)
{
    const QDir folder(backups);
    const QString path = folder.filePath(
        QStringLiteral("library-%1.json").arg(now.date().toString(QStringLiteral("yyyy-MM-dd"))));
    if (QFileInfo::exists(path))
        return;
    QDir().mkpath(backups);
    if (const auto written = AtomicFile::write(path, toJson({now, data})); !written)
        Log::error(QStringLiteral("Automatic library backup failed"), written.error());
    QStringList names = folder.entryList({QStringLiteral("*.json")}, QDir::Files);
    std::sort(names.begin(), names.end(), std::greater());
    for (qsizetype i = kLimit; i < names.size(); ++i)
        QFile::remove(folder.filePath(names[i]));
}

void LibraryBackup::autoBackup(Library &library, const QDateTime &now)
{
    const QString backups = Companions::hiddenIn(library.folder()) + QStringLiteral("/backups");
    whenDone(runInBackground([data = library.catalog().data(), backups, now] { backUp(data, backups, now); }),
             &library, [] {});
}
