#pragma once

#include <QImage>
#include <QString>
#include <optional>

class Movies;

// Pictures that stand for films. Both block: for worker threads.
namespace FilmThumbnails {

// What the film shows a moment after its beginning, which tends to be black or a countdown; from the cache of
// thumbnails, or made and stored there.
std::optional<QImage> cached(Movies &movies, const QString &path, int maxPixels);

// The same for any file of the Library, a picture or a film.
std::optional<QImage> ofAny(Movies &movies, const QString &path, int maxPixels);

// "1:05", in minutes and seconds.
QString durationText(double seconds);

} // namespace FilmThumbnails
