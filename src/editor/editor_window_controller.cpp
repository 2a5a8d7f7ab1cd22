#include "editor/editor_window_controller.h"

#include "document/project_file.h"
#include "editor/canvas_view.h"
#include "editor/editor_sheets.h"
#include "editor/editor_view.h"
#include "editor/object_clipboard.h"
#include "editor/texts.h"
#include "library/library.h"
#include "pins/pins.h"
#include "ui/sheet.h"

#include <QCloseEvent>
#include <QCursor>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr QSize kLeastWindow(900, 440); // half of a usual screen, and the whole of a small one
constexpr int kWidthBeyondImage = 80, kHeightBeyondImage = 200;
constexpr int kUsualWidth = 1320, kUsualHeight = 620;
constexpr double kShareOfScreen = 0.9;

QSize windowSize(const QSize &image, const QScreen *screen)
{
    if (!screen)
        return kLeastWindow;
    const QSizeF visible = QSizeF(screen->availableGeometry().size()) * kShareOfScreen;
    const double s = screen->devicePixelRatio();
    return QSizeF(std::min(std::max(image.width() / s + kWidthBeyondImage, double(kUsualWidth)),
                           visible.width()),
                  std::min(std::max(image.height() / s + kHeightBeyondImage, double(kUsualHeight)),
                           visible.height()))
        .toSize();
}

} // namespace

EditorWindowController::EditorWindowController(std::unique_ptr<EditorDocument> document, EditorPorts ports)
    : m_document(std::move(document)),
      m_ports(std::move(ports)),
      m_view(std::make_unique<EditorView>(*this, m_ports)),
      m_desk{*m_document, m_session, *m_view, m_view->canvas(), m_ports},
      m_saving(m_desk),
      m_sharing(m_desk),
      m_reading(m_desk),
      m_drafts(m_desk)
{
    m_view->setMinimumSize(kLeastWindow);
    // Where the capture was asked for.
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    m_view->resize(windowSize(m_document->base().size(), screen));
    if (screen) {
        QRect frame = m_view->frameGeometry();
        frame.moveCenter(screen->availableGeometry().center());
        m_view->move(frame.topLeft());
    }
    showTitle();
    m_view->installEventFilter(this);
    connect(m_document.get(), &EditorDocument::changed, this, &EditorWindowController::follow);
    connect(&m_session, &EditorSession::changed, this, [this](EditorSession::Field field) {
        if (field == EditorSession::Field::Palette && m_session.isPaletteOpen())
            openPalette();
    });
    connect(&m_session, &EditorSession::resultArrived, this, [this](const AIResult &result) {
        EditorSheets::showResult(*m_view, result, m_ports.pasteboard);
    });
    connect(&m_ports.library, &Library::renamed, this, &EditorWindowController::followRename);
    connect(&canvas(), &CanvasView::textAreaChosen, &m_reading, &DocumentReading::copyTextIn);
    tellOfDraft();
    tellOfUnshownPictures();
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
        // What belongs to a guide goes back to it.
        if (m_session.saveHandler && m_document->hasUnsavedChanges())
            m_saving.save();
        m_drafts.keepNow();
        m_saving.setDraft(m_drafts.place());
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

void EditorWindowController::showTitle()
{
    m_view->setWindowTitle(m_document->hasUnsavedChanges() ? m_desk.title() + QStringLiteral(" *")
                                                           : m_desk.title());
}

void EditorWindowController::tellOfDraft()
{
    if (m_document->hasSetDraftAside())
        m_ports.notices.post(
            EditorTexts::tr("Unsaved edits of an earlier state of this picture were set aside"),
            QStringLiteral("exclamationmark.triangle.fill"));
    if (m_document->isFromDraft())
        m_view->tellOfDraft();
}

void EditorWindowController::tellOfUnshownPictures()
{
    if (const QString unshown = ProjectFile::unshownPictures(m_document->annotations()); !unshown.isEmpty())
        m_ports.notices.post(unshown, QStringLiteral("exclamationmark.triangle.fill"));
}

void EditorWindowController::followRename(const QString &oldPath, const QString &newPath)
{
    if (!oldPath.isEmpty() && isSamePath(m_document->fileURL().toLocalFile(), oldPath))
        m_document->setFileURL(QUrl::fromLocalFile(newPath));
}

void EditorWindowController::follow(EditorDocument::Field field)
{
    switch (field) {
    case EditorDocument::Field::File:
    case EditorDocument::Field::Base:
    case EditorDocument::Field::Annotations:
    case EditorDocument::Field::Effects:
    case EditorDocument::Field::Saved:
        return showTitle();
    case EditorDocument::Field::Selection:
    case EditorDocument::Field::Tool:
    case EditorDocument::Field::Style:
    case EditorDocument::Field::History:
        return;
    }
}

bool EditorWindowController::isEnabled(EditorCommand command) const
{
    switch (info(command).condition) {
    case CommandCondition::Always:
        return true;
    case CommandCondition::Selection:
        return m_document->selectedID().has_value();
    case CommandCondition::SelectedText: {
        const auto selected = m_document->selected();
        return selected && Tools::holdsText(selected->kind);
    }
    case CommandCondition::UndoableStep:
        return m_document->canUndo();
    case CommandCondition::RedoableStep:
        return m_document->canRedo();
    case CommandCondition::OpenPin:
        return !m_ports.pins.windows().empty();
    case CommandCondition::PasteableContent:
        return ObjectClipboard::canPaste(m_ports.pasteboard);
    }
    return false;
}

bool EditorWindowController::isChecked(EditorCommand command) const
{
    const auto effect = info(command).effect;
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
    info(command).run(*this);
}

QList<PaletteCommand> EditorWindowController::paletteCommands()
{
    QList<PaletteCommand> commands;
    for (ToolKind tool : Tools::toolbarTools()) {
        const QChar key = Tools::shortcutKey(tool);
        commands.append({EditorTexts::tr("%1 Tool").arg(Tools::shortTitle(tool)), Tools::symbol(tool),
                         key.isNull() ? QString() : QString(key),
                         [this, tool] { m_document->chooseTool(tool); }});
    }
    for (const EditorCommandInfo &row : editorCommands()) {
        const bool needsSomething = row.condition == CommandCondition::Selection ||
                                 row.condition == CommandCondition::OpenPin;
        if (!*row.paletteTitle || (needsSomething && !isEnabled(row.command)))
            continue;
        const char *shortcut = row.paletteShortcut ? row.paletteShortcut : row.shortcut;
        commands.append({row.shownPaletteTitle(), QString::fromLatin1(row.symbol),
                         QString::fromUtf8(shortcut), [this, command = row.command] { run(command); }});
    }
    return commands;
}

void EditorWindowController::openPalette()
{
    if (m_view->findChild<CommandPalette *>(QString(), Qt::FindDirectChildrenOnly))
        return;
    m_desk.commitText();
    auto *palette = new CommandPalette(m_view.get(), paletteCommands());
    connect(palette, &Sheet::closed, &m_session, [this] { m_session.setPaletteOpen(false); });
    palette->open();
}

void EditorWindowController::promptSavePreset()
{
    EditorSheets::promptPreset(*m_view, *m_document, m_ports.presets, m_ports.notices);
}
