#pragma once

#include "base/result.h"
#include "platform/movies.h"

#include <QString>
#include <optional>

// A part of a film, in seconds from its beginning; without an end, up to the film's.
struct MoviePart {
    double from = 0;
    std::optional<double> to;
};

// Films made of films. Everything blocks and is for worker threads; the target is only replaced by a whole
// file.
namespace MovieExport {

// The part as the film has it. Error::Kind::Invalid when nothing of the film lies in it.
Result<std::pair<double, double>> boundsOf(const MovieInfo &info, const MoviePart &part);

Result<void> mp4(Movies &movies, const QString &movie, const QString &target, const MoviePart &part,
                 WorkProgress &progress);

} // namespace MovieExport

// An animated GIF of a part of a film: twelve frames a second of 960 pixels at most, for a minute at most.
namespace GifExport {

constexpr int kRate = 12;
constexpr double kLongest = 60; // seconds
constexpr int kLongestSide = 960;

// For a part of so many seconds.
int frameCount(double length);
// What frame `index` shows, in seconds from the beginning of the part.
double timeOf(int index);
// How long it is shown: hundredths of a second, whose sum keeps the clock.
int delayOf(int index);

Result<void> run(Movies &movies, const QString &movie, const QString &target, const MoviePart &part,
                 WorkProgress &progress);

} // namespace GifExport
