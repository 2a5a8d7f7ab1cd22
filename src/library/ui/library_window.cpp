#include "library/ui/library_window.h"

#include "library/model/library_model.h"
#include "library/ui/dragged_files.h"
#include "library/ui/library_grid.h"
#include "library/ui/library_sidebar.h"
#include "library/ui/texts.h"
#include "ui/controls.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"
#include "ui/tips.h"

#include <QActionGroup>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

constexpr int kSidebarWidth = 220;
constexpr int kSmallestCard = 140;
constexpr int kLargestCard = 420;

enum Stage { Cards, NoCaptures, NoResults, Busy };

// A part of the window with the colour of bars.
class Surface : public QWidget {
public:
    enum class Edge { Right, Bottom, Top };
    Surface(Edge edge, QWidget *parent = nullptr) : QWidget(parent), m_edge(edge) {}

protected:
    void paintEvent(QPaintEvent *) override
    {
        const Theme::Tokens &theme = Theme::tokens(this);
        QPainter painter(this);
        painter.fillRect(rect(), theme.surface);
        switch (m_edge) {
        case Edge::Right:
            painter.fillRect(width() - 1, 0, 1, height(), theme.hairline);
            break;
        case Edge::Bottom:
            painter.fillRect(0, height() - 1, width(), 1, theme.hairline);
            break;
        case Edge::Top:
            painter.fillRect(0, 0, width(), 1, theme.hairline);
            break;
        }
    }

private:
    Edge m_edge;
};

QLabel *label(Theme::Type type, QFont::Weight weight = QFont::Normal, bool isSecondary = false)
{
    auto *made = new QLabel;
    made->setTextFormat(Qt::PlainText);
    made->setFont(Theme::font(type, weight));
    if (isSecondary)
        made->setForegroundRole(QPalette::PlaceholderText);
    return made;
}

BarButton *button(const QString &symbol, const QString &text, const QString &tip, BarButton::Label where)
{
    auto *made = new BarButton(symbol, text, where);
    made->setAccessibleName(text);
    TipCenter::describe(made, {text, tip, {}});
    return made;
}

QString bytesText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

LibraryWindow::LibraryWindow(const LibraryPorts &ports)
    : m_model(ports.model), m_ports(ports), m_actions(new LibraryActions(ports, this))
{
    installGridAccessibility();
    setWindowTitle(LibraryUiTexts::tr("Library"));
    setMinimumSize(760, 480);
    auto *columns = new QHBoxLayout(this);
    columns->setContentsMargins({});
    columns->setSpacing(0);
    columns->addWidget(makeSidebar());
    auto *main = new QVBoxLayout;
    main->setSpacing(0);
    columns->addLayout(main, 1);
    main->addWidget(makeToolbar());
    main->addWidget(makeGrid(), 1);
    main->addWidget(makeSelectionBar());

    connect(&m_model, &LibraryModel::visibleChanged, this, &LibraryWindow::updateStage);
    connect(&m_model, &LibraryModel::readingChanged, this, &LibraryWindow::updateStage);
    connect(&m_model, &LibraryModel::sidebarChanged, this, &LibraryWindow::updateStage);
    connect(&m_model, &LibraryModel::progressChanged, this, &LibraryWindow::updateHeader);
    connect(&m_model, &LibraryModel::selectionChanged, this, &LibraryWindow::updateSelection);

    auto *find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    auto *close = new QShortcut(QKeySequence::Close, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);

    if (m_model.reading() == LibraryModel::Reading::Nothing)
        m_model.load();
    updateStage();
    updateSelection();
    m_grid->setFocus();
}

LibraryWindow::~LibraryWindow()
{
    // The next window begins afresh.
    m_model.disconnect(this);
    m_model.setSelection({});
    m_model.setQuery({});
}

QWidget *LibraryWindow::makeSidebar()
{
    auto *side = new Surface(Surface::Edge::Right);
    side->setFixedWidth(kSidebarWidth);
    auto *rows = new QVBoxLayout(side);
    rows->setContentsMargins(0, Theme::Space::inside, 1, Theme::Space::group);
    auto *list = new LibrarySidebar(m_model, *m_actions);
    list->viewport()->setAutoFillBackground(false);
    list->setAttribute(Qt::WA_TranslucentBackground);
    rows->addWidget(list, 1);
    auto *foot = new QVBoxLayout;
    foot->setContentsMargins(Theme::Space::inside, 0, Theme::Space::inside, 0);
    auto *folder =
        button(QStringLiteral("folder"), LibraryUiTexts::tr("Open Folder"),
               LibraryUiTexts::tr("Show your captures folder in Finder."), BarButton::Label::Beside);
    connect(folder, &QAbstractButton::clicked, m_actions, &LibraryActions::openFolder);
    foot->addWidget(folder, 0, Qt::AlignLeft);
    m_total = label(Theme::Type::Caption, QFont::Normal, true);
    m_total->setContentsMargins(Theme::Space::inside, 0, 0, 0);
    foot->addWidget(m_total);
    rows->addLayout(foot);
    return side;
}

BarButton *LibraryWindow::dateButton()
{
    auto *made = button(QStringLiteral("calendar.badge.clock"), LibraryUiTexts::tr("Date"),
                        LibraryUiTexts::tr("Show only captures from a time range."), BarButton::Label::None);
    auto *menu = new QMenu(made);
    auto *group = new QActionGroup(menu);
    for (const DateRange range : dateRanges) {
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

BarButton *LibraryWindow::sortButton()
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

QWidget *LibraryWindow::makeToolbar()
{
    auto *bar = new Surface(Surface::Edge::Bottom);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(20, 10, Theme::Space::group, 11);
    row->setSpacing(Theme::Space::unit);
    auto *names = new QVBoxLayout;
    names->setSpacing(0);
    m_title = label(Theme::Type::Title, QFont::DemiBold);
    m_count = label(Theme::Type::Caption, QFont::Normal, true);
    names->addWidget(m_title);
    names->addWidget(m_count);
    row->addLayout(names, 1);

    m_search = new QLineEdit(m_model.query());
    m_search->setPlaceholderText(LibraryUiTexts::tr("Search names, apps and text in images"));
    m_search->setAccessibleName(m_search->placeholderText());
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumWidth(180);
    m_search->setMaximumWidth(340);
    m_search->setFixedHeight(Theme::Size::field);
    m_search->addAction(symbolIcon(QStringLiteral("magnifyingglass")), QLineEdit::LeadingPosition);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, &m_model, &LibraryModel::setQuery);
    row->addWidget(m_search, 2);
    row->addStretch(1);

    auto *size = new QSlider(Qt::Horizontal);
    size->setRange(kSmallestCard, kLargestCard);
    size->setValue(qRound(m_model.cardSize()));
    size->setFixedWidth(96);
    size->setAccessibleName(LibraryUiTexts::tr("Thumbnail Size"));
    TipCenter::describe(
        size,
        {LibraryUiTexts::tr("Thumbnail Size"), LibraryUiTexts::tr("Make the cards bigger or smaller."), {}});
    connect(size, &QSlider::valueChanged, &m_model, [this](int value) { m_model.setCardSize(value); });
    row->addWidget(size);
    row->addSpacing(Theme::Space::inside);
    row->addWidget(dateButton());
    row->addWidget(sortButton());
    auto *import = button(
        QStringLiteral("square.and.arrow.down"), LibraryUiTexts::tr("Import"),
        LibraryUiTexts::tr("Add images or videos from elsewhere. You can also drop files onto the grid."),
        BarButton::Label::None);
    connect(import, &QAbstractButton::clicked, m_actions, &LibraryActions::chooseFilesToImport);
    row->addWidget(import);
    return bar;
}

QWidget *LibraryWindow::makeGrid()
{
    auto *stage = new QWidget;
    auto *rows = new QVBoxLayout(stage);
    rows->setContentsMargins({});
    rows->setSpacing(0);
    m_progress = label(Theme::Type::Caption, QFont::Normal, true);
    m_progress->setContentsMargins(20, Theme::Space::inside, 20, 0);
    rows->addWidget(m_progress);
    auto *pages = new QWidget;
    rows->addWidget(pages, 1);
    m_stages = new QStackedLayout(pages);
    m_grid = new LibraryGrid(m_model, *m_actions);
    m_stages->insertWidget(Cards, m_grid);
    m_stages->insertWidget(
        NoCaptures,
        new EmptyState(
            QStringLiteral("camera.viewfinder"), LibraryUiTexts::tr("No Captures Yet"),
            withShortcutWords(LibraryUiTexts::tr(
                "Press ⌃⇧C or click the menu bar icon to capture. You can also drop images here."))));
    m_stages->insertWidget(
        NoResults, new EmptyState(QStringLiteral("magnifyingglass"), LibraryUiTexts::tr("Nothing Found"),
                                  LibraryUiTexts::tr("Try another word, or another time range.")));
    auto *busy = new QWidget;
    auto *middle = new QVBoxLayout(busy);
    middle->addWidget(new Spinner(32), 0, Qt::AlignCenter);
    m_stages->insertWidget(Busy, busy);
    // Files can be dropped where there are no cards, too.
    pages->setAcceptDrops(true);
    pages->installEventFilter(this);
    return stage;
}

QWidget *LibraryWindow::makeSelectionBar()
{
    m_selectionBar = new Surface(Surface::Edge::Top);
    auto *row = new QHBoxLayout(m_selectionBar);
    row->setContentsMargins(20, 7, Theme::Space::group, 6);
    row->setSpacing(Theme::Space::unit);
    m_selected = label(Theme::Type::Body, QFont::Medium);
    row->addWidget(m_selected);
    row->addStretch(1);
    auto *collection =
        button(QStringLiteral("folder.badge.plus"), LibraryUiTexts::tr("Collection"),
               LibraryUiTexts::tr("Add them to a collection, or start a new one."), BarButton::Label::Beside);
    auto *menu = new QMenu(collection);
    collection->setMenu(menu);
    connect(collection, &BarButton::menuAboutToOpen, this, [this, menu] {
        menu->clear();
        m_actions->fillCollectionMenu(menu, m_model.selectedPaths());
    });
    row->addWidget(collection);
    auto *trash = button(QStringLiteral("trash"), LibraryUiTexts::tr("Trash"),
                         LibraryUiTexts::tr("Move them to the Trash."), BarButton::Label::Beside);
    connect(trash, &QAbstractButton::clicked, this, [this] { m_actions->trash(m_model.selectedPaths()); });
    row->addWidget(trash);
    auto *deselect =
        button(QStringLiteral("xmark.circle"), LibraryUiTexts::tr("Deselect"), {}, BarButton::Label::Beside);
    TipCenter::describe(deselect, {LibraryUiTexts::tr("Deselect"), {}, LibraryUiTexts::tr("Esc")});
    connect(deselect, &QAbstractButton::clicked, this, [this] { m_model.setSelection({}); });
    row->addWidget(deselect);
    return m_selectionBar;
}

void LibraryWindow::updateStage()
{
    Stage stage = Cards;
    if (m_model.visibleCount() == 0) {
        if (m_model.reading() == LibraryModel::Reading::Files ||
            m_model.reading() == LibraryModel::Reading::Nothing)
            stage = Busy;
        else
            stage = m_model.itemCount() == 0 ? NoCaptures : NoResults;
    }
    // While the files were read there was nothing for the keyboard to be at.
    const bool comesToLife = m_stages->currentIndex() == Busy && stage == Cards;
    m_stages->setCurrentIndex(stage);
    if (comesToLife && !m_search->hasFocus())
        m_grid->setFocus();
    updateHeader();
}

void LibraryWindow::updateHeader()
{
    m_title->setText(m_model.title());
    m_count->setText(LibraryUiTexts::tr("%n items", nullptr, m_model.visibleCount()));
    m_total->setText(LibraryUiTexts::tr("%n items", nullptr, m_model.itemCount()) + QStringLiteral(" · ") +
                     bytesText(m_model.totalBytes()));
    const auto progress = m_model.indexProgress() ? m_model.indexProgress() : m_model.aiProgress();
    m_progress->setText(progress.value_or(QString()));
    m_progress->setVisible(progress.has_value());
}

void LibraryWindow::updateSelection()
{
    const auto count = m_model.selection().size();
    m_selected->setText(LibraryUiTexts::tr("%n selected", nullptr, static_cast<int>(count)));
    m_selectionBar->setVisible(count > 0);
}

bool LibraryWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        // From the words to what they found.
        if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (m_model.visibleCount() > 0) {
                m_grid->setFocus(Qt::OtherFocusReason);
                if (m_model.selectedPaths().isEmpty())
                    m_model.click(m_model.visiblePath(0), Qt::NoModifier);
            }
            return true;
        }
        if (key->key() == Qt::Key_Escape && !m_search->text().isEmpty()) {
            m_search->clear();
            return true;
        }
    }
    if (watched != m_search && (event->type() == QEvent::DragEnter || event->type() == QEvent::Drop)) {
        auto *drop = static_cast<QDropEvent *>(event);
        const QStringList paths = localFiles(drop->mimeData());
        if (paths.isEmpty())
            return false;
        drop->acceptProposedAction();
        if (event->type() == QEvent::Drop)
            m_actions->importFiles(paths);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
