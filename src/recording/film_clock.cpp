#include "recording/film_clock.h"

#include <algorithm>

using std::chrono::duration_cast;
using std::chrono::microseconds;

void FilmClock::run(Moment moment)
{
    const std::lock_guard lock(m_mutex);
    if (m_stretches.empty()) {
        m_stretches.push_back({moment, Moment::max(), microseconds(0)});
        return;
    }
    const Stretch last = m_stretches.back();
    if (last.end != Moment::max())
        m_stretches.push_back({std::max(moment, last.end), Moment::max(),
                               last.time + duration_cast<microseconds>(last.end - last.begin)});
}

void FilmClock::pause(Moment moment)
{
    const std::lock_guard lock(m_mutex);
    if (!m_stretches.empty() && m_stretches.back().end == Moment::max())
        m_stretches.back().end = std::max(moment, m_stretches.back().begin);
}

bool FilmClock::isRunning() const
{
    const std::lock_guard lock(m_mutex);
    return !m_stretches.empty() && m_stretches.back().end == Moment::max();
}

std::optional<microseconds> FilmClock::timeOf(Moment moment) const
{
    const std::lock_guard lock(m_mutex);
    for (auto stretch = m_stretches.rbegin(); stretch != m_stretches.rend(); ++stretch) {
        if (moment >= stretch->begin && moment < stretch->end)
            return stretch->time + duration_cast<microseconds>(moment - stretch->begin);
    }
    return std::nullopt;
}

microseconds FilmClock::lengthAt(Moment moment) const
{
    const std::lock_guard lock(m_mutex);
    if (m_stretches.empty())
        return microseconds(0);
    const Stretch &last = m_stretches.back();
    const auto run = duration_cast<microseconds>(std::min(moment, last.end) - last.begin);
    return last.time + std::max(run, microseconds(0));
}

std::vector<FilmClock::Stretch> FilmClock::stretches() const
{
    const std::lock_guard lock(m_mutex);
    return m_stretches;
}
