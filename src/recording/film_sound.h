#pragma once

#include "platform/movies.h"
#include "platform/sound_output.h"

#include <condition_variable>
#include <mutex>
#include <thread>

// The sound of a film while it is played: one thread decodes ahead of what the device takes. Made and
// destroyed on a worker thread.
class FilmSound {
public:
    // From that second of the film on. Nothing when the film has no sound, or nobody could hear it.
    static std::unique_ptr<FilmSound> start(Movies &movies, SoundOutput &output, const QString &movie,
                                            double from);
    ~FilmSound();
    FilmSound(const FilmSound &) = delete;
    FilmSound &operator=(const FilmSound &) = delete;

    // Seconds of the film that have been heard. Stands still when the device has gone.
    double heard();

private:
    FilmSound() = default;
    bool put(std::span<const float> samples);
    void take(std::span<float> samples);

    std::mutex m_mutex;
    std::condition_variable m_news;
    std::vector<float> m_ahead;
    std::int64_t m_gaps = 0; // samples of each channel for which nothing was ready in time
    bool m_isOver = false;   // nothing follows what is ahead
    bool m_isStopped = false;
    std::thread m_decoder;
    std::unique_ptr<SoundPlayback> m_playback;
};
