#include "library/ui/clean_up_sheet.h"

#include "base/async.h"
#include "library/batch/duplicates.h"
#include "library/library_names.h"
#include "library/model/capture_table.h"
#include "library/model/library_model.h"
#include "library/ui/library_work.h"
#include "library/ui/small_thumb.h"
#include "library/ui/texts.h"
#include "library/ui/window_parts.h"
#include "settings/app_settings.h"
#include "ui/progress_line.h"
#include "ui/segmented_picker.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedLayout>
#include <QTimer>

using WindowParts::label;

namespace {

constexpr int kWidth = 620;
constexpr int kHeight = 340; // of a tab, where the window has room for it
constexpr int kAround = 236; // of the card around a tab
constexpr int kLargest = 15;
constexpr int kMostGroups = 40; // shown at a time
constexpr int kMostOfGroup = 8;
constexpr std::array kDays{0, 30, 90, 365};

enum Stage { Scanning, None, Groups };

QScrollArea *scrolling(QVBoxLayout *&rows)
{
    auto *inside = new QWidget;
    rows = new QVBoxLayout(inside);
    rows->setContentsMargins(0, 0, Theme::Space::inside, 0);
    rows->setSpacing(Theme::Space::inside);
    auto *scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(inside);
    scroll->viewport()->setAutoFillBackground(false);
    inside->setAutoFillBackground(false);
    return scroll;
}

void clear(QLayout *layout)
{
    while (QLayoutItem *item = layout->takeAt(0)) {
        if (item->widget())
            item->widget()->deleteLater(); // it may be the one whose button was pressed
        delete item;
    }
}

} // namespace

CleanUpSheet::CleanUpSheet(const LibraryPorts &ports, LibraryActions &actions, QWidget *over)
    : Sheet(over, QStringLiteral("wand.and.stars"), LibraryUiTexts::tr("Clean Up Storage")),
      m_ports(ports),
      m_actions(actions)
{
    setCardWidth(qMin(kWidth, over->window()->width() - 2 * Theme::Space::margin));
    auto *picker = new SegmentedPicker;
    picker->setSegments({{LibraryUiTexts::tr("Duplicates"), {}},
                         {LibraryUiTexts::tr("Large Files"), {}},
                         {LibraryUiTexts::tr("Auto-Delete"), {}}});
    picker->setStretches(true);
    picker->setAccessibleName(LibraryUiTexts::tr("Clean Up Storage"));
    content()->addWidget(picker);
    auto *pages = new QWidget;
    pages->setFixedHeight(qBound(120, over->window()->height() - kAround, kHeight));
    m_tabs = new QStackedLayout(pages);
    m_tabs->addWidget(makeDuplicates());
    m_tabs->addWidget(makeLarge());
    m_tabs->addWidget(makeAuto());
    content()->addWidget(pages);
    connect(picker, &SegmentedPicker::chosen, m_tabs, &QStackedLayout::setCurrentIndex);
    content()->addWidget(WindowParts::note(LibraryUiTexts::tr("Removed items go to the Trash.")));
    addPrimaryButton(LibraryUiTexts::tr("Done"));
    connect(&m_ports.model, &LibraryModel::visibleChanged, this, &CleanUpSheet::showLargest);
    scan();
}

CleanUpSheet::~CleanUpSheet()
{
    if (m_scan)
        m_scan->isCancelled = true;
}

QWidget *CleanUpSheet::makeDuplicates()
{
    auto *tab = new QWidget;
    m_stages = new QStackedLayout(tab);
    auto *busy = new QWidget;
    auto *middle = new QVBoxLayout(busy);
    middle->addStretch(1);
    middle->addWidget(new Spinner(28), 0, Qt::AlignHCenter);
    QLabel *looking = label(Theme::Type::Body, QFont::Normal, true);
    looking->setText(LibraryUiTexts::tr("Looking for duplicates…"));
    middle->addWidget(looking, 0, Qt::AlignHCenter);
    m_line = new ProgressLine;
    m_line->setFixedWidth(220);
    middle->addWidget(m_line, 0, Qt::AlignHCenter);
    middle->addStretch(1);
    m_stages->insertWidget(Scanning, busy);
    m_stages->insertWidget(None, new EmptyState(QStringLiteral("checkmark.seal"),
                                                LibraryUiTexts::tr("No Duplicates"),
                                                LibraryUiTexts::tr("Every capture looks unique.")));
    auto *found = new QWidget;
    auto *rows = new QVBoxLayout(found);
    rows->setContentsMargins({});
    auto *head = new QHBoxLayout;
    m_head = label(Theme::Type::Body);
    m_head->setWordWrap(true);
    head->addWidget(m_head, 1);
    m_trashAll = new QPushButton(LibraryUiTexts::tr("Trash All Extras"));
    m_trashAll->setAutoDefault(false);
    connect(m_trashAll, &QPushButton::clicked, this,
            [this] { trashExtras(m_groups.value_or(QList<QStringList>())); });
    head->addWidget(m_trashAll);
    rows->addLayout(head);
    rows->addWidget(scrolling(m_rows), 1);
    m_stages->insertWidget(Groups, found);
    // How far the scan is, looked at now and then.
    m_look = new QTimer(this);
    m_look->setInterval(100);
    connect(m_look, &QTimer::timeout, this, [this] {
        m_line->set(m_scan->done, m_scan->total);
        m_line->setVisible(m_scan->total > 0);
    });
    return tab;
}

void CleanUpSheet::scan()
{
    if (m_scan)
        m_scan->isCancelled = true;
    m_scan = std::make_shared<Scan>();
    m_stages->setCurrentIndex(Scanning);
    m_line->hide();
    m_look->start();
    const auto work = [scan = m_scan, folder = m_ports.model.library().folder(), cache = m_ports.hashFile] {
        QStringList paths;
        for (const CaptureTable::File &file : CaptureTable::list(folder))
            paths.append(folder + QLatin1Char('/') + file.name);
        auto groups = Duplicates::scan(paths, cache, [scan](int done, int total) {
            scan->done = done;
            scan->total = total;
            return !scan->isCancelled;
        });
        if (groups)
            Duplicates::sortNewestFirst(*groups);
        return groups;
    };
    whenDone(runInBackground(work), this, [this, scan = m_scan](const Result<QList<QStringList>> &groups) {
        if (scan != m_scan)
            return;
        m_look->stop();
        m_groups = groups.value_or(QList<QStringList>());
        showGroups();
    });
}

void CleanUpSheet::showGroups()
{
    const QList<QStringList> &groups = *m_groups;
    m_stages->setCurrentIndex(groups.isEmpty() ? None : Groups);
    m_head->setText(
        LibraryUiTexts::tr("%n group(s) of look-alike captures. The newest in each group is kept.", nullptr,
                           static_cast<int>(groups.size())));
    m_trashAll->setEnabled(!groups.isEmpty());
    clear(m_rows);
    for (const QStringList &group : groups.mid(0, kMostGroups))
        m_rows->addWidget(rowOf(group));
    if (const auto more = static_cast<int>(groups.size()) - kMostGroups; more > 0)
        m_rows->addWidget(WindowParts::note(LibraryUiTexts::tr("…and %1 more").arg(more)));
    m_rows->addStretch(1);
}

QWidget *CleanUpSheet::rowOf(const QStringList &group)
{
    auto *row = new QWidget;
    auto *across = new QHBoxLayout(row);
    across->setContentsMargins(0, 0, 0, Theme::Space::unit);
    // As many as there is room for.
    constexpr QSize kThumb(96, 64);
    const int room = qMin(kWidth, window()->width() - 2 * Theme::Space::margin) - 200;
    const int fitting = qBound(2, room / (kThumb.width() + Theme::Space::inside), kMostOfGroup);
    for (qsizetype i = 0; i < group.size() && i < fitting; ++i)
        across->addWidget(new SmallThumb(m_ports.movies, group[i], kThumb,
                                         i == 0 ? SmallThumb::Mark::Keep : SmallThumb::Mark::Extra));
    if (const auto more = group.size() - fitting; more > 0) {
        QLabel *rest = label(Theme::Type::Control, QFont::Normal, true);
        rest->setText(QStringLiteral("+%1").arg(more));
        across->addWidget(rest);
    }
    across->addStretch(1);
    auto *trash = new QPushButton(LibraryUiTexts::tr("Trash Extras"));
    trash->setAutoDefault(false);
    connect(trash, &QPushButton::clicked, this, [this, group] { trashExtras({group}); });
    across->addWidget(trash);
    return row;
}

// Of each group all but the first, so that what is kept can't go.
void CleanUpSheet::trashExtras(const QList<QStringList> &groups)
{
    QStringList extras;
    for (const QStringList &group : groups)
        extras.append(group.mid(1));
    m_stages->setCurrentIndex(Scanning);
    whenDone(m_actions.trashTelling(extras).then([](const QList<Library::Outcome> &) {}), this,
             [this] { scan(); });
}

QWidget *CleanUpSheet::makeLarge()
{
    QWidget *tab = scrolling(m_large);
    showLargest();
    return tab;
}

void CleanUpSheet::showLargest()
{
    clear(m_large);
    for (const LibraryItem &item : m_ports.model.largest(kLargest)) {
        auto *row = new QWidget;
        auto *across = new QHBoxLayout(row);
        across->setContentsMargins({});
        across->setSpacing(Theme::Space::group);
        across->addWidget(new SmallThumb(m_ports.movies, item.path, {56, 38}));
        QLabel *name = label(Theme::Type::Body);
        const QString words = LibraryNames::nameOf(item.path);
        name->setText(name->fontMetrics().elidedText(words, Qt::ElideMiddle, 330));
        name->setToolTip(words);
        name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        across->addWidget(name, 1);
        QLabel *bytes = label(Theme::Type::Control, QFont::Normal, true);
        bytes->setText(WindowParts::bytesText(item.bytes));
        across->addWidget(bytes);
        BarButton *trash = WindowParts::button(QStringLiteral("trash"), LibraryUiTexts::tr("Move to Trash"),
                                               {}, BarButton::Label::None);
        connect(trash, &QAbstractButton::clicked, this,
                [this, path = item.path] { m_actions.trash({path}); });
        across->addWidget(trash);
        m_large->addWidget(row);
    }
    m_large->addStretch(1);
}

QWidget *CleanUpSheet::makeAuto()
{
    auto *tab = new QWidget;
    auto *rows = new QVBoxLayout(tab);
    rows->setContentsMargins(0, Theme::Space::inside, 0, 0);
    rows->setSpacing(Theme::Space::group);
    auto *row = new QHBoxLayout;
    QLabel *words = label(Theme::Type::Body);
    words->setText(LibraryUiTexts::tr("Delete captures older than"));
    row->addWidget(words, 1);
    QComboBox *days =
        WindowParts::picker(words->text(), {LibraryUiTexts::tr("Never"), LibraryUiTexts::tr("30 days"),
                                            LibraryUiTexts::tr("90 days"), LibraryUiTexts::tr("1 year")});
    const auto present = std::find(kDays.begin(), kDays.end(), m_ports.settings.autoDeleteDays());
    days->setCurrentIndex(present == kDays.end() ? -1 : static_cast<int>(present - kDays.begin()));
    row->addWidget(days);
    rows->addLayout(row);
    rows->addWidget(WindowParts::note(LibraryUiTexts::tr(
        "Runs each time Lumenpost starts. Favorites and anything in a collection are always kept.")));
    auto *run = new QPushButton(LibraryUiTexts::tr("Run Now"));
    run->setAutoDefault(false);
    run->setEnabled(m_ports.settings.autoDeleteDays() > 0);
    connect(days, &QComboBox::activated, this, [this, run](int index) {
        m_ports.settings.setAutoDeleteDays(kDays[static_cast<size_t>(index)]);
        run->setEnabled(m_ports.settings.autoDeleteDays() > 0);
    });
    connect(run, &QPushButton::clicked, this,
            [this] { m_ports.work.runAutoDelete(LibraryWork::WhenNothing::Tell); });
    rows->addWidget(run, 0, Qt::AlignLeft);
    rows->addStretch(1);
    return tab;
}
