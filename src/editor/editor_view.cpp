#include "editor/editor_view.h"

#include "editor/canvas_view.h"
#include "editor/draft_bar.h"
#include "editor/editor_window_controller.h"
#include "editor/options_bar.h"
#include "editor/status_line.h"
#include "editor/texts.h"
#include "ui/bar_keys.h"
#include "ui/color_panel.h"
#include "ui/controls.h"
#include "ui/overflow_button.h"
#include "ui/roles.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

constexpr int kBarHeight = 58;
constexpr int kBarMargin = 8;

// What a menu shows: an ampersand is no mnemonic here.
QString menuTitle(const QString &title)
{
    return QString(title).replace('&', "&&");
}

// A bar: the surface with a hairline under it.
class Bar : public QWidget {
public:
    explicit Bar(int height) { setFixedHeight(height); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const auto &t = Theme::tokens(this);
        QPainter painter(this);
        painter.fillRect(rect(), t.surface);
        Theme::fillHairline(painter, QRectF(0, height() - 1, width(), 1), t.hairline);
    }
};

// Pulls a file out of the window when it is dragged; a click hands the file to the clipboard.
class DragOutButton : public BarButton {
public:
    DragOutButton(EditorWindowController &controller, const EditorCommandInfo &row)
        : BarButton(row.symbol, row.shownTitle(), Label::Under), m_controller(controller)
    {}

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        BarButton::mousePressEvent(event);
        m_press = event->position();
        m_isDragged = false;
        m_controller.sharing().prepareDrag();
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        const bool far = (event->position() - m_press).manhattanLength() >= QApplication::startDragDistance();
        if ((event->buttons() & Qt::LeftButton) && far && !std::exchange(m_isDragged, true)) {
            setDown(false);
            m_controller.sharing().startDrag();
        }
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (m_isDragged)
            setDown(false);
        else
            BarButton::mouseReleaseEvent(event);
    }

private:
    EditorWindowController &m_controller;
    QPointF m_press;
    bool m_isDragged = false;
};

QIcon gradientIcon(const Effects::Backdrop &backdrop)
{
    QPixmap pixmap(32, 32);
    pixmap.setDevicePixelRatio(2);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(0, 0, 16, 16);
    gradient.setColorAt(0, backdrop.first);
    gradient.setColorAt(1, backdrop.second);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawRoundedRect(QRectF(1, 1, 14, 14), 4, 4);
    return pixmap;
}

} // namespace

const QList<QList<ToolKind>> &EditorView::toolGroups()
{
    static const QList<QList<ToolKind>> groups{
        {ToolKind::Select},
        {ToolKind::Arrow, ToolKind::Rectangle, ToolKind::Ellipse, ToolKind::Line, ToolKind::Pen,
         ToolKind::Highlight, ToolKind::Text, ToolKind::Callout, ToolKind::Step, ToolKind::Stamp},
        {ToolKind::Blur, ToolKind::Spotlight, ToolKind::Magnify},
        {ToolKind::Crop, ToolKind::Cutout, ToolKind::Measure},
    };
    return groups;
}

EditorView::EditorView(EditorWindowController &controller, EditorPorts &ports)
    : m_controller(controller),
      m_ports(ports),
      m_document(controller.document()),
      m_canvas(new CanvasView(m_document, controller.session(), ports.pasteboard, ports.notices)),
      m_options(new OptionsBar(controller, ports.presets)),
      m_status(new StatusLine(controller))
{
    setObjectName("editor");
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_mainBar = makeMainBar());
    column->addWidget(m_options);
    column->addWidget(m_canvas, 1);
    column->addWidget(m_status);
    for (QWidget *bar : {m_mainBar, static_cast<QWidget *>(m_options), static_cast<QWidget *>(m_status)})
        new BarKeys(bar);
    addShortcuts();
    connect(&m_document, &EditorDocument::changed, this, &EditorView::follow);
    connect(m_canvas, &CanvasView::menuRequested, this,
            [this](const QPoint &position) { makeObjectMenu()->popup(position); });
    follow(EditorDocument::Field::Tool);
    follow(EditorDocument::Field::History);
}

EditorView::~EditorView() = default;

void EditorView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::tokens(this).window);
}

QWidget *EditorView::makeMainBar()
{
    auto *bar = new Bar(kBarHeight);
    bar->setAccessibleName(EditorTexts::tr("Tools and actions"));
    Roles::set(bar, QAccessible::ToolBar);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(kBarMargin, 0, kBarMargin, 1);
    row->setSpacing(1);
    addTools(row);
    row->addStretch();
    addActions(row);
    // On a small screen: first what else is in the palette, the tools that are needed least at last.
    QList<BarButton *> yielding = m_rarelyUsed;
    for (ToolKind tool : {ToolKind::Measure, ToolKind::Cutout, ToolKind::Magnify, ToolKind::Spotlight,
                          ToolKind::Stamp, ToolKind::Pen, ToolKind::Line, ToolKind::Ellipse})
        yielding += m_toolButtons[tool];
    auto *more = new OverflowButton(bar, EditorTexts::tr("More"), yielding);
    row->insertWidget(row->indexOf(m_commandButtons[EditorCommand::CopyImage]), more, 0, Qt::AlignVCenter);
    return bar;
}

void EditorView::addTools(QHBoxLayout *row)
{
    for (const auto &group : toolGroups()) {
        if (&group != &toolGroups().constFirst()) {
            row->addSpacing(4);
            row->addWidget(new Hairline(Qt::Vertical));
            row->addSpacing(4);
        }
        for (ToolKind tool : group) {
            auto *button =
                new BarButton(Tools::symbol(tool), Tools::shortTitle(tool), BarButton::Label::Under);
            button->setObjectName("tool-" + Tools::rawValue(tool));
            button->setCheckable(true);
            Roles::set(button, QAccessible::RadioButton);
            TipCenter::describe(
                button, {Tools::shortTitle(tool), Tools::tipDetail(tool), QString(Tools::shortcutKey(tool))});
            connect(button, &QAbstractButton::clicked, this, [this, tool] {
                m_canvas->interaction().commitText();
                m_document.chooseTool(tool);
                follow(EditorDocument::Field::Tool); // a second click must not switch it off
            });
            m_toolButtons.insert(tool, button);
            row->addWidget(button, 0, Qt::AlignVCenter);
        }
    }
}

BarButton *EditorView::addCommand(QHBoxLayout *row, EditorCommand command)
{
    const EditorCommandInfo &shown = info(command);
    auto *button = new BarButton(shown.symbol, shown.shownTitle(), BarButton::Label::Under);
    button->setObjectName(QStringLiteral("command-") + QString::fromUtf8(shown.title));
    TipCenter::describe(button, {shown.shownTitle(), shown.shownTip(), QString::fromUtf8(shown.shortcut)});
    connect(button, &QAbstractButton::clicked, this, [this, command] { m_controller.run(command); });
    m_commandButtons.insert(command, button);
    row->addWidget(button, 0, Qt::AlignVCenter);
    return button;
}

QAction *EditorView::addItem(QMenu *menu, EditorCommand command, Words words)
{
    const EditorCommandInfo &row = info(command);
    const QString shortcut = shortcutText(QString::fromUtf8(row.shortcut));
    QString text = menuTitle(words == Words::Menu ? row.shownTitle() : row.shownPaletteTitle());
    if (!shortcut.isEmpty())
        text += '\t' + shortcut;
    QAction *item =
        menu->addAction(symbolIcon(row.symbol), text, this, [this, command] { m_controller.run(command); });
    item->setData(static_cast<int>(command));
    item->setEnabled(m_controller.isEnabled(command));
    return item;
}

BarButton *EditorView::addMenu(QHBoxLayout *row, const EditorMenuInfo &shown,
                               const QList<EditorCommand> &commands, int separatorAfter)
{
    auto *button = new BarButton(shown.symbol, shown.shownTitle(), BarButton::Label::Under);
    button->setObjectName(QStringLiteral("menu-") + QString::fromUtf8(shown.title));
    TipCenter::describe(button, {shown.shownTitle(), shown.shownTip(), {}});
    auto *menu = new QMenu;
    for (qsizetype i = 0; i < commands.size(); ++i) {
        addItem(menu, commands[i]);
        if (i == separatorAfter)
            menu->addSeparator();
    }
    button->setMenu(menu);
    row->addWidget(button, 0, Qt::AlignVCenter);
    return button;
}

QMenu *EditorView::makeObjectMenu()
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (!m_document.selected()) {
        addItem(menu, EditorCommand::Paste);
        addItem(menu, EditorCommand::PickColor, Words::Palette);
        return menu;
    }
    if (m_controller.isEnabled(EditorCommand::EditText)) {
        addItem(menu, EditorCommand::EditText);
        menu->addSeparator();
    }
    for (EditorCommand command :
         {EditorCommand::Cut, EditorCommand::CopyObject, EditorCommand::Paste, EditorCommand::Duplicate})
        addItem(menu, command);
    menu->addSeparator();
    addItem(menu, EditorCommand::BringToFront);
    addItem(menu, EditorCommand::SendToBack);
    menu->addSeparator();
    addItem(menu, EditorCommand::Delete);
    return menu;
}

void EditorView::tellOfDraft()
{
    const bool isSavedNowhere = m_document.saved().base.isNull();
    auto *bar = new DraftBar(isSavedNowhere ? DraftBar::Unsaved::Picture : DraftBar::Unsaved::Edits);
    connect(bar, &DraftBar::discarded, this, [this, isSavedNowhere] {
        if (!isSavedNowhere)
            return m_document.setContents(m_document.saved());
        m_document.setSaved(m_document.contents());
        close();
    });
    // Once all is saved there is nothing left to decide.
    connect(&m_document, &EditorDocument::changed, bar, [this, bar](EditorDocument::Field field) {
        if (field == EditorDocument::Field::Saved && !m_document.hasUnsavedChanges())
            bar->deleteLater();
    });
    auto *column = static_cast<QVBoxLayout *>(layout());
    column->insertWidget(column->indexOf(m_canvas), bar);
    new BarKeys(bar);
}

BarButton *EditorView::addEffects(QHBoxLayout *row)
{
    BarButton *button = addMenu(row, EditorMenus::kEffects, {});
    QMenu *menu = button->menu();
    const auto toggle = [this, menu](EditorCommand command) {
        QAction *item = addItem(menu, command);
        item->setCheckable(true);
        return item;
    };
    toggle(EditorCommand::ToggleBackdrop);
    auto *styles = menu->addMenu(EditorTexts::tr("Backdrop Style"));
    auto *group = new QActionGroup(styles);
    for (int i = 0; i < Effects::backdrops().size(); ++i) {
        const Effects::Backdrop &backdrop = Effects::backdrops()[i];
        QAction *style = styles->addAction(gradientIcon(backdrop), backdrop.name, this, [this, i] {
            Effects effects = m_document.effects();
            effects.backdropStyle = i;
            effects.backdrop = true;
            m_document.setEffects(effects);
        });
        group->addAction(style);
    }
    menu->addSeparator();
    toggle(EditorCommand::ToggleBorder);
    menu->addAction(EditorTexts::tr("Border Color"), this, [this, button] { chooseBorderColor(button); });
    menu->addSeparator();
    toggle(EditorCommand::ToggleShadow);
    toggle(EditorCommand::ToggleRounded);
    connect(button, &BarButton::menuAboutToOpen, this, [this, menu] {
        for (QAction *item : menu->actions()) {
            if (item->isCheckable())
                item->setChecked(m_controller.isChecked(static_cast<EditorCommand>(item->data().toInt())));
        }
    });
    return button;
}

void EditorView::chooseBorderColor(BarButton *button)
{
    auto *panel = new ColorPanel(m_document.effects().borderColor, this);
    connect(panel, &ColorPanel::changed, this, [this](const QColor &color) {
        Effects effects = m_document.effects();
        effects.borderColor = color;
        m_document.setEffects(effects);
    });
    panel->openUnder(button);
}

BarButton *EditorView::addDragOut(QHBoxLayout *row)
{
    const EditorCommandInfo &shown = info(EditorCommand::DragOut);
    auto *button = new DragOutButton(m_controller, shown);
    button->setObjectName("command-Drag Out");
    TipCenter::describe(button, {shown.shownTitle(), shown.shownTip(), {}});
    connect(button, &QAbstractButton::clicked, this, [this] { m_controller.run(EditorCommand::DragOut); });
    row->addWidget(button, 0, Qt::AlignVCenter);
    return button;
}

void EditorView::addActions(QHBoxLayout *row)
{
    const auto separate = [row] {
        row->addSpacing(4);
        row->addWidget(new Hairline(Qt::Vertical));
        row->addSpacing(4);
    };
    addCommand(row, EditorCommand::Undo);
    addCommand(row, EditorCommand::Redo);
    separate();
    BarButton *effects = addEffects(row);
    BarButton *redact = addMenu(row, EditorMenus::kRedact,
            {EditorCommand::RedactSensitive, EditorCommand::RedactAllText, EditorCommand::RedactFaces,
             EditorCommand::GrabText, EditorCommand::CopyTextFromArea},
            2);
    BarButton *ai = addMenu(row, EditorMenus::kAi,
            {EditorCommand::Describe, EditorCommand::DescribeSteps, EditorCommand::AltText,
             EditorCommand::Rename});
    separate();
    BarButton *pin = addCommand(row, EditorCommand::Pin);
    BarButton *share = addMenu(row, EditorMenus::kShare, {EditorCommand::Share, EditorCommand::Upload, EditorCommand::SaveAs});
    BarButton *drag = addDragOut(row);
    addCommand(row, EditorCommand::CopyImage);
    addCommand(row, EditorCommand::Save);
    m_rarelyUsed = {drag, pin, ai, effects, share, redact};
}

void EditorView::addShortcuts()
{
    for (const EditorCommandInfo &row : editorCommands()) {
        if (!*row.shortcut || row.scope == KeyScope::OnlyShown)
            continue;
        auto *action = new QAction(row.shownTitle(), this);
        QList<QKeySequence> sequences{shortcutSequence(QString::fromUtf8(row.shortcut))};
        if (*row.otherShortcut)
            sequences.append(shortcutSequence(QString::fromUtf8(row.otherShortcut)));
        action->setShortcuts(sequences);
        connect(action, &QAction::triggered, this, [this, command = row.command] {
            if (m_controller.isEnabled(command))
                m_controller.run(command);
        });
        if (row.scope == KeyScope::Canvas) {
            action->setShortcutContext(Qt::WidgetShortcut);
            m_canvas->addAction(action);
        } else {
            addAction(action);
        }
    }
    auto *close = new QAction(this);
    close->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    connect(close, &QAction::triggered, this, &QWidget::close);
    addAction(close);
    // Tab moves between objects while the canvas has the focus; these leave it.
    connect(new QShortcut(Qt::Key_F6, this), &QShortcut::activated, this, [this] { movePane(1); });
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F6, this), &QShortcut::activated, this,
            [this] { movePane(-1); });
}

// Round the parts of the window, each of which the keyboard enters where it left.
void EditorView::movePane(int delta)
{
    QList<QWidget *> stops;
    qsizetype at = -1;
    const auto *row = layout();
    for (int i = 0; i < row->count(); ++i) {
        QWidget *part = row->itemAt(i)->widget();
        const auto *bar = part->findChild<BarKeys *>(QString(), Qt::FindDirectChildrenOnly);
        QWidget *stop = bar ? bar->stop() : part;
        if (!stop || !part->isVisible())
            continue;
        if (QWidget *focus = focusWidget(); focus && (focus == part || part->isAncestorOf(focus)))
            at = stops.size();
        stops += stop;
    }
    const auto count = stops.size();
    if (count > 0)
        stops[(at + delta + count) % count]->setFocus(Qt::TabFocusReason);
}

bool EditorView::focusNextPrevChild(bool next)
{
    movePane(next ? 1 : -1);
    return true;
}

void EditorView::follow(EditorDocument::Field field)
{
    switch (field) {
    case EditorDocument::Field::Tool:
        for (auto it = m_toolButtons.begin(); it != m_toolButtons.end(); ++it)
            it.value()->setChecked(it.key() == m_document.tool());
        return;
    case EditorDocument::Field::History:
    case EditorDocument::Field::Annotations:
        for (EditorCommand command : {EditorCommand::Undo, EditorCommand::Redo})
            m_commandButtons[command]->setEnabled(m_controller.isEnabled(command));
        return;
    case EditorDocument::Field::Base:
    case EditorDocument::Field::Selection:
    case EditorDocument::Field::Effects:
    case EditorDocument::Field::Style:
    case EditorDocument::Field::File:
    case EditorDocument::Field::Saved:
        return;
    }
}
