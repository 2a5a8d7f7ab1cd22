#include "library/conflict_copies.h"

#include "base/json.h"
#include "base/log.h"
#include "library/companions.h"
#include "library/library.h"
#include "library/library_backup.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

enum class Part { Texts, Favorites, Meta, Journal };

// "library.sync-conflict-20260314-101112-ABCDEFG.json", "library (conflicted copy 2026-03-14 101112).json",
// "library_conflict-20260314-101112.json" and the like.
std::optional<Part> partOf(const QString &name)
{
    static const QRegularExpression copy(
        QStringLiteral("\\A(text-index|favorites|library|changes|folding)[ ._-].*conflict.*\\.jsonl?\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const auto match = copy.match(name);
    if (!match.hasMatch())
        return std::nullopt;
    const QString base = match.captured(1).toLower();
    if (base == QLatin1String("text-index"))
        return Part::Texts;
    if (base == QLatin1String("favorites"))
        return Part::Favorites;
    return base == QLatin1String("library") ? Part::Meta : Part::Journal;
}

std::optional<CatalogData> journalAt(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    CatalogData data;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (const auto patch = CatalogPatch::fromJson(QJsonDocument::fromJson(line).object()))
            patch->apply(data);
    }
    return data;
}

// Nothing for what can't be understood.
std::optional<CatalogData> dataAt(const QString &path, Part part)
{
    if (part == Part::Journal)
        return journalAt(path);
    const auto document = Json::readFile(path);
    if (!document)
        return std::nullopt;
    CatalogData data;
    const QJsonObject object = document->object();
    const QJsonArray array = document->array();
    switch (part) {
    case Part::Texts:
        if (!document->isObject())
            return std::nullopt;
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            if (entry.value().isString())
                data.texts.insert(entry.key(), StoredText(entry.value().toString()));
        }
        return data;
    case Part::Favorites:
        if (!document->isArray())
            return std::nullopt;
        for (const QJsonValue &name : array) {
            if (name.isString())
                data.favorites.insert(name.toString());
        }
        return data;
    case Part::Meta:
        if (const auto meta = LibraryMeta::fromJson(object)) {
            data.meta = *meta;
            return data;
        }
        return std::nullopt;
    case Part::Journal:
        break;
    }
    Q_UNREACHABLE();
}

} // namespace

bool ConflictCopies::isOne(const QString &name)
{
    return partOf(name).has_value();
}

QStringList ConflictCopies::in(const QString &directory)
{
    QStringList names = QDir(directory).entryList(QDir::Files);
    names.removeIf([](const QString &name) { return !isOne(name); });
    return names;
}

ConflictCopies::Copies ConflictCopies::read(const QString &directory)
{
    Copies copies;
    for (const QString &name : in(directory)) {
        const auto data = dataAt(QDir(directory).filePath(name), *partOf(name));
        if (!data) {
            Log::error(QStringLiteral("%1 could not be understood and stays").arg(name));
            continue;
        }
        copies.data = LibraryBackup::merged(copies.data, *data);
        copies.names.append(name);
    }
    return copies;
}

Result<int> ConflictCopies::takeIn(Library &library, const Copies &copies)
{
    if (copies.names.isEmpty())
        return 0;
    LibraryCatalog &catalog = library.catalog();
    {
        const auto lock = catalog.begin();
        catalog.store(
            lock, CatalogPatch::between(catalog.data(), LibraryBackup::merged(catalog.data(), copies.data)));
    }
    // Only what is safe elsewhere may go.
    if (auto stored = catalog.stored(); !stored)
        return std::unexpected(stored.error());
    const QDir directory(Companions::hiddenIn(library.folder()));
    for (const QString &name : copies.names)
        QFile::remove(directory.filePath(name));
    Log::info(QStringLiteral("Took in %1 conflicting copies of metadata").arg(copies.names.size()));
    return static_cast<int>(copies.names.size());
}
