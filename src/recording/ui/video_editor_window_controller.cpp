#include "recording/ui/video_editor_window_controller.h"

#include "base/log.h"
#include "base/notice.h"
#include "platform/pasteboard.h"
#include "platform/workspace.h"
#include "recording/ui/film_canvas.h"
#include "recording/ui/film_timeline.h"
#include "recording/ui/texts.h"
#include "recording/ui/video_editor_view.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>

namespace {

constexpr QSize kFirstSize(920, 660);
const QString kWarningSymbol = QStringLiteral("exclamationmark.triangle.fill");

} // namespace

VideoEditorWindowController::VideoEditorWindowController(const QString &path, const Ports &ports)
    : m_ports(ports),
      m_view(std::make_unique<VideoEditorView>(m_model)),
      m_player({ports.movies, ports.output, ports.threads}),
      m_strip(ports.movies, ports.threads)
{
    setPath(path);
    joinPlayer();
    joinTimeline();
    joinActions();
    m_player.open(path);
}

VideoEditorWindowController::~VideoEditorWindowController() = default;

void VideoEditorWindowController::setPath(const QString &path)
{
    m_path = path;
    m_player.setPath(path);
    m_view->setWindowTitle(QFileInfo(path).completeBaseName());
    m_view->setWindowFilePath(path);
    m_view->canvas().setFile(QUrl::fromLocalFile(path));
}

void VideoEditorWindowController::show()
{
    const QRect room = m_view->screen()->availableGeometry();
    m_view->resize(kFirstSize.boundedTo(room.size()));
    m_view->move(room.center() - m_view->rect().center());
    m_view->show();
}

void VideoEditorWindowController::joinPlayer()
{
    connect(&m_player, &MoviePlayer::opened, this, &VideoEditorWindowController::opened);
    connect(&m_player, &MoviePlayer::failed, this, [this](const Error &error) {
        Log::error(QStringLiteral("A film can't be played"), error);
        m_model.setDuration(0);
        m_view->showUnplayable(error.message);
    });
    connect(&m_player, &MoviePlayer::changed, this,
            [this] { m_view->showPicture(m_player.picture(), m_player.position()); });
    connect(&m_player, &MoviePlayer::playingChanged, m_view.get(), &VideoEditorView::showPlaying);
    connect(&m_player, &MoviePlayer::stepped, this, [this](double position) {
        if (const auto edge = std::exchange(m_steppedEdge, std::nullopt))
            m_model.moveEdge(*edge, position);
    });
    connect(&m_view->canvas(), &FilmCanvas::pixelsChanged, this,
            [this] { m_player.setBounds(m_view->canvas().pixels()); });
    connect(&m_strip, &FilmStrip::changed, this,
            [this] { m_view->timeline().setPictures(m_strip.pictures()); });
    connect(m_view.get(), &VideoEditorView::playToggled, this, &VideoEditorWindowController::togglePlaying);
}

void VideoEditorWindowController::opened()
{
    if (const auto &info = m_player.info(); info && !m_model.isReady())
        m_model.setDuration(info->duration);
    makeStrip();
}

void VideoEditorWindowController::makeStrip()
{
    const auto &info = m_player.info();
    if (!info || !m_model.isReady())
        return;
    const FilmTimeline &timeline = m_view->timeline();
    m_strip.make(m_path, timeline.pictureCount(info->size), timeline.pictureSize());
}

void VideoEditorWindowController::joinTimeline()
{
    using Edge = VideoEditorModel::Edge;
    FilmTimeline &timeline = m_view->timeline();
    connect(&timeline, &FilmTimeline::picturesWanted, this, &VideoEditorWindowController::makeStrip);
    connect(&timeline, &FilmTimeline::seeked, &m_player, &MoviePlayer::seek);
    connect(&timeline, &FilmTimeline::stepped, this, [this](int pictures) {
        m_steppedEdge.reset();
        m_player.step(m_player.position(), pictures);
    });
    connect(&timeline, &FilmTimeline::edgeMoved, this, &VideoEditorWindowController::moveEdge);
    connect(m_view.get(), &VideoEditorView::edgeTyped, this, &VideoEditorWindowController::moveEdge);
    connect(&timeline, &FilmTimeline::edgeStepped, this, [this](Edge edge, int pictures) {
        const VideoEditorModel::Part &part = m_model.shownPart();
        m_steppedEdge = edge;
        m_player.step(edge == Edge::From ? part.from : part.to, pictures);
    });
}

// The picture at the edge is what the user wants to see meanwhile.
void VideoEditorWindowController::moveEdge(VideoEditorModel::Edge edge, double seconds)
{
    m_steppedEdge.reset();
    m_model.moveEdge(edge, seconds);
    const VideoEditorModel::Part &part = m_model.shownPart();
    m_player.seek(edge == VideoEditorModel::Edge::From ? part.from : part.to);
}

void VideoEditorWindowController::joinActions()
{
    VideoEditorView *view = m_view.get();
    connect(view, &VideoEditorView::trimClicked, this, &VideoEditorWindowController::trim);
    connect(view, &VideoEditorView::trimCancelled, this, [this] {
        m_player.pause();
        m_model.cancelTrim();
    });
    connect(view, &VideoEditorView::trimConfirmed, this, [this] {
        m_model.confirmTrim();
        m_player.seek(m_model.part().from);
    });
    connect(view, &VideoEditorView::revealClicked, this, &VideoEditorWindowController::reveal);
    connect(view, &VideoEditorView::copyClicked, this, &VideoEditorWindowController::copy);
    connect(view, &VideoEditorView::captionsClicked, this, &VideoEditorWindowController::showCaptions);
    connect(view, &VideoEditorView::gifClicked, this, &VideoEditorWindowController::exportGIF);
    connect(view, &VideoEditorView::mp4Clicked, this, &VideoEditorWindowController::exportMP4);
    connect(view, &VideoEditorView::cancelClicked, this, [this] {
        if (m_export)
            m_export->cancel();
    });
    connect(view, &VideoEditorView::closed, this, [this] {
        m_player.pause();
        if (onClose)
            onClose(this);
    });
}

void VideoEditorWindowController::togglePlaying()
{
    if (m_player.isPlaying())
        return m_player.pause();
    const VideoEditorModel::Part &part = m_model.shownPart();
    // While a part is chosen it is looked at over and over.
    m_player.play(part.from, part.to,
                  m_model.isTrimming() ? MoviePlayer::Way::Looped : MoviePlayer::Way::Once);
}

void VideoEditorWindowController::trim()
{
    m_player.pause();
    m_model.beginTrim();
}

void VideoEditorWindowController::askAndExport(FilmExport::Kind kind)
{
    if (!m_model.isReady() || !m_model.busy().isEmpty())
        return;
    m_player.pause();
    const bool isGif = kind == FilmExport::Kind::Gif;
    auto *dialog = new QFileDialog(
        m_view.get(), isGif ? RecordingUiTexts::tr("Export GIF") : RecordingUiTexts::tr("Export MP4"),
        FilmExports::suggestedTarget(m_path, kind),
        isGif ? RecordingUiTexts::tr("Animated GIFs") + QStringLiteral(" (*.gif)")
              : RecordingUiTexts::tr("MPEG-4 films") + QStringLiteral(" (*.mp4)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(isGif ? QStringLiteral("gif") : QStringLiteral("mp4"));
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, kind](const QString &target) { runExport(kind, target); });
    dialog->open();
}

void VideoEditorWindowController::runExport(FilmExport::Kind kind, const QString &target)
{
    if (!m_model.isReady() || !m_model.busy().isEmpty())
        return;
    m_player.pause();
    const VideoEditorModel::Part &part = m_model.part();
    m_model.setBusy(kind == FilmExport::Kind::Gif ? RecordingUiTexts::tr("Making GIF…")
                                                  : RecordingUiTexts::tr("Exporting MP4…"));
    m_view->showProgress(0, std::nullopt);
    m_export = m_ports.exports.start(kind, m_path, target, MoviePart{part.from, part.to}, this);
    connect(m_export, &FilmExport::progressed, this,
            [this] { m_view->showProgress(m_export->done(), m_export->left()); });
    connect(m_export, &FilmExport::finished, this, &VideoEditorWindowController::exported);
}

void VideoEditorWindowController::exported(const Result<void> &result)
{
    m_model.setBusy({});
    if (result || result.error().isCancelled() || m_export->kind() == FilmExport::Kind::Gif)
        return; // a notice tells of it, or there is nothing to tell
    Sheet::alert(*m_view, result.error());
}

void VideoEditorWindowController::showCaptions()
{
    if (!m_model.isReady() || !m_model.busy().isEmpty())
        return;
    m_player.pause();
    auto *sheet = new CaptionsSheet(m_view.get(),
                                    {m_ports.movies, m_ports.speech, m_ports.externalSpeech(),
                                     m_ports.pasteboard, m_ports.notices, m_ports.pending, m_ports.threads},
                                    m_path, m_captions,
                                    m_model.isTrimmed() ? std::optional(m_model.part()) : std::nullopt);
    connect(sheet, &CaptionsSheet::heard, this,
            [this](double from, double to) { m_player.playFrom(from, std::min(to, m_model.duration())); });
    connect(sheet, &Sheet::closed, &m_player, &MoviePlayer::pause);
    sheet->open();
}

void VideoEditorWindowController::copy()
{
    if (!QFileInfo::exists(m_path))
        return m_ports.notices.post(RecordingUiTexts::tr("The film is no longer there"), kWarningSymbol);
    m_ports.pasteboard.setFile(QUrl::fromLocalFile(m_path));
    m_ports.notices.post(RecordingUiTexts::tr("Copied the film"), QStringLiteral("doc.on.doc"));
}

void VideoEditorWindowController::reveal()
{
    if (const auto shown = m_ports.workspace.reveal(m_path); !shown)
        m_ports.notices.post(shown.error().message, kWarningSymbol);
}
