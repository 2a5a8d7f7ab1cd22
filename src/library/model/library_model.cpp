#include "library/model/library_model.h"

#include "base/clock.h"
#include "library/model/moments.h"
#include "library/texts.h"
#include "settings/defaults.h"

#include <algorithm>

namespace {

const QString kSortKey = QStringLiteral("librarySort");
const QString kCardSizeKey = QStringLiteral("libraryCardSize");
constexpr double kStandardCardSize = 220;
constexpr qint64 kDay = 86'400'000; // milliseconds

} // namespace

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
      m_contents(library),
      m_sort(librarySort(defaults.string(kSortKey)).value_or(LibrarySort::Newest))
{
    const QJsonValue cardSize = defaults.value(kCardSizeKey);
    m_cardSize = cardSize.isDouble() ? cardSize.toDouble() : kStandardCardSize;
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
    connect(&library, &Library::indexing, this, &LibraryModel::tellIndexing);
    connect(&library.catalog(), &LibraryCatalog::collectionsChanged, this, &LibraryModel::contentsChanged);
    connect(&m_contents, &LibraryContents::replaced, this, &LibraryModel::contentsReplaced);
    connect(&m_contents, &LibraryContents::changed, this, &LibraryModel::contentsChanged);
    connect(&m_contents, &LibraryContents::removed, this, &LibraryModel::forget);
    connect(&m_contents, &LibraryContents::renamed, this, &LibraryModel::fileRenamed);
    connect(&m_contents, &LibraryContents::cardsChanged, this, &LibraryModel::cardsChanged);
    connect(&m_contents, &LibraryContents::readingChanged, this, &LibraryModel::readingChanged);
    connect(&m_contents, &LibraryContents::textsRead, this, [this] {
        if (!SearchIndex::trimmed(m_query).isEmpty())
            updateVisible();
    });
}

LibraryModel::~LibraryModel() = default;

void LibraryModel::contentsReplaced()
{
    const qsizetype selected = m_selection.size();
    m_selection.removeIf([this](const QString &path) { return !m_contents.find(path); });
    m_counts.reset();
    updateVisible();
    if (m_selection.size() != selected)
        Q_EMIT selectionChanged();
}

void LibraryModel::contentsChanged()
{
    m_counts.reset();
    m_update.start();
}

void LibraryModel::forget(const QStringList &paths)
{
    const qsizetype selected = m_selection.size();
    for (const QString &path : paths) {
        m_selection.remove(path);
        if (m_previewing == path)
            setPreviewing(std::nullopt);
    }
    if (m_selection.size() != selected)
        Q_EMIT selectionChanged();
}

void LibraryModel::fileRenamed(const QString &oldPath, const QString &newPath)
{
    if (m_anchor == oldPath)
        m_anchor = newPath;
    if (m_selection.remove(oldPath)) {
        m_selection.insert(newPath);
        Q_EMIT selectionChanged();
    }
    if (m_previewing == oldPath)
        setPreviewing(newPath);
}

void LibraryModel::tellIndexing(int done, int total)
{
    m_indexProgress.reset();
    if (done < total)
        m_indexProgress = LibraryTexts::tr("Indexing text in captures… %1 of %2").arg(done).arg(total);
    Q_EMIT progressChanged();
}

// "Today" ends while the window is open.
void LibraryModel::watchMidnight()
{
    const QDateTime now = m_clock.now();
    const qint64 rest = now.msecsTo(now.date().addDays(1).startOfDay());
    m_midnight.start(static_cast<int>(std::clamp<qint64>(rest + 1000, 1000, kDay)));
}

QList<LibraryItem> LibraryModel::items() const
{
    QList<LibraryItem> items;
    for (const Row row : table().order(LibrarySort::Newest))
        items.append(item(row));
    return items;
}

QList<LibraryItem> LibraryModel::largest(int count) const
{
    QList<LibraryItem> items;
    for (const Row row : table().order(LibrarySort::Size)) {
        if (items.size() == count)
            break;
        items.append(item(row));
    }
    return items;
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

const LibraryModel::Counts &LibraryModel::counts() const
{
    if (m_counts)
        return *m_counts;
    m_counts = std::make_unique<Counts>();
    const QDateTime now = m_clock.now();
    const Moments today = momentsOf(LibraryFilter::Today, now);
    const Moments week = momentsOf(LibraryFilter::Week, now);
    const Moments month = momentsOf(LibraryFilter::Month, now);
    std::vector<int> sources(table().sourceCount());
    const auto filter = [this](LibraryFilter which) -> int & {
        return m_counts->filters[static_cast<size_t>(which)];
    };
    for (Row row = 0; row < table().rowCount(); ++row) {
        const CaptureTable::Capture &capture = table().at(row);
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
    for (quint32 source = 1; source < table().sourceCount(); ++source) {
        if (sources[source] > 0)
            m_counts->apps.insert(table().source(source), sources[source]);
    }
    for (const LibraryCollection &collection : collections()) {
        m_counts->collections.insert(
            collection.id, static_cast<int>(std::count_if(
                               collection.items.begin(), collection.items.end(),
                               [this](const QString &name) { return table().find(name).has_value(); })));
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

QList<LibraryCollection> LibraryModel::collections() const
{
    const LibraryCatalog &catalog = m_library.catalog();
    return catalog.isRead() ? catalog.meta().collections : QList<LibraryCollection>();
}

std::optional<LibraryCollection> LibraryModel::collectionOf(const QUuid &id) const
{
    for (const LibraryCollection &collection : collections()) {
        if (collection.id == id)
            return collection;
    }
    return std::nullopt;
}

QString LibraryModel::title() const
{
    if (const auto *filter = std::get_if<LibraryFilter>(&m_sidebar))
        return ::title(*filter);
    if (const auto *row = std::get_if<CollectionRow>(&m_sidebar)) {
        if (const auto collection = collectionOf(row->id))
            return collection->name;
        return LibraryTexts::tr("Collection");
    }
    return std::get<ApplicationRow>(m_sidebar).name;
}

// Which captures the row of the sidebar is of. A collection that is gone gives way to all.
std::function<bool(LibraryModel::Row)> LibraryModel::sidebarRule()
{
    if (const auto *app = std::get_if<ApplicationRow>(&m_sidebar)) {
        const quint32 source = m_contents.sourceNumber(app->name);
        return [this, source](Row row) { return source != 0 && table().at(row).source == source; };
    }
    if (const auto *row = std::get_if<CollectionRow>(&m_sidebar)) {
        if (const auto collection = collectionOf(row->id)) {
            std::vector<bool> isIn(table().rowCount());
            for (const QString &name : collection->items) {
                if (const auto found = table().find(name))
                    isIn[*found] = true;
            }
            return [isIn = std::move(isIn)](Row row) { return isIn[row]; };
        }
        m_sidebar = LibraryFilter::All;
    }
    const LibraryFilter filter = std::get<LibraryFilter>(m_sidebar);
    switch (filter) {
    case LibraryFilter::All:
        return [](Row) { return true; };
    case LibraryFilter::Images:
        return [this](Row row) { return !table().at(row).isVideo; };
    case LibraryFilter::Videos:
        return [this](Row row) { return table().at(row).isVideo; };
    case LibraryFilter::Favorites:
        return [this](Row row) { return table().at(row).isFavorite; };
    case LibraryFilter::Today:
    case LibraryFilter::Week:
    case LibraryFilter::Month:
        return [this, moments = momentsOf(filter, m_clock.now())](Row row) {
            return moments.contains(table().at(row).modified);
        };
    }
    Q_UNREACHABLE();
}

void LibraryModel::updateVisible()
{
    m_update.stop();
    const auto isOfSidebar = sidebarRule();
    const Moments moments = momentsOf(m_dateRange, m_clock.now());
    const QString query = SearchIndex::trimmed(m_query);
    const SearchIndex::Slots hits = query.isEmpty() ? SearchIndex::Slots() : m_contents.search(query);

    m_visible.clear();
    m_places.assign(table().rowCount(), -1);
    for (const Row row : table().order(m_sort)) {
        const CaptureTable::Capture &capture = table().at(row);
        if ((!query.isEmpty() && !SearchIndex::contains(hits, capture.slot)) || !isOfSidebar(row) ||
            !moments.contains(capture.modified))
            continue;
        m_places[row] = static_cast<int>(m_visible.size());
        m_visible.push_back(row);
    }
    updateSections();
    const bool areCountsNew = !m_counts; // who hears of what is visible may ask for them
    Q_EMIT visibleChanged();
    if (areCountsNew)
        Q_EMIT sidebarChanged();
}

// Headings depend on the date alone and the items are sorted by it, so only the ends of the stretch that
// shares one are looked for.
void LibraryModel::updateSections()
{
    m_sections.clear();
    if (m_sort != LibrarySort::Newest && m_sort != LibrarySort::Oldest) {
        if (!m_visible.empty())
            m_sections.append({{}, 0, visibleCount()});
        return;
    }
    const QDateTime now = m_clock.now();
    for (auto first = m_visible.begin(); first != m_visible.end();) {
        const DateHeading heading = dateHeading(table().at(*first).modified, now);
        const auto end = std::partition_point(first, m_visible.end(), [&](Row row) {
            return heading.moments.contains(table().at(row).modified);
        });
        const int count = static_cast<int>(end - first);
        if (!m_sections.isEmpty() && m_sections.last().title == heading.title)
            m_sections.last().count += count;
        else
            m_sections.append({heading.title, static_cast<int>(first - m_visible.begin()), count});
        first = end;
    }
}

int LibraryModel::visibleIndex(const QString &path) const
{
    const auto row = m_contents.find(path);
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
