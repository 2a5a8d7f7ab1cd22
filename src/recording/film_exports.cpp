#include "recording/film_exports.h"

#include "base/async.h"
#include "base/free_name.h"
#include "base/log.h"
#include "base/notice.h"
#include "base/pending_work.h"
#include "recording/texts.h"

#include <QFileInfo>
#include <QThreadPool>

namespace {

constexpr int kTick = 100; // milliseconds
// Before that much, how long it takes is a guess.
constexpr double kKnown = 0.02;
constexpr qint64 kKnownAfter = 700; // milliseconds

Result<void> make(FilmExport::Kind kind, Movies &movies, const QString &movie, const QString &target,
                  const MoviePart &part, WorkProgress &progress)
{
    if (QFileInfo(target).exists() &&
        QFileInfo(target).canonicalFilePath() == QFileInfo(movie).canonicalFilePath())
        return fail(Error::Kind::Invalid,
                    RecordingTexts::tr("The film itself can't be the file that is written."));
    switch (kind) {
    case FilmExport::Kind::Mp4:
        return MovieExport::mp4(movies, movie, target, part, progress);
    case FilmExport::Kind::Gif:
        return GifExport::run(movies, movie, target, part, progress);
    }
    Q_UNREACHABLE();
}

QString failureNotice(FilmExport::Kind kind, const QString &reason)
{
    const QString failed = RecordingTexts::tr("GIF export failed");
    if (kind != FilmExport::Kind::Gif || reason == failed)
        return reason;
    return RecordingTexts::tr("GIF export failed: %1").arg(reason);
}

} // namespace

FilmExport::FilmExport(Kind kind) : m_kind(kind)
{
    m_since.start();
    connect(&m_ticks, &QTimer::timeout, this, &FilmExport::progressed);
    m_ticks.start(kTick);
}

std::optional<double> FilmExport::left() const
{
    const double share = done();
    if (share < kKnown || m_since.elapsed() < kKnownAfter)
        return std::nullopt;
    return double(m_since.elapsed()) / 1000 / share * (1 - share);
}

FilmExports::FilmExports(const Parts &parts, QObject *parent) : QObject(parent), m_parts(parts) {}

FilmExports::~FilmExports()
{
    for (FilmExport *running : std::as_const(m_underWay)) {
        running->cancel();
        delete running;
    }
}

QString FilmExports::suggestedTarget(const QString &movie, FilmExport::Kind kind)
{
    const QFileInfo film(movie);
    const QString extension = kind == FilmExport::Kind::Gif ? QStringLiteral("gif") : QStringLiteral("mp4");
    const QString plain =
        film.path() + QLatin1Char('/') + film.completeBaseName() + QLatin1Char('.') + extension;
    return plain == movie ? freeFilePath(film.path(), film.completeBaseName(), extension) : plain;
}

FilmExport *FilmExports::start(FilmExport::Kind kind, const QString &movie, const QString &target,
                               const MoviePart &part, QObject *asker)
{
    auto *running = new FilmExport(kind);
    m_underWay.append(running);
    const auto work = QtConcurrent::run(&m_parts.threads, [kind, &movies = m_parts.movies, movie, target,
                                                           part, progress = running->m_progress] {
        return make(kind, movies, movie, target, part, *progress);
    });
    m_parts.pending.keep(QStringLiteral("exporting ") + QFileInfo(target).fileName(), work);
    whenDone(work, this, [this, running, target, asker = QPointer(asker)](const Result<void> &result) {
        m_underWay.removeOne(running);
        running->m_ticks.stop();
        const QString name = QFileInfo(target).fileName();
        if (result) {
            m_parts.notices.post(RecordingTexts::tr("Exported %1").arg(name),
                                 QStringLiteral("checkmark.circle.fill"));
        } else if (!result.error().isCancelled()) {
            Log::error(QStringLiteral("Export failed"), result.error());
            if (!asker || running->kind() == FilmExport::Kind::Gif)
                m_parts.notices.post(failureNotice(running->kind(), result.error().message),
                                     QStringLiteral("exclamationmark.triangle.fill"));
        }
        Q_EMIT running->finished(result);
        running->deleteLater();
    });
    return running;
}
