#include "library/model/library_contents.h"

#include "base/async.h"
#include "base/file_tree.h"
#include "library/library_names.h"

#include <QTimer>
#include <malloc.h>

namespace {

QString textOf(const QHash<QString, StoredText> &texts, const QHash<QString, QString> &descriptions,
               const QString &name)
{
    const auto description = descriptions.constFind(name);
    if (description == descriptions.constEnd())
        return texts.value(name);
    return texts.value(name).toString() + QLatin1Char('\n') + *description;
}

} // namespace

// What a worker indexes of a row.
struct LibraryContents::Document {
    Row row;
    QString name;
    QString source;
};

// What a look at the folder gave.
struct LibraryContents::Loaded {
    QString folder;
    CaptureTable table;
    std::unique_ptr<SearchIndex> index = std::make_unique<SearchIndex>(); // finds nothing yet
    Documents documents;
};

// What the catalog says of documents, in their order.
struct LibraryContents::Known {
    Documents documents; // with their sources
    std::vector<char> isFavorite;
    std::vector<qsizetype> source; // in `sources`
    QStringList sources;
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
    connect(&library.catalog(), &LibraryCatalog::read, this, [this] {
        if (follows())
            learn();
    });
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

std::shared_ptr<LibraryContents::Loaded> LibraryContents::filesOf(const QString &folder,
                                                                  const FolderWatch::Listing &listing)
{
    auto loaded = std::make_shared<Loaded>();
    loaded->folder = folder;
    loaded->table = CaptureTable::of(CaptureTable::filesOf(listing));
    auto documents = std::make_shared<std::vector<Document>>();
    documents->reserve(loaded->table.rowCount());
    for (const Row row : loaded->table.order(LibrarySort::Newest)) {
        loaded->table.at(row).slot = loaded->index->add({});
        documents->push_back({row, loaded->table.at(row).name, {}});
    }
    loaded->documents = std::move(documents);
    return loaded;
}

void LibraryContents::reload()
{
    ++m_generation;
    const QString folder = m_library.folder();
    takeFiles(*filesOf(folder, FolderWatch::list(folder, Library::isOfLibrary)));
    m_listed.reset();
    std::ignore = m_library.catalog().data(); // waits for it
    m_index = std::make_unique<SearchIndex>();
    for (const Row row : m_table.order(LibrarySort::Newest)) {
        readMeta(row);
        m_table.at(row).slot = m_index->add(fieldsOf(row));
    }
    m_reading = Reading::Done;
    Q_EMIT replaced();
    Q_EMIT readingChanged();
}

void LibraryContents::load()
{
    const int generation = ++m_generation;
    m_reading = Reading::Files;
    Q_EMIT readingChanged();
    const auto take = [this, generation](const std::shared_ptr<Loaded> &loaded) {
        if (generation != m_generation)
            return;
        m_reading = Reading::Texts;
        takeFiles(*loaded);
        Q_EMIT replaced();
        Q_EMIT readingChanged();
        // What the first cards needn't wait for.
        QTimer::singleShot(0, this, [this, generation] {
            if (generation != m_generation)
                return;
            buildIndex(Fields::Names, m_listed);
            makeOrders();
            m_library.catalog().readInBackground();
            if (m_library.catalog().isRead())
                learn();
        });
    };
    m_library.whenListed(
        this, [this, generation, take, folder = m_library.folder()](const FolderWatch::Listing &listing) {
            if (generation == m_generation)
                whenDone(runInBackground([folder, listing] { return filesOf(folder, listing); }), this, take);
        });
}

void LibraryContents::takeFiles(Loaded &loaded)
{
    m_folder = loaded.folder;
    std::swap(m_table, loaded.table);
    std::swap(m_index, loaded.index);
    m_listed = loaded.documents;
    m_changedMeanwhile.clear();
    const QStringList missed = std::exchange(m_missed, {});
    takeOut(missed);
    takeIn(missed);
}

// Until all orders are there, only the first is at hand.
void LibraryContents::makeOrders()
{
    const auto sort = [files = m_table.files()] { return CaptureTable::ordersOf(files); };
    whenDone(runInBackground(sort), this,
             [this, generation = m_generation](const std::shared_ptr<CaptureTable::Orders> &orders) {
                 if (generation == m_generation && !m_table.take(*orders))
                     makeOrders();
             });
}

LibraryContents::Documents LibraryContents::documents() const
{
    auto documents = std::make_shared<std::vector<Document>>();
    documents->reserve(static_cast<size_t>(m_table.size()));
    for (const Row row : m_table.order(LibrarySort::Newest))
        documents->push_back({row, m_table.at(row).name, m_table.source(m_table.at(row).source)});
    return documents;
}

bool LibraryContents::isThere(const Document &document) const
{
    const CaptureTable::Capture &capture = m_table.at(document.row);
    return capture.isThere && capture.name == document.name;
}

// Takes over what the catalog knows of all files, a thing of milliseconds when a worker has looked it up.
void LibraryContents::learn()
{
    const auto look = [listed = m_listed ? m_listed : documents(),
                       favorites = m_library.catalog().data().favorites,
                       sources = m_library.catalog().meta().sources] {
        auto known = std::make_shared<Known>();
        auto documents = std::make_shared<std::vector<Document>>(*listed);
        QHash<QString, qsizetype> places;
        for (Document &document : *documents) {
            known->isFavorite.push_back(favorites.contains(document.name));
            document.source = sources.value(document.name);
            if (!places.contains(document.source)) {
                places.insert(document.source, known->sources.size());
                known->sources.append(document.source);
            }
            known->source.push_back(places.value(document.source));
        }
        known->documents = std::move(documents);
        return known;
    };
    whenDone(runInBackground(look), this,
             [this, generation = m_generation](const std::shared_ptr<Known> &known) {
                 if (generation == m_generation)
                     take(*known);
             });
}

void LibraryContents::take(const Known &known)
{
    std::vector<quint32> numbers;
    for (const QString &source : known.sources)
        numbers.push_back(m_table.sourceNumber(source));
    const std::vector<Document> &documents = *known.documents;
    for (size_t i = 0; i < documents.size(); ++i) {
        if (!isThere(documents[i]))
            continue;
        CaptureTable::Capture &capture = m_table.at(documents[i].row);
        capture.isFavorite = known.isFavorite[i];
        capture.source = numbers[static_cast<size_t>(known.source[i])];
    }
    for (const QString &name : std::as_const(m_changedMeanwhile)) {
        if (const auto row = m_table.find(name))
            readMeta(*row);
    }
    Q_EMIT changed();
    buildIndex(Fields::All, known.documents);
}

void LibraryContents::buildIndex(Fields fields, Documents indexed)
{
    m_reading = Reading::Texts;
    CatalogData data;
    if (fields == Fields::All)
        data = m_library.catalog().data(); // a copy that shares the texts themselves
    struct Built {
        std::unique_ptr<SearchIndex> index = std::make_unique<SearchIndex>();
    };
    const auto build = [indexed, texts = data.texts, descriptions = data.meta.descriptions] {
        auto built = std::make_shared<Built>();
        for (const Document &document : *indexed) {
            const std::array words{LibraryNames::baseOf(document.name), document.source,
                                   textOf(texts, descriptions, document.name)};
            built->index->add(words);
        }
        return built;
    };
    whenDone(runInBackground(build), this,
             [this, generation = m_generation, indexed, fields](const std::shared_ptr<Built> &built) {
                 if (generation == m_generation && m_reading != Reading::Done)
                     takeIndex(std::move(built->index), *indexed, fields);
             });
}

// An index with a slot for each document, in their order.
void LibraryContents::takeIndex(std::unique_ptr<SearchIndex> index, const std::vector<Document> &documents,
                                Fields fields)
{
    constexpr auto kNone = std::numeric_limits<SearchIndex::Slot>::max();
    std::vector<Row> changed;
    for (const QString &name : std::as_const(m_changedMeanwhile)) {
        if (const auto row = m_table.find(name)) {
            changed.push_back(*row);
            m_table.at(*row).slot = kNone;
        }
    }
    std::swap(m_index, index);
    for (SearchIndex::Slot slot = 0; slot < documents.size(); ++slot) {
        if (isThere(documents[slot]))
            m_table.at(documents[slot].row).slot = slot;
        else
            m_index->remove(slot);
    }
    for (const Row row : changed) {
        if (m_table.at(row).slot != kNone)
            m_index->remove(m_table.at(row).slot);
        m_table.at(row).slot = m_index->add(fieldsOf(row));
    }
    // To give its memory back takes a while, and so does giving back what all this work has left in between.
    runInBackground([old = std::shared_ptr<SearchIndex>(std::move(index))]() mutable {
        old.reset();
        malloc_trim(0);
    });
    if (fields == Fields::All) {
        m_changedMeanwhile.clear();
        m_listed.reset();
        m_reading = Reading::Done;
    }
    Q_EMIT textsRead();
    Q_EMIT readingChanged();
}

std::array<QString, 3> LibraryContents::fieldsOf(Row row) const
{
    const CaptureTable::Capture &capture = m_table.at(row);
    const LibraryCatalog &catalog = m_library.catalog();
    if (!catalog.isRead())
        return {LibraryNames::baseOf(capture.name), {}, {}};
    return {LibraryNames::baseOf(capture.name), m_table.source(capture.source),
            textOf(catalog.data().texts, catalog.meta().descriptions, capture.name)};
}

void LibraryContents::readMeta(Row row)
{
    CaptureTable::Capture &capture = m_table.at(row);
    if (!capture.isThere || !m_library.catalog().isRead())
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
        buildIndex(Fields::All, documents());
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

// Whether a change of these files is to be followed at once; a worker that lists them may miss it.
bool LibraryContents::follows(const QStringList &paths)
{
    if (m_reading == Reading::Files)
        m_missed += paths;
    return follows();
}

void LibraryContents::filesCame(const QStringList &paths)
{
    if (!follows(paths))
        return;
    const QStringList known = takeIn(paths);
    Q_EMIT changed();
    if (!known.isEmpty())
        Q_EMIT cardsChanged(known);
}

void LibraryContents::filesWent(const QStringList &paths)
{
    if (!follows(paths))
        return;
    takeOut(paths);
    Q_EMIT changed();
    Q_EMIT removed(paths);
}

void LibraryContents::fileRenamed(const QString &oldPath, const QString &newPath)
{
    if (!follows({oldPath, newPath}))
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
