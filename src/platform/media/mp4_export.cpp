#include "platform/media/mp4_export.h"

#include "platform/media/movie_source.h"
#include "platform/media/picture_copy.h"
#include "platform/media/picture_maker.h"
#include "platform/media/sound_mixer.h"
#include "platform/texts.h"

#include <thread>

extern "C" {
#include <libavutil/display.h>
}

namespace {

constexpr AVRational kUnit{1, 90'000};
constexpr int kRate = 48'000;
constexpr int kBitRate = 192'000;
constexpr double kSame = 1e-6;
// Hardly to be told from the film by eye or by measure (52 dB).
constexpr const char *kQuality = "12";

std::unexpected<Error> cannotExport(int error)
{
    if (error == AVERROR(ENOSPC))
        return fail(PlatformTexts::tr("The disk is full."), avReason(error));
    return fail(PlatformTexts::tr("The film couldn't be written."), avReason(error));
}

class Export {
public:
    // `copy` has the pictures that needn't be encoded anew; null when all must be.
    Export(MovieSource &source, PictureCopy *copy, double from, double to, WorkProgress &progress)
        : m_source(source),
          m_copy(copy),
          m_from(from),
          m_to(to),
          m_headEnd(copy ? copy->begin() : to),
          m_progress(progress),
          m_held(av_frame_alloc()),
          m_packet(av_packet_alloc())
    {}
    ~Export()
    {
        if (m_output && m_output->pb)
            avio_closep(&m_output->pb);
    }
    Export(const Export &) = delete;
    Export &operator=(const Export &) = delete;

    Result<void> run(const QString &target)
    {
        if (const auto opened = open(target); !opened)
            return opened;
        m_picturesDone = !hasHead();
        if (m_picturesDone)
            m_source.pictures().discard = AVDISCARD_ALL;
        m_source.seek(m_from);
        while (true) {
            if (m_progress.isCancelled)
                return cancelled();
            if (m_picturesDone && !copyPictures(m_reached))
                return cannotExport(m_error);
            if (m_picturesDone && !m_mixer)
                break;
            const MovieSource::Decoded decoded = m_source.next();
            if (m_error < 0)
                return cannotExport(m_error);
            if (decoded.stream < 0)
                break;
            m_reached = std::max(m_reached, decoded.time);
            if (decoded.stream == m_pictureStream)
                takePicture(*decoded.frame, decoded.time);
            else if (m_mixer)
                m_mixer->add(decoded.stream, *decoded.frame, decoded.time - m_from, m_to - m_from);
            m_progress.done = std::clamp((decoded.time - m_from) / (m_to - m_from), 0.0, 0.99);
            if (decoded.time > m_to + 1 && m_picturesDone)
                break;
        }
        return finish();
    }

private:
    // Whether something comes before the pictures that are taken over.
    bool hasHead() const { return m_headEnd > m_from + kSame; }

    Result<void> open(const QString &target)
    {
        AVFormatContext *allocated = nullptr;
        const QByteArray url = avUrl(target);
        if (const int error = avformat_alloc_output_context2(&allocated, nullptr, "mp4", url.constData());
            error < 0)
            return cannotExport(error);
        m_output.reset(allocated);
        m_pictureStream = m_source.pictures().index;
        const AVCodecParameters &pictures = *m_source.pictures().codecpar;
        m_size = QSize(pictures.width & ~1, pictures.height & ~1);
        if (m_size.isEmpty())
            return fail(PlatformTexts::tr("The film is too small."));
        int error = hasHead() ? openEncoder(pictures) : 0;
        if (error >= 0)
            error = openPictures(pictures);
        if (error >= 0 && !m_source.soundTracks().empty())
            error = openSound();
        if (error >= 0)
            error = avio_open(&m_output->pb, url.constData(), AVIO_FLAG_WRITE);
        AVDictionary *options = nullptr;
        av_dict_set(&options, "movflags", "faststart", 0);
        if (error >= 0)
            error = avformat_write_header(m_output.get(), &options);
        av_dict_free(&options);
        if (error < 0)
            return cannotExport(error);
        return {};
    }

    int openEncoder(const AVCodecParameters &pictures)
    {
        const AVCodec *codec = avcodec_find_encoder_by_name("libx264");
        if (!codec)
            return AVERROR_ENCODER_NOT_FOUND;
        m_encoder.reset(avcodec_alloc_context3(codec));
        m_encoder->width = m_size.width();
        m_encoder->height = m_size.height();
        m_encoder->pix_fmt = AV_PIX_FMT_YUV420P;
        m_encoder->time_base = kUnit;
        const AVRational rate = m_source.pictures().avg_frame_rate;
        m_encoder->framerate = rate.num > 0 && rate.den > 0 ? rate : AVRational{30, 1};
        m_encoder->sample_aspect_ratio = pictures.sample_aspect_ratio;
        m_encoder->color_range = AVCOL_RANGE_MPEG;
        m_encoder->colorspace = pictures.color_space;
        m_encoder->color_primaries = pictures.color_primaries;
        m_encoder->color_trc = pictures.color_trc;
        m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        AVDictionary *options = nullptr;
        av_dict_set(&options, "preset", "veryfast", 0);
        av_dict_set(&options, "crf", kQuality, 0);
        if (m_copy) {
            m_encoder->max_b_frames = 0; // as in the film
            av_dict_set(&options, "x264-params",
                        QByteArray("sps-id=" + QByteArray::number(m_copy->freeId())).constData(), 0);
        }
        const int error = avcodec_open2(m_encoder.get(), codec, &options);
        av_dict_free(&options);
        return error;
    }

    int openPictures(const AVCodecParameters &pictures)
    {
        AVStream *stream = avformat_new_stream(m_output.get(), nullptr);
        if (!stream)
            return AVERROR(ENOMEM);
        int error = m_copy ? avcodec_parameters_copy(stream->codecpar, &m_copy->parameters())
                           : avcodec_parameters_from_context(stream->codecpar, m_encoder.get());
        stream->codecpar->codec_tag = 0;
        if (error >= 0 && m_copy && m_encoder)
            error = setParameterSets(*stream->codecpar);
        stream->time_base = kUnit;
        stream->avg_frame_rate = m_source.pictures().avg_frame_rate;
        stream->sample_aspect_ratio = pictures.sample_aspect_ratio;
        if (m_source.turns() != 0) {
            auto *matrix = reinterpret_cast<std::int32_t *>(
                av_stream_new_side_data(stream, AV_PKT_DATA_DISPLAYMATRIX, 9 * sizeof(std::int32_t)));
            if (matrix)
                av_display_rotation_set(matrix, -90.0 * m_source.turns());
        }
        return error;
    }

    int setParameterSets(AVCodecParameters &parameters) const
    {
        const QByteArray sets = m_copy->parameterSetsWith(
            {reinterpret_cast<const char *>(m_encoder->extradata), m_encoder->extradata_size});
        auto *room =
            static_cast<std::uint8_t *>(av_mallocz(std::size_t(sets.size()) + AV_INPUT_BUFFER_PADDING_SIZE));
        if (!room)
            return AVERROR(ENOMEM);
        std::ranges::copy(sets, room);
        av_freep(static_cast<void *>(&parameters.extradata));
        parameters.extradata = room;
        parameters.extradata_size = int(sets.size());
        return 0;
    }

    int openSound()
    {
        const AVCodec *codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
        if (!codec)
            return AVERROR_ENCODER_NOT_FOUND;
        m_soundEncoder.reset(avcodec_alloc_context3(codec));
        m_soundEncoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
        m_soundEncoder->sample_rate = kRate;
        m_soundEncoder->bit_rate = kBitRate;
        av_channel_layout_default(&m_soundEncoder->ch_layout, 2);
        m_soundEncoder->time_base = {1, kRate};
        m_soundEncoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        if (const int error = avcodec_open2(m_soundEncoder.get(), codec, nullptr); error < 0)
            return error;
        AVStream *stream = avformat_new_stream(m_output.get(), nullptr);
        if (!stream)
            return AVERROR(ENOMEM);
        stream->time_base = m_soundEncoder->time_base;
        m_soundFrame.reset(av_frame_alloc());
        m_soundFrame->format = AV_SAMPLE_FMT_FLTP;
        m_soundFrame->sample_rate = kRate;
        m_soundFrame->nb_samples = m_soundEncoder->frame_size;
        av_channel_layout_default(&m_soundFrame->ch_layout, 2);
        if (const int error = av_frame_get_buffer(m_soundFrame.get(), 0); error < 0)
            return error;
        m_mixer.emplace(kRate, 2, [this](std::span<const float> samples) {
            m_samples.insert(m_samples.end(), samples.begin(), samples.end());
            encodeSound(false);
            return m_error >= 0;
        });
        return avcodec_parameters_from_context(stream->codecpar, m_soundEncoder.get());
    }

    // A picture is shown until the next one, so each waits for it. The one that stands at the beginning of
    // the part may be older than that.
    void takePicture(const AVFrame &frame, double time)
    {
        if (m_picturesDone)
            return;
        if (time >= m_headEnd - kSame && m_hasHeld) {
            endHead();
            return;
        }
        if (time > m_from + kSame && m_hasHeld)
            sendPicture(m_held.get(), m_heldTime);
        av_frame_unref(m_held.get());
        av_frame_ref(m_held.get(), &frame);
        m_heldTime = std::max(time, m_from);
        m_hasHeld = true;
    }

    // All pictures that are encoded are there.
    void endHead()
    {
        m_picturesDone = true;
        sendPicture(m_held.get(), m_heldTime);
        m_lastDuration =
            std::max<std::int64_t>(std::llround((m_headEnd - m_from) * kUnit.den) - m_lastPts, 1);
        avcodec_send_frame(m_encoder.get(), nullptr);
        takePackets(*m_encoder, 0);
        m_source.pictures().discard = AVDISCARD_ALL;
    }

    // Those that the sound has reached; all of them when there is none. False when the film can't be written.
    bool copyPictures(double until)
    {
        while (m_copy && m_error >= 0 && !m_progress.isCancelled &&
               (!m_mixer || m_copy->time() <= until || m_isSoundDone)) {
            AVPacket *packet = m_copy->next();
            if (m_copy->isBroken())
                m_error = AVERROR_INVALIDDATA;
            if (!packet || m_error < 0) {
                m_copy = nullptr;
                break;
            }
            av_packet_unref(m_packet.get());
            m_error = av_packet_ref(m_packet.get(), packet);
            const double time = m_copy->time() - m_from;
            m_packet->stream_index = 0;
            m_packet->pts = m_packet->dts =
                std::max<std::int64_t>(std::llround(time * kUnit.den), m_lastPts + 1);
            m_packet->duration =
                std::llround((m_to - m_from) * kUnit.den) - m_packet->pts; // if it is the last
            m_packet->pos = -1;
            m_lastPts = m_packet->pts;
            av_packet_rescale_ts(m_packet.get(), kUnit, m_output->streams[0]->time_base);
            if (m_error >= 0)
                m_error = av_interleaved_write_frame(m_output.get(), m_packet.get());
            if (!m_mixer)
                m_progress.done = std::clamp(time / (m_to - m_from), 0.0, 0.99);
        }
        return m_error >= 0;
    }

    void sendPicture(AVFrame *frame, double time)
    {
        AVFrame *picture = suitable(frame);
        if (!picture) {
            m_error = m_error < 0 ? m_error : AVERROR(ENOMEM);
            return;
        }
        const std::int64_t pts = std::llround((time - m_from) * kUnit.den);
        if (pts <= m_lastPts) // two of the same moment
            return;
        m_lastPts = pts;
        picture->pts = pts;
        picture->pict_type = AV_PICTURE_TYPE_NONE;
        const int error = avcodec_send_frame(m_encoder.get(), picture);
        m_error = error < 0 ? error : m_error;
        takePackets(*m_encoder, 0);
    }

    // As the encoder takes it: most films are that already.
    AVFrame *suitable(AVFrame *frame)
    {
        const bool fits = frame->format == AV_PIX_FMT_YUV420P && frame->width == m_size.width() &&
                          frame->height == m_size.height() && frame->color_range != AVCOL_RANGE_JPEG;
        if (fits)
            return frame;
        m_scaler.reset(sws_getCachedContext(
            m_scaler.release(), frame->width, frame->height, AVPixelFormat(frame->format), m_size.width(),
            m_size.height(), AV_PIX_FMT_YUV420P, SWS_BICUBIC | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
        if (!m_scaler)
            return nullptr;
        const int *matrix = sws_getCoefficients(colorSpaceOf(*frame));
        sws_setColorspaceDetails(m_scaler.get(), matrix, frame->color_range == AVCOL_RANGE_JPEG ? 1 : 0,
                                 matrix, 0, 0, 1 << 16, 1 << 16);
        m_converted.reset(av_frame_alloc());
        m_converted->format = AV_PIX_FMT_YUV420P;
        m_converted->width = m_size.width();
        m_converted->height = m_size.height();
        if (av_frame_get_buffer(m_converted.get(), 0) < 0)
            return nullptr;
        sws_scale(m_scaler.get(), frame->data, frame->linesize, 0, frame->height, m_converted->data,
                  m_converted->linesize);
        return m_converted.get();
    }

    void encodeSound(bool isLast)
    {
        const auto perFrame = std::size_t(m_soundEncoder->frame_size) * 2;
        if (isLast && m_samples.size() % perFrame != 0)
            m_samples.resize((m_samples.size() / perFrame + 1) * perFrame);
        std::size_t done = 0;
        for (; m_samples.size() - done >= perFrame && m_error >= 0; done += perFrame) {
            if (av_frame_make_writable(m_soundFrame.get()) < 0) {
                m_error = AVERROR(ENOMEM);
                return;
            }
            for (int channel = 0; channel < 2; ++channel) {
                auto *plane = reinterpret_cast<float *>(m_soundFrame->extended_data[channel]);
                for (int i = 0; i < m_soundFrame->nb_samples; ++i)
                    plane[i] = m_samples[done + std::size_t(2 * i + channel)];
            }
            m_soundFrame->pts = m_encodedSamples;
            m_encodedSamples += m_soundFrame->nb_samples;
            const int error = avcodec_send_frame(m_soundEncoder.get(), m_soundFrame.get());
            m_error = error < 0 ? error : m_error;
            takePackets(*m_soundEncoder, 1);
        }
        m_samples.erase(m_samples.begin(), m_samples.begin() + std::ptrdiff_t(done));
    }

    void takePackets(AVCodecContext &encoder, int stream)
    {
        while (m_error >= 0 && avcodec_receive_packet(&encoder, m_packet.get()) >= 0) {
            if (stream == 0 && m_packet->pts == m_lastPts && m_lastDuration > 0)
                m_packet->duration = m_lastDuration;
            if (stream == 0 && m_copy && !useLengths())
                return;
            m_packet->stream_index = stream;
            av_packet_rescale_ts(m_packet.get(), encoder.time_base, m_output->streams[stream]->time_base);
            const int error = av_interleaved_write_frame(m_output.get(), m_packet.get());
            m_error = error < 0 ? error : m_error;
        }
    }

    // The packets that are taken over have no start codes, so that the others mustn't either.
    bool useLengths()
    {
        const QByteArray units =
            PictureCopy::withLengths({reinterpret_cast<const char *>(m_packet->data), m_packet->size});
        AvPacket converted(av_packet_alloc());
        m_error = av_new_packet(converted.get(), int(units.size()));
        if (m_error < 0)
            return false;
        std::ranges::copy(units, converted->data);
        av_packet_copy_props(converted.get(), m_packet.get());
        m_packet = std::move(converted);
        return true;
    }

    Result<void> finish()
    {
        if (hasHead() && !m_hasHeld)
            return fail(PlatformTexts::tr("There are no pictures in that part of the film."));
        if (!m_picturesDone)
            endHead();
        m_isSoundDone = true;
        copyPictures(m_to);
        if (m_progress.isCancelled)
            return cancelled();
        if (m_mixer) {
            m_mixer->end(m_to - m_from);
            encodeSound(true);
            avcodec_send_frame(m_soundEncoder.get(), nullptr);
            takePackets(*m_soundEncoder, 1);
        }
        int error = m_error >= 0 ? av_write_trailer(m_output.get()) : m_error;
        avio_flush(m_output->pb);
        error = error < 0 ? error : m_output->pb->error;
        const int closed = avio_closep(&m_output->pb);
        error = error < 0 ? error : closed;
        if (error < 0)
            return cannotExport(error);
        m_progress.done = 1;
        return {};
    }

    MovieSource &m_source;
    PictureCopy *m_copy; // null once it has given all
    double m_from;
    double m_to;
    double m_headEnd; // up to there pictures are encoded
    double m_reached = 0;
    bool m_isSoundDone = false;
    WorkProgress &m_progress;
    QSize m_size;
    int m_pictureStream = -1;
    AvOutput m_output;
    AvCodec m_encoder;
    AvScaler m_scaler;
    AvFrame m_converted;
    AvFrame m_held; // waits for the next picture
    double m_heldTime = 0;
    bool m_hasHeld = false;
    bool m_picturesDone = false;
    std::int64_t m_lastPts = -1;
    std::int64_t m_lastDuration = 0; // of the last picture
    AvCodec m_soundEncoder;
    AvFrame m_soundFrame;
    std::optional<SoundMixer> m_mixer;
    std::vector<float> m_samples; // less than a frame of the encoder
    std::int64_t m_encodedSamples = 0;
    AvPacket m_packet;
    int m_error = 0;
};

} // namespace

Result<void> exportMp4File(const QString &path, const QString &target, double from, double to,
                           WorkProgress &progress)
{
    auto source = MovieSource::open(path, MovieSource::Parts::Both);
    if (!source)
        return std::unexpected(source.error());
    if (const auto copy = PictureCopy::of(path, from, to)) {
        const auto copied = Export(**source, copy.get(), from, to, progress).run(target);
        if (!copy->isBroken())
            return copied;
        source = MovieSource::open(path, MovieSource::Parts::Both);
        if (!source)
            return std::unexpected(source.error());
    }
    return Export(**source, nullptr, from, to, progress).run(target);
}
