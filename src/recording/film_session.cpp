#include "recording/film_session.h"

#include "recording/texts.h"

using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::steady_clock;

namespace {

constexpr auto kFirstFrame = std::chrono::seconds(5); // a busy server at worst
// Monitors of idle devices deliver up to 1.3 s late at first; what comes later than this is silence already.
constexpr auto kLateSound = milliseconds(2000);
// Sound of the last moment is still on its way when the film ends.
constexpr auto kLastSound = milliseconds(150);

} // namespace

Result<std::unique_ptr<FilmSession>> FilmSession::start(const Ports &ports, const Wish &wish,
                                                        std::function<void(const Error &)> broken)
{
    std::unique_ptr<FilmSession> session(new FilmSession(std::move(broken)));
    FilmSession *self = session.get();
    self->openSounds(ports.sounds, wish.sounds);
    auto writer = ports.movies.record(wish.path, {wish.screen.area.size(), self->m_sounds},
                                      [self](const Error &error) { self->tellBroken(error); });
    if (!writer)
        return std::unexpected(writer.error());
    self->m_writer = std::move(*writer); // before the clock runs nobody writes
    auto film = ports.films.start(wish.screen, {[self](const FilmFrame &frame) { self->takeFrame(frame); },
                                                [self](const Error &error) { self->tellBroken(error); }});
    if (!film)
        return std::unexpected(film.error());
    self->m_film = std::move(*film);
    if (!self->waitForFirstFrame()) {
        const std::lock_guard lock(self->m_mutex);
        if (self->m_error)
            return std::unexpected(*self->m_error);
        return fail(RecordingTexts::tr("The screen gave no picture."));
    }
    return session;
}

FilmSession::~FilmSession()
{
    // Those who call us first, what they write to last.
    m_film.reset();
    for (Track &track : m_tracks)
        track.stream.reset();
    m_writer.reset();
}

void FilmSession::openSounds(SoundSources &sources, const QList<SoundSource> &wanted)
{
    m_tracks.reserve(std::size_t(wanted.size()));
    for (const SoundSource source : wanted) {
        const std::size_t index = m_tracks.size();
        {
            // The track is there before its first sound comes.
            const std::lock_guard lock(m_mutex);
            auto write = [this, index](std::span<const float> samples) {
                m_writer->writeSound(qsizetype(index), samples);
            };
            m_tracks.push_back({source, nullptr,
                                std::make_unique<SoundTimeline>(SoundSources::kRate,
                                                                SoundSources::channels(source), write)});
        }
        auto stream =
            sources.open(source, [this, index](const SoundBlock &block) { takeSound(index, block); });
        const std::lock_guard lock(m_mutex);
        if (stream) {
            m_tracks.back().stream = std::move(*stream);
            m_sounds.append(source);
        } else {
            m_tracks.pop_back();
            m_refused.append(stream.error());
        }
    }
}

bool FilmSession::waitForFirstFrame()
{
    std::unique_lock lock(m_mutex);
    m_news.wait_for(lock, kFirstFrame, [this] { return m_hasFrame || m_error; });
    return m_hasFrame;
}

void FilmSession::takeFrame(const FilmFrame &frame)
{
    if (!m_clock.isRunning() && m_clock.stretches().empty())
        m_clock.run(frame.time);
    m_writer->write(frame, m_clock.timeOf(frame.time));
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_hasFrame, true))
            return;
    }
    m_news.notify_all();
}

void FilmSession::takeSound(std::size_t index, const SoundBlock &block)
{
    const std::lock_guard lock(m_mutex);
    if (index >= m_tracks.size())
        return;
    const Track &track = m_tracks[index];
    const int channels = SoundSources::channels(track.source);
    const auto count = std::int64_t(block.samples.size()) / channels;
    const auto momentOf = [&](std::int64_t sample) {
        return block.time + nanoseconds(sample * 1'000'000'000 / SoundSources::kRate);
    };
    const auto sampleAt = [&](FilmClock::Moment moment) -> std::int64_t {
        if (moment >= momentOf(count))
            return count;
        if (moment <= block.time)
            return 0;
        return duration_cast<nanoseconds>(moment - block.time).count() * SoundSources::kRate / 1'000'000'000;
    };
    // What fell into a pause, or came before the film, isn't in it.
    for (const FilmClock::Stretch &stretch : m_clock.stretches()) {
        const std::int64_t first = sampleAt(stretch.begin);
        const std::int64_t last = sampleAt(stretch.end);
        if (first >= last)
            continue;
        const auto time = stretch.time + duration_cast<microseconds>(momentOf(first) - stretch.begin);
        track.timeline->add(
            block.samples.subspan(std::size_t(first * channels), std::size_t((last - first) * channels)),
            std::max(time, stretch.time));
    }
    m_news.notify_all();
}

microseconds FilmSession::length() const
{
    return m_clock.lengthAt(steady_clock::now());
}

void FilmSession::pause()
{
    m_clock.pause(steady_clock::now());
}

void FilmSession::resume()
{
    const auto now = steady_clock::now();
    m_clock.run(now);
    // What changed during the pause is seen at once.
    if (const auto time = m_clock.timeOf(now))
        m_writer->repeat(*time);
}

void FilmSession::fillSilence()
{
    const auto until = m_clock.lengthAt(steady_clock::now() - kLateSound);
    const std::lock_guard lock(m_mutex);
    for (const Track &track : m_tracks)
        track.timeline->fillTo(until);
}

bool FilmSession::isHeardUntil(microseconds time) const
{
    return std::ranges::all_of(m_tracks,
                               [time](const Track &track) { return track.timeline->length() >= time; });
}

FilmSession::End FilmSession::stop()
{
    m_clock.pause(steady_clock::now());
    m_film.reset();
    End end;
    end.length = m_clock.lengthAt(steady_clock::now());
    {
        std::unique_lock lock(m_mutex);
        m_news.wait_for(lock, kLastSound, [&] { return isHeardUntil(end.length); });
    }
    for (Track &track : m_tracks)
        track.stream.reset();
    for (const Track &track : m_tracks)
        track.timeline->endAt(end.length);
    if (const auto closed = m_writer->close(); !closed)
        end.error = closed.error();
    end.counts = m_writer->counts();
    return end;
}

void FilmSession::tellBroken(const Error &error)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_error)
            return;
        m_error = error;
    }
    m_news.notify_all();
    m_broken(error);
}
