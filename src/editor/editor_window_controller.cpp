#include "editor/editor_window_controller.h"

#include "base/async.h"
#include "base/clock.h"
#include "base/log.h"
#include "base/notice.h"
#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor/editor_sheets.h"
#include "editor/editor_view.h"
#include "editor/finished_image.h"
#include "editor/pins.h"
#include "library/library.h"
#include "library/library_versions.h"
#include "platform/pasteboard.h"
#include "platform/workspace.h"
#include "services/text_recognizer.h"
#include "services/uploader.h"
#include "settings/app_settings.h"
#include "ui/sheet.h"
#include "ui/symbol.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDrag>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QUrlQuery>

namespace {

constexpr auto doneSymbol = "checkmark.circle.fill";
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

int nonEmptyLines(const QString &text)
{
    return static_cast<int>(text.split('\n', Qt::SkipEmptyParts).size());
}

// A file name cannot hold a slash.
QString fileStem(QString title)
{
    return title.replace('/', '-');
}

// Exactly what the file system compares, without a trailing slash or dots.
QString standardized(const QString &path)
{
    return QDir::cleanPath(QDir(path).absolutePath());
}

Result<void> writeAll(const FinishedImage &finished, const QString &path,
                      const std::optional<FileHistory> &history, const QDateTime &now)
{
    if (history)
        history->saveVersion(now);
    if (auto written = ImageFiles::write(finished.exported(), path); !written)
        return written;
    return history ? history->saveProject(finished.base, finished.project()) : Result<void>{};
}

} // namespace

EditorWindowController::EditorWindowController(std::unique_ptr<EditorDocument> document, EditorPorts ports)
    : m_document(std::move(document)),
      m_ports(std::move(ports)),
      m_view(std::make_unique<EditorView>(*this, m_ports))
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
    connect(&canvas(), &CanvasView::textAreaChosen, this, &EditorWindowController::copyTextIn);
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
        canvas().interaction().commitText();
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

bool EditorWindowController::isInLibrary() const
{
    const QString path = m_document->fileURL().toLocalFile();
    return !path.isEmpty() &&
           standardized(QFileInfo(path).path()) == standardized(m_ports.settings.saveFolder());
}

void EditorWindowController::followRename(const QString &oldPath, const QString &newPath)
{
    if (standardized(m_document->fileURL().toLocalFile()) == standardized(oldPath) && !oldPath.isEmpty())
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

bool EditorWindowController::isChecked(EditorCommand command) const
{
    const Effects &effects = m_document->effects();
    switch (command) {
    case EditorCommand::ToggleBackdrop:
        return effects.backdrop;
    case EditorCommand::ToggleBorder:
        return effects.border;
    case EditorCommand::ToggleShadow:
        return effects.shadow;
    case EditorCommand::ToggleRounded:
        return effects.rounded;
    default:
        return false;
    }
}

void EditorWindowController::run(EditorCommand command)
{
    CanvasInteraction &interaction = canvas().interaction();
    // What is being typed belongs to the picture.
    interaction.commitText();
    const auto flip = [this](bool Effects::*effect) {
        Effects effects = m_document->effects();
        effects.*effect = !(effects.*effect);
        m_document->setEffects(effects);
    };
    switch (command) {
    case EditorCommand::Undo:
        return m_document->undo();
    case EditorCommand::Redo:
        return m_document->redo();
    case EditorCommand::CopyImage:
        return copyImage();
    case EditorCommand::Save:
        return save();
    case EditorCommand::SaveAs:
        return saveAs();
    case EditorCommand::Share:
        return share();
    case EditorCommand::Upload:
        return upload();
    case EditorCommand::Pin:
        return pin();
    case EditorCommand::DragOut:
        return copyFile();
    case EditorCommand::ZoomIn:
        return interaction.zoomBy(1.25);
    case EditorCommand::ZoomOut:
        return interaction.zoomBy(0.8);
    case EditorCommand::ZoomToFit:
        return interaction.setZoom({});
    case EditorCommand::ActualSize:
        return interaction.setZoom(1);
    case EditorCommand::ToggleBackdrop:
        return flip(&Effects::backdrop);
    case EditorCommand::ToggleBorder:
        return flip(&Effects::border);
    case EditorCommand::ToggleShadow:
        return flip(&Effects::shadow);
    case EditorCommand::ToggleRounded:
        return flip(&Effects::rounded);
    case EditorCommand::RedactSensitive:
        return redact(Redaction::Mode::Sensitive);
    case EditorCommand::RedactAllText:
        return redact(Redaction::Mode::AllText);
    case EditorCommand::RedactFaces:
        return redact(Redaction::Mode::Faces);
    case EditorCommand::GrabText:
        return grabText();
    case EditorCommand::CopyTextFromArea:
        canvas().setFocus();
        return interaction.startTextSelection();
    case EditorCommand::PickColor:
        canvas().setFocus();
        return interaction.startEyedropper();
    case EditorCommand::Describe:
        return runAI(ClaudeClient::Action::Describe);
    case EditorCommand::DescribeSteps:
        return runAI(ClaudeClient::Action::Steps);
    case EditorCommand::AltText:
        return runAI(ClaudeClient::Action::AltText);
    case EditorCommand::Rename:
        return runAI(ClaudeClient::Action::Name);
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
    case EditorCommand::CommandPalette:
        return m_document->setShowPalette(true);
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
    canvas().interaction().commitText();
    auto *palette = new CommandPalette(m_view.get(), paletteCommands());
    connect(palette, &Sheet::closed, m_document.get(), [this] { m_document->setShowPalette(false); });
    palette->open();
}

// MARK: Workers

// Draws what the document is now on a worker; `done` is called while this lives.
template <typename Work, typename Done>
void EditorWindowController::onWorker(Work work, Done done)
{
    canvas().interaction().commitText();
    whenDone(runInBackground([finished = FinishedImage(*m_document), work] { return work(finished); }), this,
             done);
}

void EditorWindowController::withTemporaryFile(const std::function<void(const QString &)> &use)
{
    onWorker(
        [name = fileStem(m_view->windowTitle())](const FinishedImage &finished) -> std::optional<QString> {
            return ImageFiles::temporaryPNG(finished.exported(), name);
        },
        [this, use](const std::optional<QString> &path) {
            if (path)
                use(*path);
            else
                showError({Error::Kind::Failed, "The picture could not be written to a temporary file.", {}});
        });
}

void EditorWindowController::copyImage()
{
    onWorker(
        [](const FinishedImage &finished) {
            return ImageFiles::encode(finished.exported(), ImageFiles::Type::Png);
        },
        [this](const QByteArray &png) {
            m_ports.pasteboard.setFlavors({{"image/png", png}});
            m_ports.notices.post("Image copied to clipboard", doneSymbol);
        });
}

void EditorWindowController::copyFile()
{
    withTemporaryFile([this](const QString &path) {
        m_ports.pasteboard.setFile(QUrl::fromLocalFile(path));
        m_ports.notices.post("Image file copied to clipboard", doneSymbol);
    });
}

void EditorWindowController::pin()
{
    onWorker([](const FinishedImage &finished) { return finished.exported(); },
             [this](const QImage &image) { m_ports.pins.pin(image); });
}

// MARK: Saving

void EditorWindowController::save()
{
    canvas().interaction().commitText();
    if (m_document->saveHandler) {
        m_document->saveHandler(*m_document);
        m_ports.notices.post("Step updated in your guide", "list.number");
        return;
    }
    if (m_document->fileURL().isEmpty())
        return saveAs();
    if (m_isSaving) {
        m_saveAgain = true;
        return;
    }
    m_isSaving = true;
    const QString path = m_document->fileURL().toLocalFile();
    std::optional<FileHistory> history;
    if (isInLibrary())
        history.emplace(m_ports.library, path);
    const auto saved =
        runInBackground([finished = FinishedImage(*m_document), path, history, now = m_ports.clock.now()] {
            return writeAll(finished, path, history, now);
        });
    // The Library outlives the window: a save that is under way ends in order although its window has been
    // closed.
    Library *library = &m_ports.library;
    NoticeBoard *notices = &m_ports.notices;
    whenDone(saved, library, [self = QPointer(this), library, notices, path](const Result<void> &result) {
        if (result) {
            library->postChanged();
            notices->post("Saved " + QFileInfo(path).fileName(), doneSymbol);
        } else if (!self) {
            Log::error("Saving failed after the window was closed", result.error());
            notices->post(result.error().message, "exclamationmark.triangle.fill");
        }
        if (self)
            self->finishSave(result);
    });
}

void EditorWindowController::finishSave(const Result<void> &result)
{
    m_isSaving = false;
    if (!result) {
        m_saveAgain = false;
        showAlert(result.error());
    }
    if (std::exchange(m_saveAgain, false))
        return save();
    Q_EMIT savingEnded();
}

void EditorWindowController::saveAs()
{
    canvas().interaction().commitText();
    const QString path = m_document->fileURL().toLocalFile();
    const QString stem = path.isEmpty() ? QStringLiteral("Capture") : QFileInfo(path).completeBaseName();
    auto *dialog = new QFileDialog(m_view.get(), "Save As");
    dialog->setObjectName("saveAs");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilters({"PNG image (*.png)", "JPEG image (*.jpg *.jpeg)", "HEIC image (*.heic)"});
    dialog->setDefaultSuffix("png");
    dialog->setDirectory(path.isEmpty() ? m_ports.settings.saveFolder() : QFileInfo(path).path());
    dialog->selectFile(stem + ".png");
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString &filter) {
        dialog->setDefaultSuffix(filter.startsWith("JPEG")   ? "jpg"
                                 : filter.startsWith("HEIC") ? "heic"
                                                             : "png");
    });
    connect(dialog, &QFileDialog::fileSelected, this, &EditorWindowController::saveCopy);
    dialog->open();
}

void EditorWindowController::saveCopy(const QString &path)
{
    onWorker([path](const FinishedImage &finished) { return ImageFiles::write(finished.exported(), path); },
             [this, path](const Result<void> &written) {
                 if (!written)
                     return showAlert(written.error());
                 if (standardized(QFileInfo(path).path()) == standardized(m_ports.settings.saveFolder()))
                     m_ports.library.postChanged();
                 m_ports.notices.post("Saved " + QFileInfo(path).fileName(), doneSymbol);
             });
}

// MARK: Sharing

// The desktop has no picker of programs to share with; these are the ways it has.
void EditorWindowController::share()
{
    withTemporaryFile([this](const QString &path) {
        auto *menu = new QMenu(m_view.get());
        menu->setObjectName("shareMenu");
        menu->setAttribute(Qt::WA_DeleteOnClose);
        const QUrl file = QUrl::fromLocalFile(path);
        const auto report = [this](const Result<void> &result) {
            if (!result)
                showError(result.error());
        };
        menu->addAction(symbolIcon("doc.on.doc"), "Copy File", this, [this, file] {
            m_ports.pasteboard.setFile(file);
            m_ports.notices.post("Image file copied to clipboard", doneSymbol);
        });
        menu->addAction(symbolIcon("paperplane"), "Send by Email…", this, [this, file, report] {
            QUrl mail("mailto:");
            QUrlQuery query;
            query.addQueryItem("subject", m_view->windowTitle());
            query.addQueryItem("attach", file.toLocalFile());
            mail.setQuery(query);
            report(m_ports.workspace.open(mail));
        });
        menu->addAction(symbolIcon("photo"), "Open in Another Program", this,
                        [this, file, report] { report(m_ports.workspace.open(file)); });
        menu->addAction(symbolIcon("folder"), "Show in File Manager", this,
                        [this, path, report] { report(m_ports.workspace.reveal(path)); });
        const QSize size = menu->sizeHint();
        menu->popup(canvas().mapToGlobal(QPoint(canvas().width() - size.width() - 8, 8)));
    });
}

void EditorWindowController::prepareDrag()
{
    m_dragFile.clear();
    m_wantsDrag = false;
    withTemporaryFile([this](const QString &path) {
        m_dragFile = path;
        if (m_wantsDrag)
            startDrag();
    });
}

void EditorWindowController::startDrag()
{
    m_wantsDrag = true;
    if (m_dragFile.isEmpty() || !(QGuiApplication::mouseButtons() & Qt::LeftButton))
        return;
    m_wantsDrag = false;
    auto *data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(m_dragFile)});
    auto *drag = new QDrag(m_view.get());
    drag->setMimeData(data);
    const QImage preview = m_document->base().scaled(160, 160, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    drag->setPixmap(QPixmap::fromImage(preview));
    drag->exec(Qt::CopyAction); // the toolkit knows no other way of dragging
}

void EditorWindowController::upload()
{
    m_document->setBusy(true);
    onWorker([](const FinishedImage &finished) { return finished.exported(); },
             [this](const QImage &image) {
                 whenDone(m_ports.uploader.imgur(image), this, [this](const Result<QUrl> &link) {
                     m_document->setBusy(false);
                     if (!link)
                         return showError(link.error());
                     m_ports.pasteboard.setText(link->toString());
                     const QString host =
                         link->host().isEmpty() ? QStringLiteral("i.imgur.com") : link->host();
                     m_ports.notices.post("Link copied: " + host, "link");
                 });
             });
}

// MARK: Recognition

void EditorWindowController::grabText()
{
    m_document->setBusy(true);
    onWorker([](const FinishedImage &finished) { return finished.flattened(); },
             [this](const QImage &image) {
                 whenDone(m_ports.recognizer.text(image), this, [this](const Result<QString> &text) {
                     m_document->setBusy(false);
                     copyRecognized(text.value_or(QString()), false);
                 });
             });
}

void EditorWindowController::copyTextIn(const QRect &area)
{
    onWorker([area](const FinishedImage &finished) { return finished.flattened().copy(area); },
             [this](const QImage &image) {
                 whenDone(m_ports.recognizer.text(image), this, [this](const Result<QString> &text) {
                     copyRecognized(text.value_or(QString()), true);
                 });
             });
}

void EditorWindowController::copyRecognized(const QString &text, bool fromArea)
{
    if (text.isEmpty()) {
        m_ports.notices.post(fromArea ? "No text found in that area" : "No text found",
                             "text.magnifyingglass");
        return;
    }
    m_ports.pasteboard.setText(text);
    // The whole picture always speaks of lines, a part of it counts.
    const bool single = fromArea && !text.contains('\n');
    const QString words =
        single ? QStringLiteral("Copied %1 line of text") : QStringLiteral("Copied %1 lines of text");
    m_ports.notices.post(words.arg(nonEmptyLines(text)), "text.viewfinder");
}

void EditorWindowController::redact(Redaction::Mode mode)
{
    Redaction::redact(*m_document, m_ports.recognizer, mode, [this, mode](int count) {
        const Notice notice = Redaction::notice(mode, count);
        m_ports.notices.post(notice.text, notice.symbol);
    });
}

// MARK: AI

void EditorWindowController::runAI(ClaudeClient::Action action)
{
    m_document->setBusy(true);
    onWorker([](const FinishedImage &finished) { return finished.flattened(); },
             [this, action](const QImage &image) {
                 whenDone(m_ports.claude.run(action, image), this,
                          [this, action](const Result<QString> &reply) {
                              m_document->setBusy(false);
                              if (reply)
                                  finishAI(action, *reply);
                              else
                                  showError(reply.error());
                          });
             });
}

void EditorWindowController::finishAI(ClaudeClient::Action action, const QString &reply)
{
    if (action != ClaudeClient::Action::Name) {
        m_document->setAIResult(AIResult{QUuid::createUuid(), ClaudeClient::title(action), reply});
        return;
    }
    if (isInLibrary()) {
        if (const auto renamed = m_ports.library.rename(m_document->fileURL().toLocalFile(), reply)) {
            m_document->setFileURL(QUrl::fromLocalFile(*renamed));
            m_ports.notices.post(
                QStringLiteral("Renamed to “%1”").arg(QFileInfo(*renamed).completeBaseName()), "sparkles");
            return;
        }
    }
    m_document->setAIResult(AIResult{QUuid::createUuid(), QStringLiteral("Suggested Name"), reply});
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

// A failed save: the edit stays open and unsaved.
void EditorWindowController::showAlert(const Error &error)
{
    if (!error.isCancelled())
        bringToFront();
    EditorSheets::showAlert(*m_view, error);
}

void EditorWindowController::showError(const Error &error)
{
    EditorSheets::showError(*m_view, error, m_ports.openSettings);
}
