#include "library/removed_captures.h"

#include "base/log.h"
#include "library/library_names.h"

#include <QDir>
#include <algorithm>

namespace {
constexpr size_t kMostBatches = 10;
}

RemovedCaptures::Capture RemovedCaptures::Capture::of(const CatalogData &data, const QString &path)
{
    const QString name = LibraryNames::nameOf(path);
    const auto valueOf = [&name](const auto &values) {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(QString(*found));
    };
    Capture capture;
    capture.path = path;
    capture.text = valueOf(data.texts);
    capture.source = valueOf(data.meta.sources);
    capture.description = valueOf(data.meta.descriptions);
    capture.isFavorite = data.favorites.contains(name);
    for (const LibraryCollection &collection : data.meta.collections) {
        if (const auto place = collection.items.indexOf(name); place >= 0)
            capture.places.append({collection.id, static_cast<int>(place)});
    }
    return capture;
}

CatalogPatch RemovedCaptures::Capture::patch(const CatalogData &data, const QString &name) const
{
    CatalogPatch patch;
    if (text)
        patch.texts.insert(name, text);
    if (source)
        patch.sources.insert(name, source);
    if (description)
        patch.descriptions.insert(name, description);
    if (isFavorite)
        patch.favorites.insert(name, true);
    for (const auto &[id, place] : places) {
        for (LibraryCollection collection : data.meta.collections) {
            if (collection.id != id || collection.items.contains(name))
                continue;
            collection.items.insert(std::clamp<qsizetype>(place, 0, collection.items.size()), name);
            patch.collections.append({id, collection});
        }
    }
    return patch;
}

void RemovedCaptures::begin()
{
    m_batches.emplace_back();
    while (m_batches.size() > kMostBatches)
        m_batches.pop_front();
}

QString RemovedCaptures::nextAside(const QString &hidden)
{
    if (m_batches.empty())
        begin();
    Batch &batch = m_batches.back();
    if (!batch.scratch) {
        auto made = ScratchFolder::make(hidden);
        if (!made) {
            Log::error(QStringLiteral("What belongs to a removed capture can't be kept"), made.error());
            return {};
        }
        batch.scratch = std::make_shared<ScratchFolder>(*std::move(made));
    }
    const QString folder = batch.scratch->filePath(QString::number(batch.count++));
    return QDir().mkpath(folder) ? folder : QString();
}

void RemovedCaptures::add(const QString &trashed, Capture capture)
{
    if (m_batches.empty())
        begin();
    capture.scratch = m_batches.back().scratch;
    m_batches.back().captures.insert(trashed, std::move(capture));
}

std::optional<RemovedCaptures::Capture> RemovedCaptures::find(const QString &trashed) const
{
    for (const Batch &batch : m_batches) {
        if (const auto found = batch.captures.find(trashed); found != batch.captures.end())
            return *found;
    }
    return std::nullopt;
}

void RemovedCaptures::forget(const QString &trashed)
{
    for (Batch &batch : m_batches)
        batch.captures.remove(trashed);
}
