#include "platform/media/movie_frames.h"

#include "platform/media/movie_source.h"
#include "platform/media/picture_maker.h"
#include "platform/texts.h"

#include <limits>

namespace {

constexpr double kSame = 1e-6; // seconds; times of films are finer than any frame
// Further ahead than this, seeking is quicker than decoding.
constexpr double kFarAhead = 2.5;

class Frames : public MovieFrames {
public:
    Frames(std::unique_ptr<MovieSource> source, QSize bounds)
        : m_source(std::move(source)),
          m_maker(sizeWithin(bounds), m_source->turns()),
          m_shown(av_frame_alloc()),
          m_coming(av_frame_alloc())
    {}

    const MovieInfo &info() const override { return m_source->info(); }

    Result<QImage> at(double seconds) override
    {
        const bool isFar = m_hasComing && m_comingTime <= seconds && seconds > m_shownTime + kFarAhead;
        if (!m_hasShown || seconds < m_shownTime - kSame || isFar)
            goTo(seconds);
        while (m_hasComing && m_comingTime <= seconds + kSame)
            advance();
        if (!m_hasShown)
            return fail(PlatformTexts::tr("This film can't be played: %1.")
                            .arg(PlatformTexts::tr("none of its pictures can be decoded")));
        if (m_picture.isNull())
            m_picture = m_maker.make(*m_shown);
        if (m_picture.isNull())
            return fail(PlatformTexts::tr("There is not enough memory for the film's pictures."));
        return m_picture;
    }

    std::pair<double, double> shown() const override
    {
        return {m_shownTime, m_hasComing ? m_comingTime : std::numeric_limits<double>::infinity()};
    }

private:
    QSize sizeWithin(QSize bounds) const
    {
        QSize size = m_source->info().size;
        if (!bounds.isEmpty() && (size.width() > bounds.width() || size.height() > bounds.height()))
            size = size.scaled(bounds, Qt::KeepAspectRatio).expandedTo({1, 1});
        return m_source->turns() % 2 == 1 ? size.transposed() : size;
    }

    void goTo(double seconds)
    {
        const bool isFirst = !m_hasShown && !m_hasComing && !m_wasRead;
        // Seeking may land behind the wanted time: then further before it.
        for (double back = 0; back < 1000; back = back * 4 + 1) {
            if (!isFirst || seconds > kFarAhead || back > 0)
                m_source->seek(seconds - back);
            m_hasShown = m_hasComing = false;
            m_picture = {};
            readComing();
            if (!m_hasComing && back == 0)
                continue;
            if (!m_hasComing || m_comingTime <= seconds + kSame || seconds - back <= 0)
                break;
        }
        if (m_hasComing)
            advance();
    }

    void advance()
    {
        std::swap(m_shown, m_coming);
        m_shownTime = m_comingTime;
        m_hasShown = true;
        m_picture = {};
        readComing();
    }

    void readComing()
    {
        m_wasRead = true;
        const MovieSource::Decoded decoded = m_source->next();
        m_hasComing = decoded.frame != nullptr;
        if (!m_hasComing)
            return;
        av_frame_unref(m_coming.get());
        av_frame_move_ref(m_coming.get(), decoded.frame);
        m_comingTime = decoded.time;
    }

    std::unique_ptr<MovieSource> m_source;
    PictureMaker m_maker;
    AvFrame m_shown;  // at the last time asked for
    AvFrame m_coming; // the one after it
    double m_shownTime = 0;
    double m_comingTime = 0;
    bool m_hasShown = false;
    bool m_hasComing = false;
    bool m_wasRead = false;
    QImage m_picture; // of m_shown, once it was asked for
};

} // namespace

Result<std::unique_ptr<MovieFrames>> openMovieFrames(const QString &path, QSize bounds)
{
    auto source = MovieSource::open(path, MovieSource::Parts::Pictures);
    if (!source)
        return std::unexpected(source.error());
    return std::make_unique<Frames>(std::move(*source), bounds);
}
