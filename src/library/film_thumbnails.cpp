#include "library/film_thumbnails.h"

#include "document/image_files.h"
#include "library/library.h"
#include "platform/movies.h"

namespace {
constexpr double kMoment = 0.2; // seconds
}

std::optional<QImage> FilmThumbnails::cached(Movies &movies, const QString &path, int maxPixels)
{
    return ImageFiles::cachedThumbnail(path, maxPixels, [&](int edge) -> std::optional<QImage> {
        const auto frames = movies.frames(path, {edge, edge});
        if (!frames)
            return std::nullopt;
        auto image = (*frames)->at(kMoment);
        return image ? std::optional(*std::move(image)) : std::nullopt;
    });
}

std::optional<QImage> FilmThumbnails::ofAny(Movies &movies, const QString &path, int maxPixels)
{
    return Library::isVideo(path) ? cached(movies, path, maxPixels)
                                  : ImageFiles::cachedThumbnail(path, maxPixels);
}

QString FilmThumbnails::durationText(double seconds)
{
    const int whole = qRound(seconds);
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}
