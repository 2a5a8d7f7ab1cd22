#pragma once

#include "platform/movies.h"
#include "platform/screen_films.h"
#include "platform/sound_sources.h"
#include "recording/film_clock.h"
#include "recording/sound_timeline.h"

#include <condition_variable>
#include <mutex>

// One film while it is made: what the screen shows and what is heard, brought to one clock and given to the
// writer. Starting and stopping block, and are for worker threads.
class FilmSession {
public:
    struct Ports {
        ScreenFilms &films;
        SoundSources &sounds;
        Movies &movies;
    };
    struct Wish {
        FilmRequest screen;
        QList<SoundSource> sounds;
        QString path; // the file that grows
    };

    // Returns once the first frame was taken. `broken` is called at most once, on any thread, when the film
    // can't go on; it is still to be stopped then.
    static Result<std::unique_ptr<FilmSession>> start(const Ports &ports, const Wish &wish,
                                                      std::function<void(const Error &)> broken);
    ~FilmSession();

    const QList<SoundSource> &sounds() const { return m_sounds; } // those that are recorded
    const QList<Error> &refused() const { return m_refused; }     // why the others aren't
    std::chrono::microseconds length() const;
    void pause();
    void resume();
    // To be called now and then: sound that doesn't come is silence.
    void fillSilence();

    struct End {
        std::chrono::microseconds length{0};
        MovieWriter::Counts counts;
        std::optional<Error> error; // some of it couldn't be written
    };
    End stop();

private:
    struct Track {
        SoundSource source = SoundSource::System;
        std::unique_ptr<SoundStream> stream;
        std::unique_ptr<SoundTimeline> timeline;
    };

    explicit FilmSession(std::function<void(const Error &)> broken) : m_broken(std::move(broken)) {}
    void openSounds(SoundSources &sources, const QList<SoundSource> &wanted);
    void takeFrame(const FilmFrame &frame);
    void takeSound(std::size_t index, const SoundBlock &block);
    void tellBroken(const Error &error);
    bool waitForFirstFrame();
    bool isHeardUntil(std::chrono::microseconds time) const;

    std::function<void(const Error &)> m_broken;
    FilmClock m_clock;
    QList<SoundSource> m_sounds;
    QList<Error> m_refused;
    std::mutex m_mutex; // of what follows, down to the tracks
    std::condition_variable m_news;
    bool m_hasFrame = false;
    std::optional<Error> m_error; // that was told as broken
    std::vector<Track> m_tracks;
    std::unique_ptr<MovieWriter> m_writer;
    std::unique_ptr<ScreenFilm> m_film;
};
