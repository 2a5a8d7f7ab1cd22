#include "library/model/library_contents.h"

#include "base/async.h"
#include "base/file_tree.h"
#include "library/library_names.h"

namespace {

QString textOf(const QHash<QString, QString> &texts, const QHash<QString, QString> &descriptions,
               const QString &name)
{
    const auto description = descriptions.constFind(name);
    if (description == descriptions.constEnd())
        return texts.value(name);
    return texts.value(name) + QLatin1Char('\n') + *description;
}

} // namespace

// What a look at the folder gave, with the names already to be found.
struct LibraryContents::Loaded {
    QString folder;
    CaptureTable table;
};

// What a worker indexes of a row.
struct LibraryContents::Document {
    Row row;
    QString name;
    QString source;
};

LibraryContents::LibraryContents(Library &library, QObject *parent)
    : QObject(parent), m_library(library), m_index(std::make_unique<SearchIndex>())
{
    connect(&library, &Library::added, this, &LibraryContents::filesCame);
    connect(&library, &Library::modified, this, &LibraryContents::filesCame);
    connect(&library, &Library::removed, this, &LibraryContents::filesWent);
    connect(&library, &Library::renamed, this, &LibraryContents::fileRenamed);
    connect(&library, &Library::changed, this, &LibraryContents::folderChanged);
    connect(&library.catalog(), &LibraryCatalog::changed, this, &LibraryContents::namesChanged);
}

LibraryContents::~LibraryContents() = default;

LibraryItem LibraryContents::item(Row row) const
{
    const CaptureTable::Capture &capture = m_table.at(row);
    return {path(row),
            capture.modified == CaptureTable::kUnknownDate ? QDateTime()
                                                           : QDateTime::fromMSecsSinceEpoch(capture.modified),
            capture.bytes};
}

std::optional<LibraryContents::Row> LibraryContents::find(const QString &path) const
{
    return isMine(path) ? m_table.find(LibraryNames::nameOf(path)) : std::nullopt;
}

std::shared_ptr<LibraryContents::Loaded> LibraryContents::filesOf(const QString &folder)
{
    return std::make_shared<Loaded>(
        Loaded{folder, CaptureTable::of(CaptureTable::list(folder), CaptureTable::Orders::Ready)});
}

void LibraryContents::reload()
{
    ++m_generation;
    takeFiles(filesOf(m_library.folder()));
    m_index = std::make_unique<SearchIndex>();
    for (const Row row : m_table.order(LibrarySort::Newest))
        m_table.at(row).slot = m_index->add(fieldsOf(row));
    m_reading = Reading::Done;
    Q_EMIT replaced();
    Q_EMIT readingChanged();
}

void LibraryContents::load()
{
    const int generation = ++m_generation;
    m_reading = Reading::Files;
    Q_EMIT readingChanged();
    whenDone(runInBackground([folder = m_library.folder()] { return filesOf(folder); }), this,
             [this, generation](const std::shared_ptr<Loaded> &loaded) {
                 if (generation != m_generation)
                     return;
                 takeFiles(loaded);
                 buildIndex();
                 Q_EMIT replaced();
                 Q_EMIT readingChanged();
             });
}

void LibraryContents::takeFiles(std::shared_ptr<Loaded> loaded)
{
    m_folder = loaded->folder;
    m_table = std::move(loaded->table);
    for (Row row = 0; row < m_table.rowCount(); ++row)
        readMeta(row);
}

void LibraryContents::buildIndex()
{
    auto documents = std::make_shared<std::vector<Document>>();
    documents->reserve(static_cast<size_t>(m_table.size()));
    for (const Row row : m_table.order(LibrarySort::Newest))
        documents->push_back({row, m_table.at(row).name, m_table.source(m_table.at(row).source)});
    m_changedMeanwhile.clear();
    m_reading = Reading::Texts;
    indexNames(*documents);

    // A copy that shares the texts themselves.
    const auto texts = std::make_shared<QHash<QString, QString>>(m_library.catalog().data().texts);
    const auto descriptions =
        std::make_shared<QHash<QString, QString>>(m_library.catalog().meta().descriptions);
    struct Built {
        std::unique_ptr<SearchIndex> index = std::make_unique<SearchIndex>();
    };
    const auto build = [documents, texts, descriptions] {
        auto built = std::make_shared<Built>();
        for (const Document &document : *documents) {
            const std::array fields{LibraryNames::baseOf(document.name), document.source,
                                    textOf(*texts, *descriptions, document.name)};
            built->index->add(fields);
        }
        return built;
    };
    whenDone(runInBackground(build), this,
             [this, generation = m_generation, documents](const std::shared_ptr<Built> &built) {
                 if (generation == m_generation)
                     takeIndex(std::move(built->index), *documents);
             });
}

// Names and applications are quick, and stand in for the rest until that is read.
void LibraryContents::indexNames(const std::vector<Document> &documents)
{
    m_index = std::make_unique<SearchIndex>();
    for (const Document &document : documents) {
        const std::array fields{LibraryNames::baseOf(document.name), document.source};
        m_table.at(document.row).slot = m_index->add(fields);
    }
}

// An index with a slot for each document, in their order.
void LibraryContents::takeIndex(std::unique_ptr<SearchIndex> index, const std::vector<Document> &documents)
{
    m_index = std::move(index);
    for (SearchIndex::Slot slot = 0; slot < documents.size(); ++slot) {
        const Document &document = documents[slot];
        if (m_table.find(document.name) == document.row)
            m_table.at(document.row).slot = slot;
        else
            m_index->remove(slot);
    }
    m_reading = Reading::Done;
    for (const QString &name : std::exchange(m_changedMeanwhile, {})) {
        if (const auto row = m_table.find(name))
            m_table.at(*row).slot = m_index->add(fieldsOf(*row));
    }
    Q_EMIT textsRead();
    Q_EMIT readingChanged();
}

std::array<QString, 3> LibraryContents::fieldsOf(Row row) const
{
    const CaptureTable::Capture &capture = m_table.at(row);
    const LibraryCatalog &catalog = m_library.catalog();
    return {LibraryNames::baseOf(capture.name), m_table.source(capture.source),
            textOf(catalog.data().texts, catalog.meta().descriptions, capture.name)};
}

void LibraryContents::readMeta(Row row)
{
    CaptureTable::Capture &capture = m_table.at(row);
    if (!capture.isThere)
        return;
    const CatalogData &data = m_library.catalog().data();
    capture.isFavorite = data.favorites.contains(capture.name);
    capture.source = m_table.sourceNumber(data.meta.sources.value(capture.name));
}

// The row's present fields in place of those that the index has.
void LibraryContents::indexRow(Row row)
{
    CaptureTable::Capture &capture = m_table.at(row);
    m_index->remove(capture.slot);
    capture.slot = m_index->add(fieldsOf(row));
    if (m_reading == Reading::Texts)
        m_changedMeanwhile.insert(capture.name);
    // What was removed weighs on memory and on every query.
    constexpr SearchIndex::Slot kMany = 5000;
    if (m_reading == Reading::Done && m_index->removedCount() > kMany &&
        m_index->removedCount() > m_index->slotCount() / 2)
        buildIndex();
}

bool LibraryContents::isMine(const QString &path) const
{
    return path.size() > m_folder.size() && path.startsWith(m_folder) &&
           path[m_folder.size()] == QLatin1Char('/');
}

// The new files and the new dates and sizes of known ones, which it returns.
QStringList LibraryContents::takeIn(const QStringList &paths)
{
    std::vector<CaptureTable::File> files;
    QStringList known;
    for (const QString &path : QSet<QString>(paths.begin(), paths.end())) {
        // One that is told of late may have another name by now.
        if (!isMine(path) || !FileTree::isFile(path))
            continue;
        const LibraryItem item = m_library.item(path);
        CaptureTable::File file{
            LibraryNames::nameOf(path),
            item.date.isValid() ? item.date.toMSecsSinceEpoch() : CaptureTable::kUnknownDate, item.bytes};
        if (const auto row = m_table.find(file.name)) {
            known.append(path);
            m_index->remove(m_table.at(*row).slot);
        }
        files.push_back(std::move(file));
    }
    for (const Row row : m_table.change({}, files)) {
        readMeta(row);
        m_table.at(row).slot = m_index->add(fieldsOf(row));
        if (m_reading == Reading::Texts)
            m_changedMeanwhile.insert(m_table.at(row).name);
    }
    return known;
}

void LibraryContents::takeOut(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths) {
        const auto row = find(path);
        if (!row)
            continue;
        m_index->remove(m_table.at(*row).slot);
        names.append(LibraryNames::nameOf(path));
    }
    m_table.change(names, {});
}

void LibraryContents::filesCame(const QStringList &paths)
{
    if (!follows())
        return;
    const QStringList known = takeIn(paths);
    Q_EMIT changed();
    if (!known.isEmpty())
        Q_EMIT cardsChanged(known);
}

void LibraryContents::filesWent(const QStringList &paths)
{
    if (!follows())
        return;
    takeOut(paths);
    Q_EMIT changed();
    Q_EMIT removed(paths);
}

void LibraryContents::fileRenamed(const QString &oldPath, const QString &newPath)
{
    if (!follows())
        return;
    takeOut({oldPath});
    const QStringList known = takeIn({newPath});
    Q_EMIT changed();
    Q_EMIT renamed(oldPath, newPath);
    if (!known.isEmpty())
        Q_EMIT cardsChanged(known);
}

void LibraryContents::namesChanged(const QStringList &names)
{
    if (!follows())
        return;
    QStringList cards;
    for (const QString &name : names) {
        const auto row = m_table.find(name);
        if (!row)
            continue;
        const bool wasFavorite = m_table.at(*row).isFavorite;
        readMeta(*row);
        indexRow(*row);
        if (m_table.at(*row).isFavorite != wasFavorite)
            cards.append(path(*row));
    }
    Q_EMIT changed();
    if (!cards.isEmpty())
        Q_EMIT cardsChanged(cards);
}

// Mostly what finer signals have told already; but another folder is told by this alone.
void LibraryContents::folderChanged()
{
    if (m_reading != Reading::Nothing && m_library.folder() != m_folder)
        load();
}
