#pragma once

#include "platform/cameras.h"
#include "platform/movies.h"
#include "platform/screen_films.h"
#include "platform/sound_output.h"
#include "platform/sound_sources.h"
#include "platform/speech_engine.h"

#include <QFile>
#include <QFileInfo>
#include <map>
#include <mutex>

// A screen that a test changes itself.
class FakeScreenFilms : public ScreenFilms {
public:
    Result<std::unique_ptr<ScreenFilm>> start(const FilmRequest &request, FilmReceiver receiver) override
    {
        if (!refusal.isEmpty())
            return fail(Error::Kind::Unavailable, refusal);
        const std::lock_guard lock(m_mutex);
        lastRequest = request;
        m_receiver = std::move(receiver);
        QImage picture(request.area.size(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        m_receiver->frame(
            {picture, {}, QRect(QPoint(), request.area.size()), std::chrono::steady_clock::now()});
        return std::make_unique<Running>(*this);
    }
    bool isRunning()
    {
        const std::lock_guard lock(m_mutex);
        return m_receiver.has_value();
    }
    void breakOff(const Error &error)
    {
        const std::lock_guard lock(m_mutex);
        m_receiver->ended(error);
    }

    QString refusal;
    FilmRequest lastRequest;

private:
    struct Running : ScreenFilm {
        explicit Running(FakeScreenFilms &owner) : m_owner(owner) {}
        ~Running() override
        {
            const std::lock_guard lock(m_owner.m_mutex);
            m_owner.m_receiver.reset();
        }
        FakeScreenFilms &m_owner;
    };
    std::mutex m_mutex;
    std::optional<FilmReceiver> m_receiver;
};

// Sound that a test makes itself.
class FakeSoundSources : public SoundSources {
public:
    Result<std::unique_ptr<SoundStream>> open(SoundSource source,
                                              std::function<void(const SoundBlock &)> receive) override
    {
        if (!refusal.isEmpty())
            return fail(Error::Kind::Unavailable, refusal);
        receivers[source] = std::move(receive);
        return std::make_unique<SoundStream>();
    }
    QString refusal;
    std::map<SoundSource, std::function<void(const SoundBlock &)>> receivers;
};

// Films that are files with a few words in them.
class FakeMovies : public Movies {
public:
    struct Writer : MovieWriter {
        explicit Writer(FakeMovies &owner) : m_owner(owner) {}
        void write(const FilmFrame &, std::optional<std::chrono::microseconds> time) override
        {
            m_owner.times.append(time ? time->count() : -1);
        }
        void repeat(std::chrono::microseconds) override { ++m_owner.repeats; }
        void writeSound(qsizetype, std::span<const float>) override {}
        Counts counts() const override { return {}; }
        Result<void> close() override { return {}; }
        FakeMovies &m_owner;
    };

    // Ten pictures a second, each of a grey that tells which.
    struct Frames : MovieFrames {
        Frames(MovieInfo movie, bool isBadInside) : m_movie(std::move(movie)), m_isBadInside(isBadInside) {}
        const MovieInfo &info() const override { return m_movie; }
        Result<QImage> at(double seconds) override
        {
            m_index = std::clamp(int(std::floor(seconds * 10 + 1e-6)), 0, last());
            if (m_isBadInside && m_index == 2)
                return fail(QStringLiteral("A broken picture."));
            QImage picture(m_movie.size, QImage::Format_RGB32);
            picture.fill(QColor(m_index, m_index, m_index));
            return picture;
        }
        std::pair<double, double> shown() const override
        {
            return {m_index / 10.0, m_index == last() ? INFINITY : (m_index + 1) / 10.0};
        }
        int last() const { return int(m_movie.duration * 10) - 1; }
        MovieInfo m_movie;
        bool m_isBadInside;
        int m_index = 0;
    };

    Result<MovieInfo> info(const QString &) override { return movie; }
    Result<std::unique_ptr<MovieFrames>> frames(const QString &path, QSize) override
    {
        if (!hasPictures || gone.contains(path))
            return fail(QStringLiteral("No pictures."));
        return std::make_unique<Frames>(movie, isBadInside);
    }
    Result<std::unique_ptr<MovieWriter>> record(const QString &path, const MovieFormat &format,
                                                std::function<void(const Error &)> onFailure) override
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            return fail(file.errorString());
        file.write("recorded");
        lastFormat = format;
        failed = std::move(onFailure);
        return std::make_unique<Writer>(*this);
    }
    Result<void> finish(const QString &recorded, const QString &target,
                        std::optional<std::chrono::microseconds>) override
    {
        if (!refusal.isEmpty())
            return fail(refusal);
        if (!QFile::rename(recorded, target))
            return fail(QStringLiteral("Taken."));
        return {};
    }
    Result<void> exportMp4(const QString &, const QString &target, double, double, WorkProgress &) override
    {
        QFile file(target);
        if (!file.open(QIODevice::WriteOnly))
            return fail(file.errorString());
        file.write("half"); // as far as it came
        return refusal.isEmpty() ? Result<void>() : fail(refusal);
    }
    Result<void> voice(const QString &, const std::function<bool(std::span<const qint16>)> &receive) override
    {
        if (movie.soundTracks == 0)
            return fail(Error::Kind::NotFound, QStringLiteral("No sound."));
        const std::vector<qint16> second(kVoiceRate);
        for (int i = 0; i < int(movie.duration); ++i) {
            if (!receive(second))
                return cancelled();
        }
        return {};
    }

    Result<void> sound(const QString &, double from,
                       const std::function<bool(std::span<const float>)> &receive) override
    {
        const std::vector<float> second(std::size_t(SoundOutput::kRate) * SoundOutput::kChannels);
        for (int i = int(from); i < int(movie.duration); ++i) {
            if (!receive(second))
                return cancelled();
        }
        return {};
    }

    MovieInfo movie{10, QSize(320, 240), 30, QStringLiteral("h264"), 1};
    MovieFormat lastFormat;
    QList<qint64> times; // of frames, -1 for one that was only noted
    int repeats = 0;
    QString refusal;
    bool hasPictures = false;
    bool isBadInside = false; // the third picture can't be had
    QStringList gone;         // films that are no longer there
    std::function<void(const Error &)> failed;
};

// A camera that sees one colour, or none that can be used.
class FakeCameras : public Cameras {
public:
    Result<std::unique_ptr<CameraStream>> open(int side, std::function<void(const QImage &)> picture,
                                               std::function<void()> lost) override
    {
        if (!color.isValid())
            return fail(Error::Kind::Unavailable, QStringLiteral("No camera."));
        QImage seen(side, side, QImage::Format_RGB32);
        seen.fill(color);
        picture(seen);
        return std::make_unique<CameraStream>();
    }
    QColor color;
};

// There is no device.
class FakeSoundOutput : public SoundOutput {
public:
    Result<std::unique_ptr<SoundPlayback>> play(std::function<void(std::span<float>)>) override
    {
        return fail(Error::Kind::Unavailable, QStringLiteral("No sound server."));
    }
};

// Hears the same words in every sound.
class FakeSpeechEngine : public SpeechEngine {
public:
    struct Listener : SpeechListener {
        Result<void> hear(std::span<const qint16>) override { return {}; }
        Result<void> end(WorkProgress &) override
        {
            heard(words);
            if (isCutOff)
                return fail(QStringLiteral("No more."));
            return {};
        }
        std::function<void(const QList<SpokenWord> &)> heard;
        QList<SpokenWord> words;
        bool isCutOff = false;
    };
    QStringList languages() const override { return {QStringLiteral("en")}; }
    Result<std::unique_ptr<SpeechListener>>
    listen(std::function<void(const QList<SpokenWord> &)> heard) override
    {
        auto listener = std::make_unique<Listener>();
        listener->heard = std::move(heard);
        listener->words = words;
        listener->isCutOff = isCutOff;
        return listener;
    }
    QList<SpokenWord> words;
    bool isCutOff = false; // it fails after them
};
