#include "library/model/library_model.h"

#include "base/async.h"
#include "base/clock.h"
#include "library/texts.h"
#include "settings/defaults.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <numeric>

namespace {

const QString kSortKey = QStringLiteral("librarySort");
const QString kCardSizeKey = QStringLiteral("libraryCardSize");
constexpr double kStandardCardSize = 220;
constexpr qint64 kDay = 86'400'000; // milliseconds
constexpr qint64 kEver = std::numeric_limits<qint64>::max();

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString baseOf(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? name : name.left(dot);
}

QString rawValue(LibrarySort sort)
{
    switch (sort) {
    case LibrarySort::Newest:
        return QStringLiteral("newest");
    case LibrarySort::Oldest:
        return QStringLiteral("oldest");
    case LibrarySort::Name:
        return QStringLiteral("name");
    case LibrarySort::Size:
        return QStringLiteral("size");
    }
    Q_UNREACHABLE();
}

QString textOf(const QHash<QString, QString> &texts, const QHash<QString, QString> &descriptions,
               const QString &name)
{
    const auto description = descriptions.constFind(name);
    if (description == descriptions.constEnd())
        return texts.value(name);
    return texts.value(name) + QLatin1Char('\n') + *description;
}

CaptureTable::File fileAt(const QString &path)
{
    const QFileInfo info(path);
    const QDateTime date = info.lastModified();
    return {info.fileName(), date.isValid() ? date.toMSecsSinceEpoch() : CaptureTable::kUnknownDate,
            info.size()};
}

} // namespace

QString title(LibraryFilter filter)
{
    switch (filter) {
    case LibraryFilter::All:
        return LibraryTexts::tr("All Captures");
    case LibraryFilter::Images:
        return LibraryTexts::tr("Screenshots");
    case LibraryFilter::Videos:
        return LibraryTexts::tr("Recordings");
    case LibraryFilter::Favorites:
        return LibraryTexts::tr("Favorites");
    case LibraryFilter::Today:
        return LibraryTexts::tr("Today");
    case LibraryFilter::Week:
        return LibraryTexts::tr("Last 7 Days");
    case LibraryFilter::Month:
        return LibraryTexts::tr("Last 30 Days");
    }
    Q_UNREACHABLE();
}

QString title(LibrarySort sort)
{
    switch (sort) {
    case LibrarySort::Newest:
        return LibraryTexts::tr("Newest First");
    case LibrarySort::Oldest:
        return LibraryTexts::tr("Oldest First");
    case LibrarySort::Name:
        return LibraryTexts::tr("Name");
    case LibrarySort::Size:
        return LibraryTexts::tr("File Size");
    }
    Q_UNREACHABLE();
}

QString title(DateRange range)
{
    switch (range) {
    case DateRange::Any:
        return LibraryTexts::tr("Any Date");
    case DateRange::Today:
        return LibraryTexts::tr("Today");
    case DateRange::Week:
        return LibraryTexts::tr("Past Week");
    case DateRange::Month:
        return LibraryTexts::tr("Past Month");
    case DateRange::Year:
        return LibraryTexts::tr("Past Year");
    }
    Q_UNREACHABLE();
}

QString LibrarySheet::id() const
{
    switch (kind) {
    case Kind::Export:
        return QStringLiteral("export");
    case Kind::Pdf:
        return QStringLiteral("pdf");
    case Kind::Combine:
        return QStringLiteral("combine");
    case Kind::Rename:
        return QStringLiteral("rename");
    case Kind::Guide:
        return QStringLiteral("guide");
    case Kind::NewCollection:
        return QStringLiteral("newCollection");
    case Kind::RenameCollection:
        return QStringLiteral("renameCollection-") + collection.id.toString(QUuid::WithoutBraces).toUpper();
    case Kind::CleanUp:
        return QStringLiteral("cleanup");
    }
    Q_UNREACHABLE();
}

// What a look at the folder gave, with the names already to be found.
struct LibraryModel::Loaded {
    QString folder;
    CaptureTable table;
};

struct LibraryModel::Counts {
    std::array<int, 7> filters{};
    QHash<QString, int> apps;
    QHash<QUuid, int> collections;
    qint64 bytes = 0;
};

LibraryModel::LibraryModel(Library &library, Defaults &defaults, const Clock &clock, QObject *parent)
    : QObject(parent),
      m_library(library),
      m_defaults(defaults),
      m_clock(clock),
      m_index(std::make_unique<SearchIndex>()),
      m_sort(librarySort(defaults.string(kSortKey)).value_or(LibrarySort::Newest))
{
    if (const QJsonValue size = defaults.value(kCardSizeKey); size.isDouble())
        m_cardSize = size.toDouble();
    else
        m_cardSize = kStandardCardSize;
    m_update.setSingleShot(true);
    m_update.setInterval(0);
    connect(&m_update, &QTimer::timeout, this, &LibraryModel::updateVisible);
    m_midnight.setSingleShot(true);
    m_midnight.setTimerType(Qt::VeryCoarseTimer);
    connect(&m_midnight, &QTimer::timeout, this, [this] {
        contentsChanged();
        watchMidnight();
    });
    watchMidnight();
    connect(&library, &Library::added, this, &LibraryModel::filesCame);
    connect(&library, &Library::modified, this, &LibraryModel::filesCame);
    connect(&library, &Library::removed, this, &LibraryModel::filesWent);
    connect(&library, &Library::renamed, this, &LibraryModel::fileRenamed);
    connect(&library, &Library::changed, this, &LibraryModel::libraryChanged);
    connect(&library, &Library::indexing, this, [this](int done, int total) {
        m_indexProgress =
            done < total
                ? std::optional(LibraryTexts::tr("Indexing text in captures… %1 of %2").arg(done).arg(total))
                : std::nullopt;
        Q_EMIT progressChanged();
    });
    connect(&library.catalog(), &LibraryCatalog::changed, this, &LibraryModel::namesChanged);
    connect(&library.catalog(), &LibraryCatalog::collectionsChanged, this, [this] { contentsChanged(); });
}

LibraryModel::~LibraryModel() = default;

std::shared_ptr<LibraryModel::Loaded> LibraryModel::filesOf(const QString &folder)
{
    return std::make_shared<Loaded>(
        Loaded{folder, CaptureTable::of(CaptureTable::list(folder), CaptureTable::Orders::Ready)});
}

void LibraryModel::reload()
{
    ++m_generation;
    takeFiles(filesOf(m_library.folder()));
    m_index = std::make_unique<SearchIndex>();
    for (const Row row : m_table.order(LibrarySort::Newest)) {
        m_table.at(row).slot = m_index->add(fieldsOf(row));
    }
    m_reading = Reading::Done;
    updateVisible();
    Q_EMIT readingChanged();
}

void LibraryModel::load()
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
                 updateVisible();
                 Q_EMIT readingChanged();
             });
}

void LibraryModel::takeFiles(std::shared_ptr<Loaded> loaded)
{
    m_folder = loaded->folder;
    m_table = std::move(loaded->table);
    for (Row row = 0; row < m_table.rowCount(); ++row)
        readMeta(row);
    m_selection.removeIf(
        [this](const QString &path) { return !isMine(path) || !m_table.find(nameOf(path)); });
    m_counts.reset();
}

// In the order of the slots: what a worker made of the table's files.
void LibraryModel::buildIndex()
{
    struct Document {
        Row row;
        QString name;
        QString source;
    };
    auto documents = std::make_shared<std::vector<Document>>();
    documents->reserve(static_cast<size_t>(m_table.size()));
    for (const Row row : m_table.order(LibrarySort::Newest))
        documents->push_back({row, m_table.at(row).name, m_table.source(m_table.at(row).source)});
    struct Built {
        std::unique_ptr<SearchIndex> index = std::make_unique<SearchIndex>();
    };
    const int generation = m_generation;
    m_changedMeanwhile.clear();
    m_reading = Reading::Texts;

    // Names and applications are quick, and stand in for the rest until that is read.
    m_index = std::make_unique<SearchIndex>();
    for (const Document &document : *documents) {
        const std::array fields{baseOf(document.name), document.source};
        m_table.at(document.row).slot = m_index->add(fields);
    }

    // A copy that shares the texts themselves.
    const auto texts = std::make_shared<QHash<QString, QString>>(m_library.catalog().data().texts);
    const auto descriptions =
        std::make_shared<QHash<QString, QString>>(m_library.catalog().meta().descriptions);
    const auto build = [documents, texts, descriptions] {
        auto built = std::make_shared<Built>();
        for (const Document &document : *documents) {
            const std::array fields{baseOf(document.name), document.source,
                                    textOf(*texts, *descriptions, document.name)};
            built->index->add(fields);
        }
        return built;
    };
    whenDone(runInBackground(build), this,
             [this, generation, documents](const std::shared_ptr<Built> &built) {
                 if (generation != m_generation)
                     return;
                 m_index = std::move(built->index);
                 for (SearchIndex::Slot slot = 0; slot < documents->size(); ++slot) {
                     const Document &document = (*documents)[slot];
                     if (m_table.find(document.name) == document.row)
                         m_table.at(document.row).slot = slot;
                     else
                         m_index->remove(slot);
                 }
                 m_reading = Reading::Done;
                 for (const QString &name : m_changedMeanwhile) {
                     if (const auto row = m_table.find(name)) {
                         m_table.at(*row).slot = m_index->add(fieldsOf(*row));
                     }
                 }
                 m_changedMeanwhile.clear();
                 if (!SearchIndex::trimmed(m_query).isEmpty())
                     updateVisible();
                 Q_EMIT readingChanged();
             });
}

std::array<QString, 3> LibraryModel::fieldsOf(Row row) const
{
    const CaptureTable::Capture &capture = m_table.at(row);
    const LibraryCatalog &catalog = m_library.catalog();
    return {baseOf(capture.name), m_table.source(capture.source),
            textOf(catalog.data().texts, catalog.meta().descriptions, capture.name)};
}

void LibraryModel::readMeta(Row row)
{
    CaptureTable::Capture &capture = m_table.at(row);
    if (!capture.isThere)
        return;
    const CatalogData &data = m_library.catalog().data();
    capture.isFavorite = data.favorites.contains(capture.name);
    capture.source = m_table.sourceNumber(data.meta.sources.value(capture.name));
}

// The row's present fields in place of those that the index has.
void LibraryModel::indexRow(Row row)
{
    CaptureTable::Capture &capture = m_table.at(row);
    m_index->remove(capture.slot);
    capture.slot = m_index->add(fieldsOf(row));
    if (m_reading == Reading::Texts)
        m_changedMeanwhile.insert(capture.name);
    // What was removed weighs on memory and on every query.
    constexpr SearchIndex::Slot Many = 5000;
    if (m_reading == Reading::Done && m_index->removedCount() > Many &&
        m_index->removedCount() > m_index->slotCount() / 2)
        buildIndex();
}

bool LibraryModel::isMine(const QString &path) const
{
    return path.size() > m_folder.size() && path.startsWith(m_folder) &&
           path[m_folder.size()] == QLatin1Char('/');
}

void LibraryModel::filesCame(const QStringList &paths)
{
    if (m_reading == Reading::Nothing || m_reading == Reading::Files)
        return;
    std::vector<CaptureTable::File> files;
    QStringList known;
    for (const QString &path : QSet<QString>(paths.begin(), paths.end())) {
        if (!isMine(path))
            continue;
        CaptureTable::File file = fileAt(path);
        if (m_table.find(file.name))
            known.append(path);
        files.push_back(std::move(file));
    }
    for (const CaptureTable::File &file : files) {
        if (const auto row = m_table.find(file.name))
            m_index->remove(m_table.at(*row).slot);
    }
    for (const Row row : m_table.change({}, files)) {
        readMeta(row);
        m_table.at(row).slot = m_index->add(fieldsOf(row));
        if (m_reading == Reading::Texts)
            m_changedMeanwhile.insert(m_table.at(row).name);
    }
    contentsChanged();
    if (!known.isEmpty())
        Q_EMIT cardsChanged(known);
}

void LibraryModel::filesWent(const QStringList &paths)
{
    if (m_reading == Reading::Nothing || m_reading == Reading::Files)
        return;
    QStringList names;
    const qsizetype selected = m_selection.size();
    for (const QString &path : paths) {
        m_selection.remove(path);
        const auto row = isMine(path) ? m_table.find(nameOf(path)) : std::nullopt;
        if (!row)
            continue;
        m_index->remove(m_table.at(*row).slot);
        names.append(nameOf(path));
        if (m_previewing == path)
            setPreviewing(std::nullopt);
    }
    m_table.change(names, {});
    contentsChanged();
    if (m_selection.size() != selected)
        Q_EMIT selectionChanged();
}

void LibraryModel::fileRenamed(const QString &oldPath, const QString &newPath)
{
    const bool isSelected = m_selection.contains(oldPath);
    const bool isPreviewed = m_previewing == oldPath;
    filesWent({oldPath});
    filesCame({newPath});
    if (m_anchor == oldPath)
        m_anchor = newPath;
    if (isSelected) {
        m_selection.insert(newPath);
        Q_EMIT selectionChanged();
    }
    if (isPreviewed)
        setPreviewing(newPath);
}

void LibraryModel::namesChanged(const QStringList &names)
{
    if (m_reading == Reading::Nothing || m_reading == Reading::Files)
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
    contentsChanged();
    if (!cards.isEmpty())
        Q_EMIT cardsChanged(cards);
}

// Mostly what finer signals have told already; but another folder is told by this alone.
void LibraryModel::libraryChanged()
{
    if (m_reading != Reading::Nothing && m_library.folder() != m_folder)
        load();
}

void LibraryModel::contentsChanged()
{
    m_counts.reset();
    m_update.start();
}

QList<LibraryItem> LibraryModel::items() const
{
    QList<LibraryItem> items;
    for (const Row row : m_table.order(LibrarySort::Newest))
        items.append(item(row));
    return items;
}

QList<LibraryItem> LibraryModel::largest(int count) const
{
    QList<LibraryItem> items;
    for (const Row row : m_table.order(LibrarySort::Size)) {
        if (items.size() == count)
            break;
        items.append(item(row));
    }
    return items;
}

LibraryItem LibraryModel::item(Row row) const
{
    const CaptureTable::Capture &capture = m_table.at(row);
    return {path(row),
            capture.modified == CaptureTable::kUnknownDate ? QDateTime()
                                                           : QDateTime::fromMSecsSinceEpoch(capture.modified),
            capture.bytes};
}

void LibraryModel::setQuery(const QString &query)
{
    if (query == m_query)
        return;
    const bool isSame = SearchIndex::trimmed(query) == SearchIndex::trimmed(m_query);
    m_query = query;
    if (!isSame)
        updateVisible();
}

void LibraryModel::setSidebar(const SidebarItem &sidebar)
{
    if (sidebar == m_sidebar)
        return;
    m_sidebar = sidebar;
    updateVisible();
    Q_EMIT sidebarChanged();
}

void LibraryModel::setDateRange(DateRange range)
{
    if (range == m_dateRange)
        return;
    m_dateRange = range;
    updateVisible();
}

void LibraryModel::setSort(LibrarySort sort)
{
    if (sort == m_sort)
        return;
    m_sort = sort;
    m_defaults.set(kSortKey, rawValue(sort));
    updateVisible();
}

void LibraryModel::setCardSize(double size)
{
    if (size == m_cardSize)
        return;
    m_cardSize = size;
    m_defaults.set(kCardSizeKey, size);
    Q_EMIT cardSizeChanged();
}

LibraryModel::Range LibraryModel::rangeOf(DateRange range) const
{
    const qint64 now = m_clock.now().toMSecsSinceEpoch();
    switch (range) {
    case DateRange::Any:
        return {std::numeric_limits<qint64>::min(), kEver};
    case DateRange::Today:
        return rangeOf(LibraryFilter::Today);
    case DateRange::Week:
        return {now - 7 * kDay + 1, kEver};
    case DateRange::Month:
        return {now - 30 * kDay + 1, kEver};
    case DateRange::Year:
        return {now - 365 * kDay + 1, kEver};
    }
    Q_UNREACHABLE();
}

LibraryModel::Range LibraryModel::rangeOf(LibraryFilter filter) const
{
    switch (filter) {
    case LibraryFilter::Today: {
        const QDate today = m_clock.now().date();
        return {today.startOfDay().toMSecsSinceEpoch(), today.addDays(1).startOfDay().toMSecsSinceEpoch()};
    }
    case LibraryFilter::Week:
        return rangeOf(DateRange::Week);
    case LibraryFilter::Month:
        return rangeOf(DateRange::Month);
    case LibraryFilter::All:
    case LibraryFilter::Images:
    case LibraryFilter::Videos:
    case LibraryFilter::Favorites:
        return rangeOf(DateRange::Any);
    }
    Q_UNREACHABLE();
}

const LibraryModel::Counts &LibraryModel::counts() const
{
    if (m_counts)
        return *m_counts;
    m_counts = std::make_unique<Counts>();
    const Range today = rangeOf(LibraryFilter::Today);
    const Range week = rangeOf(LibraryFilter::Week);
    const Range month = rangeOf(LibraryFilter::Month);
    std::vector<int> sources(m_table.sourceCount());
    const auto filter = [this](LibraryFilter which) -> int & {
        return m_counts->filters[static_cast<size_t>(which)];
    };
    for (Row row = 0; row < m_table.rowCount(); ++row) {
        const CaptureTable::Capture &capture = m_table.at(row);
        if (!capture.isThere)
            continue;
        ++filter(LibraryFilter::All);
        ++filter(capture.isVideo ? LibraryFilter::Videos : LibraryFilter::Images);
        filter(LibraryFilter::Favorites) += capture.isFavorite;
        filter(LibraryFilter::Today) += today.contains(capture.modified);
        filter(LibraryFilter::Week) += week.contains(capture.modified);
        filter(LibraryFilter::Month) += month.contains(capture.modified);
        ++sources[capture.source];
        m_counts->bytes += capture.bytes;
    }
    for (quint32 source = 1; source < m_table.sourceCount(); ++source) {
        if (sources[source] > 0)
            m_counts->apps.insert(m_table.source(source), sources[source]);
    }
    for (const LibraryCollection &collection : m_library.catalog().meta().collections) {
        m_counts->collections.insert(
            collection.id, static_cast<int>(std::count_if(
                               collection.items.begin(), collection.items.end(),
                               [this](const QString &name) { return m_table.find(name).has_value(); })));
    }
    return *m_counts;
}

int LibraryModel::count(const SidebarItem &sidebar) const
{
    if (const auto *filter = std::get_if<LibraryFilter>(&sidebar))
        return counts().filters[static_cast<size_t>(*filter)];
    if (const auto *collection = std::get_if<CollectionRow>(&sidebar))
        return counts().collections.value(collection->id);
    return counts().apps.value(std::get<ApplicationRow>(sidebar).name);
}

qint64 LibraryModel::totalBytes() const
{
    return counts().bytes;
}

QList<LibraryModel::Application> LibraryModel::apps() const
{
    QList<Application> apps;
    const QHash<QString, int> &all = counts().apps;
    for (auto app = all.begin(); app != all.end(); ++app)
        apps.append({app.key(), app.value()});
    std::sort(apps.begin(), apps.end(), [](const Application &a, const Application &b) {
        return a.count != b.count ? a.count > b.count : a.name < b.name;
    });
    return apps;
}

QString LibraryModel::title() const
{
    if (const auto *filter = std::get_if<LibraryFilter>(&m_sidebar))
        return ::title(*filter);
    if (const auto *row = std::get_if<CollectionRow>(&m_sidebar)) {
        for (const LibraryCollection &collection : m_library.catalog().meta().collections) {
            if (collection.id == row->id)
                return collection.name;
        }
        return LibraryTexts::tr("Collection");
    }
    return std::get<ApplicationRow>(m_sidebar).name;
}

void LibraryModel::updateVisible()
{
    m_update.stop();
    const auto &collections = m_library.catalog().meta().collections;
    std::vector<bool> isInCollection;
    if (const auto *row = std::get_if<CollectionRow>(&m_sidebar)) {
        const auto collection =
            std::find_if(collections.begin(), collections.end(),
                         [&](const LibraryCollection &entry) { return entry.id == row->id; });
        if (collection == collections.end()) {
            m_sidebar = LibraryFilter::All;
        } else {
            isInCollection.resize(m_table.rowCount());
            for (const QString &name : collection->items) {
                if (const auto found = m_table.find(name))
                    isInCollection[*found] = true;
            }
        }
    }
    quint32 source = 0;
    if (const auto *row = std::get_if<ApplicationRow>(&m_sidebar))
        source = m_table.sourceNumber(row->name);
    const auto *filter = std::get_if<LibraryFilter>(&m_sidebar);
    const Range filterRange = filter ? rangeOf(*filter) : rangeOf(DateRange::Any);
    const Range range = rangeOf(m_dateRange);
    const auto matchesSidebar = [&](Row row, const CaptureTable::Capture &capture) {
        if (!filter)
            return source != 0 ? capture.source == source : !isInCollection.empty() && isInCollection[row];
        switch (*filter) {
        case LibraryFilter::Images:
            return !capture.isVideo;
        case LibraryFilter::Videos:
            return capture.isVideo;
        case LibraryFilter::Favorites:
            return capture.isFavorite;
        case LibraryFilter::All:
            return true;
        case LibraryFilter::Today:
        case LibraryFilter::Week:
        case LibraryFilter::Month:
            return filterRange.contains(capture.modified);
        }
        Q_UNREACHABLE();
    };
    const QString query = SearchIndex::trimmed(m_query);
    const SearchIndex::Slots hits = query.isEmpty() ? SearchIndex::Slots() : m_index->find(query);

    m_visible.clear();
    m_places.assign(m_table.rowCount(), -1);
    const bool isAnyDate = m_dateRange == DateRange::Any;
    for (const Row row : m_table.order(m_sort)) {
        const CaptureTable::Capture &capture = m_table.at(row);
        if ((!query.isEmpty() && !SearchIndex::contains(hits, capture.slot)) ||
            !matchesSidebar(row, capture) || (!isAnyDate && !range.contains(capture.modified)))
            continue;
        m_places[row] = static_cast<int>(m_visible.size());
        m_visible.push_back(row);
    }
    updateSections();
    Q_EMIT visibleChanged();
    if (!m_counts)
        Q_EMIT sidebarChanged();
}

// The section that the item begins, up to the first item with another title. The titles depend on the date
// alone and the items are sorted by it, so only the ends of the stretch that shares a title are looked for.
LibraryModel::Section LibraryModel::sectionAt(size_t index) const
{
    const qint64 moment = m_table.at(m_visible[index]).modified;
    const QDate today = m_clock.now().date();
    const auto startOf = [](const QDate &date) { return date.startOfDay().toMSecsSinceEpoch(); };
    const Range isToday{startOf(today), startOf(today.addDays(1))};
    const Range isYesterday{startOf(today.addDays(-1)), isToday.from};
    const qint64 weekAgo = m_clock.now().toMSecsSinceEpoch() - 7 * kDay;
    Section section{{}, static_cast<int>(index), 0};
    Range range{};
    if (isToday.contains(moment)) {
        section.title = LibraryTexts::tr("Today");
        range = isToday;
    } else if (isYesterday.contains(moment)) {
        section.title = LibraryTexts::tr("Yesterday");
        range = isYesterday;
    } else if (moment > weekAgo) {
        section.title = LibraryTexts::tr("This Week");
        range = moment >= isToday.to ? Range{isToday.to, kEver} : Range{weekAgo + 1, isYesterday.from};
    } else {
        // Without a date a file is older than any.
        const QDate date = moment == CaptureTable::kUnknownDate
                               ? QDate(1, 1, 1)
                               : QDateTime::fromMSecsSinceEpoch(moment).date();
        const QDate first(date.year(), date.month(), 1);
        section.title = QLocale().toString(first, QStringLiteral("MMMM yyyy")); // untranslated: a format
        range = {moment == CaptureTable::kUnknownDate ? moment : startOf(first),
                 moment == CaptureTable::kUnknownDate ? moment + 1
                                                      : std::min(startOf(first.addMonths(1)), weekAgo + 1)};
    }
    const auto end =
        std::partition_point(m_visible.begin() + static_cast<std::ptrdiff_t>(index), m_visible.end(),
                             [&](Row row) { return range.contains(m_table.at(row).modified); });
    section.count = static_cast<int>(end - m_visible.begin()) - section.first;
    return section;
}

void LibraryModel::updateSections()
{
    m_sections.clear();
    if (m_sort != LibrarySort::Newest && m_sort != LibrarySort::Oldest) {
        if (!m_visible.empty())
            m_sections.append({{}, 0, visibleCount()});
        return;
    }
    for (size_t index = 0; index < m_visible.size();) {
        Section section = sectionAt(index);
        index += static_cast<size_t>(section.count);
        if (!m_sections.isEmpty() && m_sections.last().title == section.title)
            m_sections.last().count += section.count;
        else
            m_sections.append(std::move(section));
    }
}

int LibraryModel::visibleIndex(const QString &path) const
{
    const auto row = isMine(path) ? m_table.find(nameOf(path)) : std::nullopt;
    return row && *row < m_places.size() ? m_places[*row] : -1;
}

QList<LibraryItem> LibraryModel::visible() const
{
    QList<LibraryItem> items;
    for (const Row row : m_visible)
        items.append(item(row));
    return items;
}

void LibraryModel::setSelection(const QSet<QString> &paths)
{
    if (paths == m_selection)
        return;
    m_selection = paths;
    Q_EMIT selectionChanged();
}

QStringList LibraryModel::selectedPaths() const
{
    std::vector<int> places;
    for (const QString &path : m_selection) {
        if (const int index = visibleIndex(path); index >= 0)
            places.push_back(index);
    }
    std::sort(places.begin(), places.end());
    QStringList paths;
    for (const int index : places)
        paths.append(visiblePath(index));
    return paths;
}

QList<LibraryItem> LibraryModel::selectedItems() const
{
    QList<LibraryItem> items;
    for (const QString &path : selectedPaths())
        items.append(visibleItem(visibleIndex(path)));
    return items;
}

void LibraryModel::click(const QString &path, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ControlModifier) {
        QSet<QString> selection = m_selection;
        if (!selection.remove(path))
            selection.insert(path);
        m_anchor = path;
        return setSelection(selection);
    }
    if (modifiers & Qt::ShiftModifier && !m_selection.isEmpty()) {
        const QString anchor = m_selection.contains(m_anchor) ? m_anchor : *m_selection.begin();
        const int from = visibleIndex(anchor);
        const int to = visibleIndex(path);
        if (from >= 0 && to >= 0) {
            QSet<QString> selection;
            for (int index = std::min(from, to); index <= std::max(from, to); ++index)
                selection.insert(visiblePath(index));
            m_anchor = anchor;
            return setSelection(selection);
        }
    }
    selectOnly(path);
}

void LibraryModel::selectOnly(const QString &path)
{
    m_anchor = path;
    setSelection({path});
}

void LibraryModel::selectAll()
{
    QSet<QString> selection;
    selection.reserve(visibleCount());
    for (int index = 0; index < visibleCount(); ++index)
        selection.insert(visiblePath(index));
    setSelection(selection);
}

void LibraryModel::move(int delta)
{
    if (m_visible.empty())
        return;
    int first = -1;
    for (const QString &path : m_selection) {
        const int index = visibleIndex(path);
        if (index >= 0 && (first < 0 || index < first))
            first = index;
    }
    const int target = first >= 0 ? first + delta : delta < 1 ? visibleCount() + delta : delta - 1;
    const QString path = visiblePath(std::clamp(target, 0, visibleCount() - 1));
    selectOnly(path);
    if (m_previewing)
        setPreviewing(path);
}

void LibraryModel::setPreviewing(const std::optional<QString> &path)
{
    if (path == m_previewing)
        return;
    m_previewing = path;
    Q_EMIT previewingChanged();
}

void LibraryModel::setShowsInspector(bool on)
{
    if (on == m_showsInspector)
        return;
    m_showsInspector = on;
    Q_EMIT inspectorChanged();
}

void LibraryModel::setSheet(const std::optional<LibrarySheet> &sheet)
{
    if (sheet == m_sheet)
        return;
    m_sheet = sheet;
    Q_EMIT sheetChanged();
}

void LibraryModel::setAiProgress(const std::optional<QString> &text)
{
    if (text == m_aiProgress)
        return;
    m_aiProgress = text;
    Q_EMIT progressChanged();
}

QList<Error> LibraryModel::trash(const QStringList &paths)
{
    QList<Error> failures;
    QSet<QString> selection = m_selection;
    for (const QString &path : paths) {
        if (const auto removed = m_library.remove(path); removed)
            selection.remove(path);
        else
            failures.append(removed.error());
    }
    setSelection(selection);
    return failures;
}

// "Today" ends while the window is open.
void LibraryModel::watchMidnight()
{
    const QDateTime now = m_clock.now();
    const qint64 rest = now.msecsTo(now.date().addDays(1).startOfDay());
    m_midnight.start(static_cast<int>(std::clamp<qint64>(rest + 1000, 1000, kDay)));
}
