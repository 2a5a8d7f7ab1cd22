// Anything that is called a film must be played, or be refused with a sentence.
#include "platform/movies.h"
#include "platform/session/media_loader.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const quint8 *data, size_t size)
{
    static const QTemporaryDir folder;
    static const std::unique_ptr<Movies> movies = makeMovies();
    const QString path = folder.filePath("film.mov");
    QFile film(path);
    if (!film.open(QIODevice::WriteOnly) ||
        film.write(reinterpret_cast<const char *>(data), qint64(size)) < 0)
        return 0;
    film.close();
    const auto frames = movies->frames(path, QSize(64, 64));
    if (frames) {
        for (const double time : {0.0, (*frames)->info().duration / 2, (*frames)->info().duration})
            static_cast<void>((*frames)->at(time));
    } else if (frames.error().message.isEmpty()) {
        abort();
    }
    qint64 heard = 0;
    static_cast<void>(movies->voice(path, [&heard](std::span<const qint16> samples) {
        heard += qint64(samples.size());
        return heard < 16000 * 10;
    }));
    // Parts of ordinary length: a broken film may tell of days.
    if (frames && (*frames)->info().duration < 10) {
        WorkProgress progress;
        const QString part = folder.filePath("part.mp4");
        static_cast<void>(movies->exportMp4(path, part, (*frames)->info().duration / 3,
                                            (*frames)->info().duration, progress));
    }
    // What broke off may hold anything as well.
    const QString target = folder.filePath("finished.mov");
    static_cast<void>(movies->finish(path, target, std::nullopt));
    QFile::remove(target);
    return 0;
}
