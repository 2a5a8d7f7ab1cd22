#include "platform/session/media_loader.h"

#include "platform/cameras.h"
#include "platform/movies.h"
#include "platform/screen_casts.h"
#include "platform/session/lazy_part.h"
#include "platform/sound_output.h"
#include "platform/sound_sources.h"
#include "platform/speech_engine.h"

namespace {

class LazyMovies : public Movies {
public:
    Result<MovieInfo> info(const QString &path) override
    {
        const auto movies = m_lazy.get();
        return movies ? (*movies)->info(path) : std::unexpected(movies.error());
    }
    Result<std::unique_ptr<MovieFrames>> frames(const QString &path, QSize bounds) override
    {
        const auto movies = m_lazy.get();
        if (!movies)
            return std::unexpected(movies.error());
        return (*movies)->frames(path, bounds);
    }
    Result<std::unique_ptr<MovieWriter>> record(const QString &path, const MovieFormat &format,
                                                std::function<void(const Error &)> failed) override
    {
        const auto movies = m_lazy.get();
        if (!movies)
            return std::unexpected(movies.error());
        return (*movies)->record(path, format, std::move(failed));
    }
    Result<void> finish(const QString &recorded, const QString &target,
                        std::optional<std::chrono::microseconds> end) override
    {
        const auto movies = m_lazy.get();
        return movies ? (*movies)->finish(recorded, target, end) : std::unexpected(movies.error());
    }
    Result<void> exportMp4(const QString &path, const QString &target, double from, double to,
                           WorkProgress &progress) override
    {
        const auto movies = m_lazy.get();
        return movies ? (*movies)->exportMp4(path, target, from, to, progress)
                      : std::unexpected(movies.error());
    }
    Result<void> voice(const QString &path,
                       const std::function<bool(std::span<const qint16>)> &receive) override
    {
        const auto movies = m_lazy.get();
        return movies ? (*movies)->voice(path, receive) : std::unexpected(movies.error());
    }
    Result<void> sound(const QString &path, double from,
                       const std::function<bool(std::span<const float>)> &receive) override
    {
        const auto movies = m_lazy.get();
        return movies ? (*movies)->sound(path, from, receive) : std::unexpected(movies.error());
    }

private:
    LazyPart<Movies> m_lazy{"platform_media", "lumenpost_movies"};
};

class LazySoundSources : public SoundSources {
public:
    Result<std::unique_ptr<SoundStream>> open(SoundSource source,
                                              std::function<void(const SoundBlock &)> receive) override
    {
        const auto sources = m_lazy.get();
        if (!sources)
            return std::unexpected(sources.error());
        return (*sources)->open(source, std::move(receive));
    }

private:
    LazyPart<SoundSources> m_lazy{"platform_media", "lumenpost_sound_sources"};
};

class LazySoundOutput : public SoundOutput {
public:
    Result<std::unique_ptr<SoundPlayback>> play(std::function<void(std::span<float>)> fill) override
    {
        const auto output = m_lazy.get();
        if (!output)
            return std::unexpected(output.error());
        return (*output)->play(std::move(fill));
    }

private:
    LazyPart<SoundOutput> m_lazy{"platform_media", "lumenpost_sound_output"};
};

class LazyScreenCasts : public ScreenCasts {
public:
    Result<std::unique_ptr<ScreenCast>> open(const CastSource &source, int framesPerSecond,
                                             CastReceiver receiver) override
    {
        const auto casts = m_lazy.get();
        if (!casts)
            return std::unexpected(casts.error());
        return (*casts)->open(source, framesPerSecond, std::move(receiver));
    }

private:
    LazyPart<ScreenCasts> m_lazy{"platform_media", "lumenpost_screen_casts"};
};

class LazyCameras : public Cameras {
public:
    Result<std::unique_ptr<CameraStream>> open(int side, std::function<void(const QImage &)> picture,
                                               std::function<void()> lost) override
    {
        const auto cameras = m_lazy.get();
        if (!cameras)
            return std::unexpected(cameras.error());
        return (*cameras)->open(side, std::move(picture), std::move(lost));
    }

private:
    LazyPart<Cameras> m_lazy{"platform_camera", "lumenpost_cameras"};
};

class LazySpeechEngine : public SpeechEngine {
public:
    QStringList languages() const override
    {
        const auto engine = m_lazy.get();
        return engine ? (*engine)->languages() : QStringList();
    }
    Result<std::unique_ptr<SpeechListener>>
    listen(std::function<void(const QList<SpokenWord> &)> heard) override
    {
        const auto engine = m_lazy.get();
        if (!engine)
            return std::unexpected(engine.error());
        return (*engine)->listen(std::move(heard));
    }

private:
    mutable LazyPart<SpeechEngine> m_lazy{"platform_speech", "lumenpost_speech_engine"};
};

} // namespace

std::unique_ptr<SpeechEngine> makeSpeechEngine()
{
    return std::make_unique<LazySpeechEngine>();
}

std::unique_ptr<Cameras> makeCameras()
{
    return std::make_unique<LazyCameras>();
}

std::unique_ptr<Movies> makeMovies()
{
    return std::make_unique<LazyMovies>();
}

std::unique_ptr<SoundSources> makeSoundSources()
{
    return std::make_unique<LazySoundSources>();
}

std::unique_ptr<SoundOutput> makeSoundOutput()
{
    return std::make_unique<LazySoundOutput>();
}

std::unique_ptr<ScreenCasts> makeScreenCasts()
{
    return std::make_unique<LazyScreenCasts>();
}
