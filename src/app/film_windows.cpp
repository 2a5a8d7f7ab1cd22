#include "app/film_windows.h"

#include "app/singleton_windows.h"
#include "library/library.h"
#include "recording/film_sound.h"
#include "recording/ui/video_editor_view.h"
#include "recording/ui/video_editor_window_controller.h"
#include "settings/app_settings.h"

#include <QDir>

namespace {

// Each open film holds a thread, and another while its small pictures are made, its sound is recognised or it
// is exported.
constexpr int kThreads = 64;

QString standardized(const QString &path)
{
    return QDir::cleanPath(QDir(path).absolutePath());
}

} // namespace

std::function<std::shared_ptr<void>(const QString &, double)> playSound(Movies &movies, SoundOutput &output)
{
    return [&movies, &output](const QString &film, double from) -> std::shared_ptr<void> {
        return FilmSound::start(movies, output, film, from);
    };
}

FilmWindows::FilmWindows(const Parts &parts, QObject *parent)
    : QObject(parent), m_parts(parts), m_exports({parts.movies, parts.notices, parts.pending, m_threads})
{
    m_threads.setMaxThreadCount(kThreads);
    connect(&m_parts.library, &Library::renamed, this,
            [this](const QString &oldPath, const QString &newPath) {
                for (const auto &window : m_windows) {
                    if (standardized(window->path()) == standardized(oldPath))
                        window->setPath(newPath);
                }
            });
}

FilmWindows::~FilmWindows() = default;

void FilmWindows::open(const QString &path)
{
    const auto found = std::ranges::find_if(
        m_windows, [&](const auto &window) { return standardized(window->path()) == standardized(path); });
    if (found != m_windows.end())
        return bringToFront(&(*found)->window());
    auto &window = *m_windows.emplace_back(std::make_unique<VideoEditorWindowController>(
        path, VideoEditorWindowController::Ports{
                  .movies = m_parts.movies,
                  .output = m_parts.output,
                  .speech = m_parts.speech,
                  .externalSpeech = [this] { return ExternalSpeech::choiceIn(m_parts.prefs.defaults()); },
                  .exports = m_exports,
                  .pasteboard = m_parts.pasteboard,
                  .workspace = m_parts.workspace,
                  .notices = m_parts.notices,
                  .pending = m_parts.pending,
                  .threads = m_threads,
              }));
    window.onClose = [this](VideoEditorWindowController *closed) { remove(closed); };
    window.show();
    bringToFront(&window.window());
}

void FilmWindows::remove(VideoEditorWindowController *window)
{
    const auto found =
        std::ranges::find_if(m_windows, [&](const auto &candidate) { return candidate.get() == window; });
    if (found == m_windows.end())
        return;
    found->release()->deleteLater();
    m_windows.erase(found);
}
