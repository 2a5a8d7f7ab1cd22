#include "recording/film_sound.h"

namespace {

constexpr std::size_t kChannels = SoundOutput::kChannels;
constexpr std::size_t kAhead = std::size_t(SoundOutput::kRate) / 2 * kChannels; // half a second

} // namespace

std::unique_ptr<FilmSound> FilmSound::start(Movies &movies, SoundOutput &output, const QString &movie,
                                            double from)
{
    std::unique_ptr<FilmSound> sound(new FilmSound);
    sound->m_decoder = std::thread([self = sound.get(), &movies, movie, from] {
        const auto ended =
            movies.sound(movie, from, [self](std::span<const float> samples) { return self->put(samples); });
        static_cast<void>(ended); // what can't be decoded is silence
        const std::lock_guard lock(self->m_mutex);
        self->m_isOver = true;
        self->m_news.notify_all();
    });
    {
        std::unique_lock lock(sound->m_mutex);
        sound->m_news.wait(lock, [&] { return sound->m_isOver || sound->m_ahead.size() >= kAhead; });
        if (sound->m_ahead.empty())
            return nullptr;
    }
    auto playback = output.play([self = sound.get()](std::span<float> samples) { self->take(samples); });
    if (!playback)
        return nullptr;
    sound->m_playback = std::move(*playback);
    return sound;
}

FilmSound::~FilmSound()
{
    m_playback.reset();
    {
        const std::lock_guard lock(m_mutex);
        m_isStopped = true;
    }
    m_news.notify_all();
    m_decoder.join();
}

double FilmSound::heard()
{
    const std::int64_t heard = m_playback->heard();
    const std::lock_guard lock(m_mutex);
    return double(std::max<std::int64_t>(heard - m_gaps, 0)) / SoundOutput::kRate;
}

bool FilmSound::put(std::span<const float> samples)
{
    std::unique_lock lock(m_mutex);
    m_news.wait(lock, [this] { return m_isStopped || m_ahead.size() < kAhead; });
    if (m_isStopped)
        return false;
    m_ahead.insert(m_ahead.end(), samples.begin(), samples.end());
    m_news.notify_all();
    return true;
}

void FilmSound::take(std::span<float> samples)
{
    const std::lock_guard lock(m_mutex);
    const std::size_t count = std::min(samples.size(), m_ahead.size());
    std::copy_n(m_ahead.begin(), count, samples.begin());
    std::fill(samples.begin() + std::ptrdiff_t(count), samples.end(), 0.0F);
    m_ahead.erase(m_ahead.begin(), m_ahead.begin() + std::ptrdiff_t(count));
    if (!m_isOver)
        m_gaps += std::int64_t((samples.size() - count) / kChannels);
    m_news.notify_all();
}
