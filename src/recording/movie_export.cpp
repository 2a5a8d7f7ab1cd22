#include "recording/movie_export.h"

#include "base/atomic_file.h"
#include "recording/gif_writer.h"
#include "recording/texts.h"

#include <QFile>
#include <QFileInfo>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace {

// Times are told with some thousandths of a second: 10.05 · 12 is 120.6, and 2 · 12 is 24.
constexpr double kNoise = 1e-9;
constexpr std::size_t kPicturesAhead = 4;

// Pictures that one thread makes and another takes.
class PictureQueue {
public:
    void put(Result<QImage> picture)
    {
        std::unique_lock lock(m_mutex);
        m_room.wait(lock, [this] { return m_isClosed || m_pictures.size() < kPicturesAhead; });
        if (m_isClosed)
            return;
        m_pictures.push_back(std::move(picture));
        m_news.notify_one();
    }
    Result<QImage> take()
    {
        std::unique_lock lock(m_mutex);
        m_news.wait(lock, [this] { return !m_pictures.empty(); });
        Result<QImage> picture = std::move(m_pictures.front());
        m_pictures.pop_front();
        m_room.notify_one();
        return picture;
    }
    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
        m_room.notify_one();
    }
    bool isClosed()
    {
        const std::lock_guard lock(m_mutex);
        return m_isClosed;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_news, m_room;
    std::deque<Result<QImage>> m_pictures;
    bool m_isClosed = false;
};

std::unexpected<Error> gifFailed(const QString &detail)
{
    return fail(RecordingTexts::tr("GIF export failed"), detail);
}

Result<void> writeGif(MovieFrames &frames, double from, int count, const QString &path,
                      WorkProgress &progress)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return gifFailed(file.errorString());
    PictureQueue queue;
    std::thread reader([&] {
        for (int i = 0; i < count && !queue.isClosed(); ++i)
            queue.put(frames.at(from + GifExport::timeOf(i)));
    });
    std::optional<GifWriter> writer;
    std::optional<Error> error;
    for (int i = 0; i < count && !error; ++i) {
        const Result<QImage> picture = queue.take();
        progress.done = double(i) / count;
        if (progress.isCancelled) {
            error = Error{Error::Kind::Cancelled, {}, {}};
        } else if (!picture) {
            continue; // that frame is left out
        } else {
            if (!writer)
                writer.emplace(picture->size(), [&file](const QByteArray &bytes) {
                    return file.write(bytes) == bytes.size();
                });
            if (!writer->add(*picture, GifExport::delayOf(i)))
                error = gifFailed(file.errorString()).error();
        }
    }
    queue.close();
    reader.join();
    if (error)
        return std::unexpected(*error);
    if (!writer)
        return gifFailed(QStringLiteral("no frames"));
    if (!writer->finish() || !file.flush())
        return gifFailed(file.errorString());
    return {};
}

} // namespace

Result<std::pair<double, double>> MovieExport::boundsOf(const MovieInfo &info, const MoviePart &part)
{
    const double from = std::max(part.from, 0.0);
    const double to = std::min(part.to.value_or(info.duration), info.duration);
    if (!(from < to))
        return fail(Error::Kind::Invalid,
                    RecordingTexts::tr("The film has nothing between these times: it is %1 "
                                       "seconds long.")
                        .arg(info.duration, 0, 'f', 2));
    return std::pair(from, to);
}

Result<void> MovieExport::mp4(Movies &movies, const QString &movie, const QString &target,
                              const MoviePart &part, WorkProgress &progress)
{
    const auto info = movies.info(movie);
    if (!info)
        return std::unexpected(info.error());
    const auto bounds = boundsOf(*info, part);
    if (!bounds)
        return std::unexpected(bounds.error());
    return AtomicFile::replace(target, [&](const QString &temporary) {
        return movies.exportMp4(movie, temporary, bounds->first, bounds->second, progress);
    });
}

int GifExport::frameCount(double length)
{
    return std::max(int(std::min(length, kLongest) * kRate + kNoise), 1);
}

double GifExport::timeOf(int index)
{
    return double(index) / kRate;
}

int GifExport::delayOf(int index)
{
    return (index + 1) * 100 / kRate - index * 100 / kRate;
}

Result<void> GifExport::run(Movies &movies, const QString &movie, const QString &target,
                            const MoviePart &part, WorkProgress &progress)
{
    const auto frames = movies.frames(movie, QSize(kLongestSide, kLongestSide));
    if (!frames)
        return std::unexpected(frames.error());
    const auto bounds = MovieExport::boundsOf((*frames)->info(), part);
    if (!bounds)
        return std::unexpected(bounds.error());
    const int count = frameCount(bounds->second - bounds->first);
    const auto written = AtomicFile::replace(target, [&](const QString &temporary) {
        return writeGif(**frames, bounds->first, count, temporary, progress);
    });
    if (written)
        progress.done = 1;
    return written;
}
