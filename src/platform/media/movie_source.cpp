#include "platform/media/movie_source.h"

#include "platform/texts.h"

#include <QFile>
#include <QFileInfo>

extern "C" {
#include <libavutil/display.h>
}

namespace {

constexpr int kLongestSide = 16384;
constexpr double kLongestFilm = 7 * 24 * 3600;

std::unexpected<Error> unplayable(const QString &reason, const QString &detail = {})
{
    return fail(PlatformTexts::tr("This film can't be played: %1.").arg(reason), detail);
}

bool isPicture(const AVStream &stream)
{
    return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
           !(stream.disposition & AV_DISPOSITION_ATTACHED_PIC);
}

int turnsOf(const AVStream &stream)
{
    const auto *matrix = reinterpret_cast<const std::int32_t *>(
        av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr));
    if (!matrix)
        return 0;
    const double degrees = av_display_rotation_get(matrix); // counterclockwise
    return std::isfinite(degrees) ? (4 - qRound(degrees / 90) % 4) % 4 : 0;
}

// As it is shown: with square pixels, before it is turned.
QSize squareSize(const AVStream &stream)
{
    const AVCodecParameters &pictures = *stream.codecpar;
    const AVRational aspect =
        stream.sample_aspect_ratio.num > 0 ? stream.sample_aspect_ratio : pictures.sample_aspect_ratio;
    QSize size(pictures.width, pictures.height);
    const double ratio = aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1;
    if (ratio > 0.1 && ratio < 10)
        size.setWidth(std::max(1, qRound(size.width() * ratio)));
    return size;
}

} // namespace

Result<std::unique_ptr<MovieSource>> MovieSource::open(const QString &path, Parts parts)
{
    std::unique_ptr<MovieSource> source(new MovieSource);
    if (const auto looked = source->look(path, parts); !looked)
        return std::unexpected(looked.error());
    return source;
}

Result<void> MovieSource::look(const QString &path, Parts parts)
{
    const QFileInfo file(path);
    if (!file.exists())
        return fail(Error::Kind::NotFound, PlatformTexts::tr("There is no file %1.").arg(file.fileName()));
    if (file.size() == 0)
        return unplayable(PlatformTexts::tr("the file is empty"));
    AVFormatContext *opened = nullptr;
    // A playlist in the file must not make us open other files or addresses.
    AVDictionary *options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    av_dict_set(&options, "format_whitelist",
                "mov,mp4,m4a,3gp,3g2,mj2,matroska,webm,avi,mpegts,mpeg,ogg,gif,h264,"
                "hevc,wav,flac,mp3,flv,asf",
                0);
    const int error = avformat_open_input(&opened, avUrl(path).constData(), nullptr, &options);
    av_dict_free(&options);
    if (error < 0)
        return unplayable(PlatformTexts::tr("it is damaged, or no film"), avReason(error));
    m_input.reset(opened);
    if (const int found = avformat_find_stream_info(m_input.get(), nullptr); found < 0)
        return unplayable(PlatformTexts::tr("it is damaged"), avReason(found));
    for (unsigned i = 0; i < m_input->nb_streams; ++i) {
        const AVStream &stream = *m_input->streams[i];
        if (isPicture(stream) && m_pictures < 0)
            m_pictures = int(i);
        else if (stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
            m_soundTracks.push_back(int(i));
    }
    m_info.soundTracks = int(m_soundTracks.size());
    if (m_pictures < 0 && parts != Parts::Sound)
        return unplayable(PlatformTexts::tr("there are no pictures in it"));
    m_decoders.resize(m_input->nb_streams);
    m_nextTimes.assign(m_input->nb_streams, 0);
    for (unsigned i = 0; i < m_input->nb_streams; ++i) {
        const bool isWanted =
            int(i) == m_pictures
                ? parts != Parts::Sound
                : parts != Parts::Pictures && std::ranges::find(m_soundTracks, int(i)) != m_soundTracks.end();
        m_input->streams[i]->discard = isWanted ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
        if (!isWanted)
            continue;
        if (const auto decoder = openDecoder(int(i)); !decoder)
            return decoder;
    }
    m_packet.reset(av_packet_alloc());
    m_frame.reset(av_frame_alloc());
    m_start = m_input->start_time == AV_NOPTS_VALUE ? 0 : double(m_input->start_time) / AV_TIME_BASE;
    if (m_pictures >= 0) {
        const AVStream &stream = pictures();
        m_turns = turnsOf(stream);
        m_info.codec = QString::fromLatin1(avcodec_get_name(stream.codecpar->codec_id));
        m_info.size = squareSize(stream);
        if (m_turns % 2 == 1)
            m_info.size.transpose();
        const AVRational rate = stream.avg_frame_rate;
        m_info.framesPerSecond = rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 0;
        if (m_info.size.isEmpty() || m_info.size.width() > kLongestSide ||
            m_info.size.height() > kLongestSide)
            return unplayable(PlatformTexts::tr("its pictures have no sensible size"));
    }
    m_info.duration = m_input->duration == AV_NOPTS_VALUE ? 0 : double(m_input->duration) / AV_TIME_BASE;
    if (!(m_info.duration > 0) || m_info.duration > kLongestFilm)
        measureDuration();
    if (!(m_info.duration > 0) || m_info.duration > kLongestFilm)
        return unplayable(PlatformTexts::tr("it has no length"));
    return {};
}

Result<void> MovieSource::openDecoder(int stream)
{
    const AVCodecParameters &parameters = *m_input->streams[stream]->codecpar;
    const AVCodec *codec = avcodec_find_decoder(parameters.codec_id);
    AvCodec decoder(codec ? avcodec_alloc_context3(codec) : nullptr);
    if (decoder) {
        decoder->pkt_timebase = m_input->streams[stream]->time_base;
        decoder->thread_count = parameters.codec_type == AVMEDIA_TYPE_VIDEO ? 0 : 1;
        decoder->max_pixels = std::int64_t(kLongestSide) * kLongestSide / 2;
    }
    if (!decoder || avcodec_parameters_to_context(decoder.get(), &parameters) < 0 ||
        avcodec_open2(decoder.get(), codec, nullptr) < 0) {
        const QString name = QString::fromLatin1(avcodec_get_name(parameters.codec_id));
        return unplayable(
            parameters.codec_type == AVMEDIA_TYPE_VIDEO
                ? PlatformTexts::tr("its pictures are of a kind (%1) that this machine can't decode")
                      .arg(name)
                : PlatformTexts::tr("its sound is of a kind (%1) that this machine can't decode").arg(name));
    }
    m_decoders[std::size_t(stream)] = std::move(decoder);
    return {};
}

// Where the file doesn't tell its length, the packets do.
void MovieSource::measureDuration()
{
    double end = 0;
    int counted = 0;
    while (av_read_frame(m_input.get(), m_packet.get()) >= 0) {
        const AVStream &stream = *m_input->streams[m_packet->stream_index];
        if (m_packet->pts != AV_NOPTS_VALUE)
            end = std::max(end, double(m_packet->pts + std::max<std::int64_t>(m_packet->duration, 0)) *
                                        av_q2d(stream.time_base) -
                                    m_start);
        counted += m_packet->stream_index == m_pictures ? 1 : 0;
        av_packet_unref(m_packet.get());
    }
    if (!(end > 0) && m_info.framesPerSecond > 0)
        end = counted / m_info.framesPerSecond;
    m_info.duration = end;
    // Streams without any time can't be sought in: they begin anew.
    if (av_seek_frame(m_input.get(), -1, m_input->start_time == AV_NOPTS_VALUE ? 0 : m_input->start_time,
                      AVSEEK_FLAG_BACKWARD) < 0)
        avio_seek(m_input->pb, 0, SEEK_SET);
    avformat_flush(m_input.get());
}

double MovieSource::timeOf(const AVFrame &frame, int stream)
{
    double &next = m_nextTimes[std::size_t(stream)];
    const AVStream &track = *m_input->streams[stream];
    const double time = frame.best_effort_timestamp == AV_NOPTS_VALUE
                            ? next
                            : double(frame.best_effort_timestamp) * av_q2d(track.time_base) - m_start;
    const double rate = track.codecpar->codec_type == AVMEDIA_TYPE_AUDIO && frame.sample_rate > 0
                            ? double(frame.sample_rate) / std::max(frame.nb_samples, 1)
                            : m_info.framesPerSecond;
    next = time + (rate > 0 ? 1 / rate : 0.04);
    return time;
}

MovieSource::Decoded MovieSource::next()
{
    av_frame_unref(m_frame.get());
    while (true) {
        if (m_pending >= 0) {
            if (avcodec_receive_frame(m_decoders[std::size_t(m_pending)].get(), m_frame.get()) >= 0)
                return {m_pending, m_frame.get(), timeOf(*m_frame, m_pending)};
            m_pending = -1;
        }
        if (m_isAtEnd) {
            for (++m_draining; m_draining < int(m_decoders.size()); ++m_draining) {
                AVCodecContext *decoder = m_decoders[std::size_t(m_draining)].get();
                if (decoder && avcodec_send_packet(decoder, nullptr) >= 0) {
                    m_pending = m_draining;
                    break;
                }
            }
            if (m_pending >= 0)
                continue;
            return {};
        }
        if (av_read_frame(m_input.get(), m_packet.get()) < 0) {
            m_isAtEnd = true;
            m_draining = -1;
            continue;
        }
        const int stream = m_packet->stream_index;
        if (stream < int(m_decoders.size()) && m_decoders[std::size_t(stream)] &&
            avcodec_send_packet(m_decoders[std::size_t(stream)].get(), m_packet.get()) >= 0)
            m_pending = stream;
        av_packet_unref(m_packet.get());
    }
}

void MovieSource::seek(double seconds)
{
    const AVRational unit = m_pictures >= 0 ? pictures().time_base : AVRational{1, AV_TIME_BASE};
    const auto place = std::int64_t(std::floor((std::max(seconds, 0.0) + m_start) / av_q2d(unit)));
    if (av_seek_frame(m_input.get(), m_pictures, place, AVSEEK_FLAG_BACKWARD) < 0) {
        // No index: from the beginning.
        avio_seek(m_input->pb, 0, SEEK_SET);
        avformat_flush(m_input.get());
        m_nextTimes.assign(m_nextTimes.size(), 0);
    }
    for (const AvCodec &decoder : m_decoders) {
        if (decoder)
            avcodec_flush_buffers(decoder.get());
    }
    m_pending = -1;
    m_isAtEnd = false;
}
