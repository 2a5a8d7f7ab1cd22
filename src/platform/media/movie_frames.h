#pragma once

#include "platform/movies.h"

Result<std::unique_ptr<MovieFrames>> openMovieFrames(const QString &path, QSize bounds);
