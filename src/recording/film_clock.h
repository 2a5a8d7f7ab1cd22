#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <vector>

// The time of a film, which stands still during pauses. Any thread.
class FilmClock {
public:
    using Moment = std::chrono::steady_clock::time_point;

    // The first one begins the film at 0; later ones end a pause.
    void run(Moment moment);
    void pause(Moment moment);
    bool isRunning() const;
    // Nothing for a moment before the film or in a pause.
    std::optional<std::chrono::microseconds> timeOf(Moment moment) const;
    // How long the film is at that moment.
    std::chrono::microseconds lengthAt(Moment moment) const;

    // A stretch of moments without a pause, and the film's time at its beginning.
    struct Stretch {
        Moment begin;
        Moment end; // Moment::max() while it runs
        std::chrono::microseconds time{0};
    };
    std::vector<Stretch> stretches() const;

private:
    mutable std::mutex m_mutex;
    std::vector<Stretch> m_stretches;
};
