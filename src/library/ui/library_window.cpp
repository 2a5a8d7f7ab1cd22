#include "library/ui/library_window.h"

#include "library/model/library_model.h"
#include "library/ui/dragged_files.h"
#include "library/ui/library_grid.h"
#include "library/ui/library_inspector.h"
#include "library/ui/library_sheets.h"
#include "library/ui/library_sidebar.h"
#include "library/ui/library_toolbar.h"
#include "library/ui/preview_overlay.h"
#include "library/ui/selection_bar.h"
#include "library/ui/texts.h"
#include "library/ui/window_parts.h"
#include "ui/controls.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"
#include "ui/tips.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

namespace {

constexpr int kSidebarWidth = 220;
constexpr int kInspectorWidth = 280;
constexpr int kNarrow = 860; // below this the sidebar would leave the cards no room

enum Stage { Cards, NoCaptures, NoResults, Busy };

} // namespace

using WindowParts::button;
using WindowParts::bytesText;
using WindowParts::label;
using WindowParts::Surface;

LibraryWindow::LibraryWindow(const LibraryPorts &ports)
    : m_model(ports.model), m_ports(ports), m_actions(new LibraryActions(ports, this))
{
    installGridAccessibility();
    setWindowTitle(LibraryUiTexts::tr("Library"));
    setMinimumSize(640, 480);
    auto *columns = new QHBoxLayout(this);
    columns->setContentsMargins({});
    columns->setSpacing(0);
    m_sidebar = makeSidebar();
    columns->addWidget(m_sidebar);
    auto *main = new QVBoxLayout;
    main->setSpacing(0);
    columns->addLayout(main, 1);
    m_toolbar = new LibraryToolbar(m_model, *m_actions, m_ports.work);
    m_toolbar->searchField()->installEventFilter(this);
    connect(m_toolbar, &LibraryToolbar::sidebarWanted, this,
            [this] { m_sidebar->setVisible(!m_sidebar->isVisible()); });
    main->addWidget(m_toolbar);
    main->addWidget(makeGrid(), 1);
    main->addWidget(new SelectionBar(m_model, *m_actions));
    columns->addWidget(makeInspector());
    new PreviewOverlay(m_ports, *m_actions, this);

    connect(&m_model, &LibraryModel::visibleChanged, this, &LibraryWindow::updateStage);
    connect(&m_model, &LibraryModel::readingChanged, this, &LibraryWindow::updateStage);
    connect(&m_model, &LibraryModel::sidebarChanged, this, &LibraryWindow::updateStage);
    connect(&m_model, &LibraryModel::progressChanged, this, &LibraryWindow::updateProgress);
    connect(&m_model, &LibraryModel::sheetChanged, this, [this] {
        if (m_model.sheet())
            LibrarySheets::open(m_ports, *m_actions, this, *m_model.sheet());
    });

    auto *find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, [this] {
        searchField()->setFocus(Qt::ShortcutFocusReason);
        searchField()->selectAll();
    });
    auto *close = new QShortcut(QKeySequence::Close, this);
    connect(close, &QShortcut::activated, this, &QWidget::close);

    if (m_model.reading() == LibraryModel::Reading::Nothing)
        m_model.load();
    updateStage();
    updateProgress();
    m_grid->setFocus();
}

QLineEdit *LibraryWindow::searchField() const
{
    return m_toolbar->searchField();
}

LibraryWindow::~LibraryWindow()
{
    // The next window begins afresh.
    m_model.disconnect(this);
    m_model.setPreviewing(std::nullopt);
    m_model.setSheet(std::nullopt);
    m_model.setSelection({});
    m_model.setQuery({});
    m_model.setSidebar(LibraryFilter::All);
    m_model.setDateRange(DateRange::Any);
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
    foot->setSpacing(0);
    auto *cleanUp = button(QStringLiteral("wand.and.stars"), LibraryUiTexts::tr("Clean Up"),
                           LibraryUiTexts::tr("Find duplicates and large files, and set up auto-delete."),
                           BarButton::Label::Beside);
    connect(cleanUp, &QAbstractButton::clicked, this,
            [this] { m_actions->openSheet(LibrarySheet::Kind::CleanUp, {}); });
    foot->addWidget(cleanUp, 0, Qt::AlignLeft);
    auto *folder =
        button(QStringLiteral("folder"), LibraryUiTexts::tr("Open Folder"),
               LibraryUiTexts::tr("Show your captures folder in Finder."), BarButton::Label::Beside);
    connect(folder, &QAbstractButton::clicked, m_actions, &LibraryActions::openFolder);
    foot->addWidget(folder, 0, Qt::AlignLeft);
    m_total = label(Theme::Type::Caption, QFont::Normal, true);
    m_total->setContentsMargins(Theme::Space::inside, Theme::Space::unit, 0, 0);
    foot->addWidget(m_total);
    rows->addLayout(foot);
    return side;
}

QWidget *LibraryWindow::makeInspector()
{
    auto *side = new Surface(Surface::Edge::Left);
    side->setFixedWidth(kInspectorWidth);
    auto *rows = new QVBoxLayout(side);
    rows->setContentsMargins({});
    rows->addWidget(new LibraryInspector(m_ports, *m_actions));
    side->setVisible(m_model.showsInspector());
    connect(&m_model, &LibraryModel::inspectorChanged, side, [this, side] {
        side->setVisible(m_model.showsInspector());
        fitSidebar();
    });
    return side;
}

void LibraryWindow::fitSidebar()
{
    const int room = width() - (m_model.showsInspector() ? kInspectorWidth : 0);
    m_toolbar->setNarrow(room < kNarrow);
    m_sidebar->setVisible(room >= kNarrow);
}

void LibraryWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitSidebar();
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
    m_grid = new LibraryGrid(m_model, *m_actions, m_ports.movies);
    connect(m_grid, &LibraryGrid::typed, this, [this](const QString &text) {
        searchField()->setFocus(Qt::ShortcutFocusReason);
        searchField()->setText(searchField()->text() + text);
    });
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
    if (comesToLife && !searchField()->hasFocus())
        m_grid->setFocus();
    m_total->setText(LibraryUiTexts::tr("%n items", nullptr, m_model.itemCount()) + QStringLiteral(" · ") +
                     bytesText(m_model.totalBytes()));
}

void LibraryWindow::updateProgress()
{
    const auto progress = m_model.indexProgress() ? m_model.indexProgress() : m_model.aiProgress();
    m_progress->setText(progress.value_or(QString()));
    m_progress->setVisible(progress.has_value());
}

bool LibraryWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == searchField() && event->type() == QEvent::KeyPress) {
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
        if (key->key() == Qt::Key_Escape && !searchField()->text().isEmpty()) {
            searchField()->clear();
            return true;
        }
    }
    if (watched != searchField() && (event->type() == QEvent::DragEnter || event->type() == QEvent::Drop)) {
        auto *drop = static_cast<QDropEvent *>(event);
        const QStringList paths = localFiles(drop->mimeData());
        if (paths.isEmpty() || drop->source() == grid())
            return false;
        drop->acceptProposedAction();
        if (event->type() == QEvent::Drop)
            m_actions->importFiles(paths);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
