#include "library/ui/library_toolbar.h"

#include "library/model/library_model.h"
#include "library/ui/library_actions.h"
#include "library/ui/library_work.h"
#include "library/ui/texts.h"
#include "ui/symbol.h"
#include "ui/tips.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSlider>
#include <QVBoxLayout>

using WindowParts::button;
using WindowParts::label;

namespace {
constexpr int kSmallestCard = 140;
constexpr int kLargestCard = 420;
constexpr int kRoomForSlider = 780; // points
} // namespace

LibraryToolbar::LibraryToolbar(LibraryModel &model, LibraryActions &actions, LibraryWork &work,
                               QWidget *parent)
    : Surface(Edge::Bottom, parent),
      m_model(model),
      m_actions(actions),
      m_sidebar(button(QStringLiteral("sidebar.leading"), LibraryUiTexts::tr("Sidebar"),
                       LibraryUiTexts::tr("Show or hide what can be chosen from."), BarButton::Label::None)),
      m_names(new QWidget),
      m_title(label(Theme::Type::Title, QFont::DemiBold)),
      m_count(label(Theme::Type::Caption, QFont::Normal, true))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(20, 10, Theme::Space::group, 11);
    row->setSpacing(Theme::Space::unit);
    row->addWidget(m_sidebar);
    connect(m_sidebar, &QAbstractButton::clicked, this, &LibraryToolbar::sidebarWanted);
    auto *names = new QVBoxLayout(m_names);
    names->setContentsMargins({});
    names->setSpacing(0);
    names->addWidget(m_title);
    names->addWidget(m_count);
    // A long name gives way to the search.
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_names->setMinimumWidth(110);
    row->addWidget(m_names, 3);
    m_search = makeSearch();
    row->addWidget(m_search, 4);
    row->addStretch(2);
    m_size = makeSizeSlider();
    row->addWidget(m_size);
    row->addSpacing(Theme::Space::inside);
    row->addWidget(dateButton());
    row->addWidget(sortButton());
    auto *import = button(
        QStringLiteral("square.and.arrow.down"), LibraryUiTexts::tr("Import"),
        LibraryUiTexts::tr("Add images or videos from elsewhere. You can also drop files onto the grid."),
        BarButton::Label::None);
    connect(import, &QAbstractButton::clicked, &m_actions, &LibraryActions::chooseFilesToImport);
    row->addWidget(import);
    row->addWidget(moreButton(work));
    row->addWidget(inspectorButton());
    connect(&model, &LibraryModel::visibleChanged, this, &LibraryToolbar::updateTitle);
    connect(&model, &LibraryModel::sidebarChanged, this, &LibraryToolbar::updateTitle);
    setNarrow(false);
    updateTitle();
}

void LibraryToolbar::setNarrow(bool narrow)
{
    m_sidebar->setVisible(narrow);
    m_names->setVisible(!narrow);
    m_search->setMinimumWidth(narrow ? 90 : 180);
    layout()->setContentsMargins(narrow ? Theme::Space::group : 20, 10, Theme::Space::group, 11);
}

void LibraryToolbar::resizeEvent(QResizeEvent *event)
{
    Surface::resizeEvent(event);
    m_size->setVisible(width() >= kRoomForSlider);
    updateTitle();
}

void LibraryToolbar::updateTitle()
{
    m_title->setText(m_title->fontMetrics().elidedText(m_model.title(), Qt::ElideRight, m_title->width()));
    m_title->setToolTip(m_model.title());
    m_count->setText(LibraryUiTexts::tr("%n items", nullptr, m_model.visibleCount()));
}

QLineEdit *LibraryToolbar::makeSearch()
{
    auto *search = new QLineEdit(m_model.query());
    search->setPlaceholderText(LibraryUiTexts::tr("Search names, apps and text in images"));
    search->setAccessibleName(search->placeholderText());
    search->setClearButtonEnabled(true);
    search->setMinimumWidth(180);
    search->setMaximumWidth(340);
    search->setFixedHeight(Theme::Size::field);
    search->addAction(symbolIcon(QStringLiteral("magnifyingglass")), QLineEdit::LeadingPosition)
        ->setText(search->placeholderText());
    connect(search, &QLineEdit::textChanged, &m_model, &LibraryModel::setQuery);
    return search;
}

QSlider *LibraryToolbar::makeSizeSlider()
{
    auto *size = new QSlider(Qt::Horizontal);
    size->setRange(kSmallestCard, kLargestCard);
    size->setValue(qRound(m_model.cardSize()));
    size->setFixedWidth(96);
    size->setAccessibleName(LibraryUiTexts::tr("Thumbnail Size"));
    TipCenter::describe(
        size,
        {LibraryUiTexts::tr("Thumbnail Size"), LibraryUiTexts::tr("Make the cards bigger or smaller."), {}});
    connect(size, &QSlider::valueChanged, &m_model, [this](int value) { m_model.setCardSize(value); });
    return size;
}

BarButton *LibraryToolbar::dateButton()
{
    auto *made = button(QStringLiteral("calendar.badge.clock"), LibraryUiTexts::tr("Date"),
                        LibraryUiTexts::tr("Show only captures from a time range."), BarButton::Label::None);
    auto *menu = new QMenu(made);
    auto *group = new QActionGroup(menu);
    for (const DateRange range : kDateRanges) {
        QAction *action = menu->addAction(::title(range));
        action->setCheckable(true);
        action->setChecked(range == m_model.dateRange());
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, made, range] {
            m_model.setDateRange(range);
            made->setSymbol(range == DateRange::Any ? QStringLiteral("calendar.badge.clock")
                                                    : QStringLiteral("calendar.badge.checkmark"));
        });
    }
    if (m_model.dateRange() != DateRange::Any)
        made->setSymbol(QStringLiteral("calendar.badge.checkmark"));
    made->setMenu(menu);
    return made;
}

BarButton *LibraryToolbar::sortButton()
{
    auto *made = button(QStringLiteral("arrow.up.arrow.down"), LibraryUiTexts::tr("Sort"),
                        LibraryUiTexts::tr("Order by date, name or file size."), BarButton::Label::None);
    auto *menu = new QMenu(made);
    auto *group = new QActionGroup(menu);
    for (const LibrarySort sort :
         {LibrarySort::Newest, LibrarySort::Oldest, LibrarySort::Name, LibrarySort::Size}) {
        QAction *action = menu->addAction(::title(sort));
        action->setCheckable(true);
        action->setChecked(sort == m_model.sort());
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, sort] { m_model.setSort(sort); });
    }
    made->setMenu(menu);
    return made;
}

BarButton *LibraryToolbar::moreButton(LibraryWork &work)
{
    auto *made =
        button(QStringLiteral("ellipsis.circle"), LibraryUiTexts::tr("More"),
               LibraryUiTexts::tr("Clean up storage, describe captures with AI, or open the folder."),
               BarButton::Label::None);
    auto *menu = new QMenu(made);
    menu->addAction(symbolIcon(QStringLiteral("wand.and.stars")), LibraryUiTexts::tr("Clean Up"), &m_actions,
                    [this] { m_actions.openSheet(LibrarySheet::Kind::CleanUp, {}); });
    menu->addAction(symbolIcon(QStringLiteral("sparkles")), LibraryUiTexts::tr("Describe Captures with AI"),
                    &work, [this, &work] { work.describe(m_model); });
    menu->addSeparator();
    menu->addAction(symbolIcon(QStringLiteral("folder")), LibraryUiTexts::tr("Open Captures Folder"),
                    &m_actions, &LibraryActions::openFolder);
    made->setMenu(menu);
    return made;
}

BarButton *LibraryToolbar::inspectorButton()
{
    auto *made =
        button(QStringLiteral("sidebar.trailing"), LibraryUiTexts::tr("Inspector"),
               LibraryUiTexts::tr("Show or hide details for the selected capture."), BarButton::Label::None);
    made->setCheckable(true);
    made->setChecked(m_model.showsInspector());
    connect(made, &QAbstractButton::toggled, &m_model, &LibraryModel::setShowsInspector);
    connect(&m_model, &LibraryModel::inspectorChanged, made,
            [this, made] { made->setChecked(m_model.showsInspector()); });
    return made;
}
