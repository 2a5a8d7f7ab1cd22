#include "platform/media/media_movies.h"

#include "platform/media/film_file.h"
#include "platform/media/film_writer.h"
#include "platform/media/movie_frames.h"
#include "platform/media/movie_source.h"
#include "platform/media/mp4_export.h"
#include "platform/media/sound_mixer.h"
#include "platform/sound_output.h"
#include "platform/texts.h"

Result<MovieInfo> MediaMovies::info(const QString &path)
{
    const auto source = MovieSource::open(path, MovieSource::Parts::Pictures);
    if (!source)
        return std::unexpected(source.error());
    return (*source)->info();
}

Result<std::unique_ptr<MovieFrames>> MediaMovies::frames(const QString &path, QSize bounds)
{
    return openMovieFrames(path, bounds);
}

Result<std::unique_ptr<MovieWriter>> MediaMovies::record(const QString &path, const MovieFormat &format,
                                                         std::function<void(const Error &)> failed)
{
    return makeFilmWriter(path, format, std::move(failed));
}

Result<void> MediaMovies::finish(const QString &recorded, const QString &target,
                                 std::optional<std::chrono::microseconds> end)
{
    return finishFilm(recorded, target, end);
}

Result<void> MediaMovies::exportMp4(const QString &path, const QString &target, double from, double to,
                                    WorkProgress &progress)
{
    return exportMp4File(path, target, from, to, progress);
}

namespace {

constexpr double kForever = 1e9;

// All sound tracks as one, from a time on.
Result<void> mixed(const QString &path, int rate, int channels, double from,
                   const std::function<bool(std::span<const float>)> &receive)
{
    const auto source = MovieSource::open(path, MovieSource::Parts::Sound);
    if (!source)
        return std::unexpected(source.error());
    if ((*source)->soundTracks().empty())
        return fail(Error::Kind::NotFound, PlatformTexts::tr("The film has no sound."));
    if (from > 0)
        (*source)->seek(from);
    SoundMixer mixer(rate, channels, receive);
    double last = 0;
    while (true) {
        const MovieSource::Decoded decoded = (*source)->next();
        if (decoded.stream < 0)
            break;
        const double time = decoded.time - from;
        last = std::max(last,
                        time + double(decoded.frame->nb_samples) / std::max(decoded.frame->sample_rate, 1));
        if (!mixer.add(decoded.stream, *decoded.frame, time, kForever))
            return cancelled();
    }
    if (!mixer.end(last))
        return cancelled();
    return {};
}

} // namespace

Result<void> MediaMovies::voice(const QString &path,
                                const std::function<bool(std::span<const qint16>)> &receive)
{
    std::vector<qint16> words;
    return mixed(path, kVoiceRate, 1, 0, [&](std::span<const float> samples) {
        words.resize(samples.size());
        std::ranges::transform(samples, words.begin(), [](float sample) {
            return qint16(std::lround(std::clamp(sample, -1.0F, 1.0F) * 32767));
        });
        return receive(words);
    });
}

Result<void> MediaMovies::sound(const QString &path, double from,
                                const std::function<bool(std::span<const float>)> &receive)
{
    return mixed(path, SoundOutput::kRate, SoundOutput::kChannels, from, receive);
}
