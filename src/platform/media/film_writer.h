#pragma once

#include "platform/movies.h"

// H.264 (BT.709, limited range, 4:2:0) with AAC beside it, encoded on a thread of its own.
Result<std::unique_ptr<MovieWriter>> makeFilmWriter(const QString &path, const MovieFormat &format,
                                                    std::function<void(const Error &)> failed);
