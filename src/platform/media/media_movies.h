#pragma once

#include "platform/movies.h"

// Films by the FFmpeg libraries.
class MediaMovies : public Movies {
public:
    Result<MovieInfo> info(const QString &path) override;
    Result<std::unique_ptr<MovieFrames>> frames(const QString &path, QSize bounds) override;
    Result<std::unique_ptr<MovieWriter>> record(const QString &path, const MovieFormat &format,
                                                std::function<void(const Error &)> failed) override;
    Result<void> finish(const QString &recorded, const QString &target,
                        std::optional<std::chrono::microseconds> end) override;
    Result<void> exportMp4(const QString &path, const QString &target, double from, double to,
                           WorkProgress &progress) override;
    Result<void> voice(const QString &path,
                       const std::function<bool(std::span<const qint16>)> &receive) override;
    Result<void> sound(const QString &path, double from,
                       const std::function<bool(std::span<const float>)> &receive) override;
};
