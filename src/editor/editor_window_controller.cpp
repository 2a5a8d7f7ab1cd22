#include "editor/editor_window_controller.h"

#include "editor/canvas_view.h"
#include "editor/editor_sheets.h"
#include "editor/editor_view.h"
#include "library/library.h"
#include "ui/sheet.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr QSize leastWindow(1230, 540);
constexpr int widthBeyondImage = 80, heightBeyondImage = 200;
constexpr int usualWidth = 1320, usualHeight = 620;
constexpr double shareOfScreen = 0.9;

QSize windowSize(const QSize &image, const QScreen *screen)
{
    if (!screen)
        return leastWindow;
    const QSizeF visible = QSizeF(screen->availableGeometry().size()) * shareOfScreen;
    const double s = screen->devicePixelRatio();
    return QSizeF(
               std::min(std::max(image.width() / s + widthBeyondImage, double(usualWidth)), visible.width()),
               std::min(std::max(image.height() / s + heightBeyondImage, double(usualHeight)),
                        visible.height()))
        .toSize();
}

} // namespace

EditorWindowController::EditorWindowController(std::unique_ptr<EditorDocument> document, EditorPorts ports)
    : m_document(std::move(document)),
      m_ports(std::move(ports)),
      m_view(std::make_unique<EditorView>(*this, m_ports)),
      m_desk{*m_document, *m_view, m_view->canvas(), m_ports},
      m_saving(m_desk),
      m_sharing(m_desk),
      m_reading(m_desk)
{
    m_view->setMinimumSize(leastWindow);
    const QScreen *screen = QGuiApplication::primaryScreen();
    m_view->resize(windowSize(m_document->base().size(), screen));
    if (screen) {
        QRect frame = m_view->frameGeometry();
        frame.moveCenter(screen->availableGeometry().center());
        m_view->move(frame.topLeft());
    }
    m_view->setWindowTitle(title());
    m_view->installEventFilter(this);
    connect(m_document.get(), &EditorDocument::changed, this, &EditorWindowController::onChanged);
    connect(&m_ports.library, &Library::renamed, this, &EditorWindowController::followRename);
    connect(&canvas(), &CanvasView::textAreaChosen, &m_reading, &DocumentReading::copyTextIn);
}

EditorWindowController::~EditorWindowController()
{
    // The view's parts look at the document to their end.
    m_view.reset();
}

CanvasView &EditorWindowController::canvas()
{
    return m_view->canvas();
}

QWidget &EditorWindowController::window()
{
    return *m_view;
}

void EditorWindowController::show()
{
    m_view->show();
    canvas().setFocus();
}

void EditorWindowController::bringToFront()
{
    m_view->show();
    m_view->raise();
    m_view->activateWindow();
}

bool EditorWindowController::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view.get() && event->type() == QEvent::Close && !std::exchange(m_isClosed, true)) {
        m_desk.commitText();
        // When the event has been dealt with: the receiver may delete this.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (onClose)
                    onClose(this);
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

QString EditorWindowController::title() const
{
    if (!m_document->displayName().isEmpty())
        return m_document->displayName();
    if (!m_document->fileURL().isEmpty())
        return QFileInfo(m_document->fileURL().toLocalFile()).completeBaseName();
    return QStringLiteral("Untitled Capture");
}

void EditorWindowController::followRename(const QString &oldPath, const QString &newPath)
{
    if (!oldPath.isEmpty() && isSamePath(m_document->fileURL().toLocalFile(), oldPath))
        m_document->setFileURL(QUrl::fromLocalFile(newPath));
}

void EditorWindowController::onChanged(EditorDocument::Field field)
{
    if (field == EditorDocument::Field::File)
        m_view->setWindowTitle(title());
    if (field != EditorDocument::Field::Mode)
        return;
    if (m_document->showPalette())
        openPalette();
    if (m_document->aiResult())
        showAIResult();
}

// MARK: Commands

bool EditorWindowController::isEnabled(EditorCommand command) const
{
    switch (command) {
    case EditorCommand::Undo:
        return m_document->canUndo();
    case EditorCommand::Redo:
        return m_document->canRedo();
    default:
        return !info(command).needsSelection || m_document->selectedID();
    }
}

namespace {

// What a command of that kind switches; nothing for any other.
bool Effects::*effectOf(EditorCommand command)
{
    switch (command) {
    case EditorCommand::ToggleBackdrop:
        return &Effects::backdrop;
    case EditorCommand::ToggleBorder:
        return &Effects::border;
    case EditorCommand::ToggleShadow:
        return &Effects::shadow;
    case EditorCommand::ToggleRounded:
        return &Effects::rounded;
    default:
        return nullptr;
    }
}

} // namespace

bool EditorWindowController::isChecked(EditorCommand command) const
{
    const auto effect = effectOf(command);
    return effect && m_document->effects().*effect;
}

void EditorWindowController::toggle(bool Effects::*effect)
{
    Effects effects = m_document->effects();
    effects.*effect = !(effects.*effect);
    m_document->setEffects(effects);
}

void EditorWindowController::run(EditorCommand command)
{
    m_desk.commitText();
    switch (command) {
    case EditorCommand::CopyImage:
        return m_sharing.copyImage();
    case EditorCommand::Save:
        return m_saving.save();
    case EditorCommand::SaveAs:
        return m_saving.saveAs();
    case EditorCommand::Share:
        return m_sharing.share();
    case EditorCommand::Upload:
        return m_sharing.upload();
    case EditorCommand::Pin:
        return m_sharing.pin();
    case EditorCommand::DragOut:
        return m_sharing.copyFile();
    case EditorCommand::ToggleBackdrop:
    case EditorCommand::ToggleBorder:
    case EditorCommand::ToggleShadow:
    case EditorCommand::ToggleRounded:
        return toggle(effectOf(command));
    case EditorCommand::RedactSensitive:
        return m_reading.redact(Redaction::Mode::Sensitive);
    case EditorCommand::RedactAllText:
        return m_reading.redact(Redaction::Mode::AllText);
    case EditorCommand::RedactFaces:
        return m_reading.redact(Redaction::Mode::Faces);
    case EditorCommand::GrabText:
        return m_reading.grabText();
    case EditorCommand::Describe:
        return m_reading.runAI(ClaudeClient::Action::Describe);
    case EditorCommand::DescribeSteps:
        return m_reading.runAI(ClaudeClient::Action::Steps);
    case EditorCommand::AltText:
        return m_reading.runAI(ClaudeClient::Action::AltText);
    case EditorCommand::Rename:
        return m_reading.runAI(ClaudeClient::Action::Name);
    case EditorCommand::CommandPalette:
        return m_document->setShowPalette(true);
    default:
        return runOnCanvas(command);
    }
}

void EditorWindowController::runOnCanvas(EditorCommand command)
{
    CanvasInteraction &interaction = canvas().interaction();
    switch (command) {
    case EditorCommand::Undo:
        return m_document->undo();
    case EditorCommand::Redo:
        return m_document->redo();
    case EditorCommand::ZoomIn:
        return interaction.zoomBy(1.25);
    case EditorCommand::ZoomOut:
        return interaction.zoomBy(0.8);
    case EditorCommand::ZoomToFit:
        return interaction.setZoom({});
    case EditorCommand::ActualSize:
        return interaction.setZoom(1);
    case EditorCommand::CopyTextFromArea:
        canvas().setFocus();
        return interaction.startTextSelection();
    case EditorCommand::PickColor:
        canvas().setFocus();
        return interaction.startEyedropper();
    case EditorCommand::Cut:
        return interaction.cut();
    case EditorCommand::CopyObject:
        return interaction.copy();
    case EditorCommand::Paste:
        return interaction.paste();
    case EditorCommand::Duplicate:
        return interaction.duplicate();
    case EditorCommand::Delete:
        return m_document->deleteSelected();
    case EditorCommand::BringToFront:
        return m_document->bringToFront();
    case EditorCommand::SendToBack:
        return m_document->sendToBack();
    default:
        Q_ASSERT_X(false, "run", "a command that nobody carries out");
    }
}

QList<PaletteCommand> EditorWindowController::paletteCommands()
{
    QList<PaletteCommand> commands;
    for (ToolKind tool : Tools::toolbarTools()) {
        const QChar key = Tools::shortcutKey(tool);
        commands.append({Tools::shortTitle(tool) + " Tool", Tools::symbol(tool),
                         key.isNull() ? QString() : QString(key), [this, tool] {
                             m_document->setTool(tool);
                             m_document->setSelectedID({});
                         }});
    }
    for (const EditorCommandInfo &row : editorCommands()) {
        const QString paletteTitle = QString::fromUtf8(row.paletteTitle);
        if (paletteTitle.isEmpty() || (row.needsSelection && !m_document->selectedID()))
            continue;
        const QString shortcut =
            QString::fromUtf8(*row.paletteShortcut ? row.paletteShortcut : row.shortcut).trimmed();
        commands.append(
            {paletteTitle, row.symbol, shortcut, [this, command = row.command] { run(command); }});
    }
    return commands;
}

void EditorWindowController::openPalette()
{
    if (m_view->findChild<CommandPalette *>(QString(), Qt::FindDirectChildrenOnly))
        return;
    m_desk.commitText();
    auto *palette = new CommandPalette(m_view.get(), paletteCommands());
    connect(palette, &Sheet::closed, m_document.get(), [this] { m_document->setShowPalette(false); });
    palette->open();
}

// MARK: Sheets

void EditorWindowController::showAIResult()
{
    const AIResult result = *m_document->aiResult();
    m_document->setAIResult(std::nullopt);
    EditorSheets::showResult(*m_view, result, m_ports.pasteboard);
}

void EditorWindowController::promptSavePreset()
{
    EditorSheets::promptPreset(*m_view, *m_document, m_ports.presets, m_ports.notices);
}
