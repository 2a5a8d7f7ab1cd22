#include "platform/media/film_writer.h"

#include "platform/media/av.h"
#include "platform/media/film_file.h"
#include "platform/media/yuv_canvas.h"
#include "platform/texts.h"

#include <QFile>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>

using std::chrono::microseconds;
using std::chrono::steady_clock;

namespace {

constexpr AVRational kMicroseconds{1, 1'000'000};
constexpr AVRational kPictureUnit{1, 90'000};
// Frames that wait for the encoder: a fifth of a second at the full rate.
constexpr std::size_t kQueue = 6;
constexpr auto kBetweenKeys = std::chrono::seconds(2);
constexpr auto kFragment = std::chrono::milliseconds(500);
// The quality at which text on a screen shows no fault (constant rate factor of the encoder).
constexpr const char *kQuality = "20";
constexpr int kStereoRate = 160'000, kMonoRate = 96'000; // bits a second

std::unexpected<Error> noEncoder(const QString &detail)
{
    return fail(Error::Kind::Unavailable, PlatformTexts::tr("This machine's FFmpeg can't write films."),
                detail);
}

struct SoundTrack {
    AvCodec encoder;
    AvFrame frame;
    int stream = 0;
    int channels = 0;
    std::int64_t encoded = 0;   // samples
    std::vector<float> waiting; // interleaved, less than a frame
};

class FilmWriter : public MovieWriter {
public:
    FilmWriter(QSize size, std::function<void(const Error &)> failed, std::unique_ptr<FilmFile> file)
        : m_canvas(size),
          m_failed(std::move(failed)),
          m_file(std::move(file)),
          m_packet(av_packet_alloc()),
          m_held(av_packet_alloc())
    {}
    ~FilmWriter() override { static_cast<void>(close()); }

    Result<void> open(const MovieFormat &format)
    {
        AVFormatContext *allocated = nullptr;
        if (const int error = avformat_alloc_output_context2(&allocated, nullptr, "mov", nullptr); error < 0)
            return noEncoder(avReason(error));
        m_output.reset(allocated);
        m_output->pb = m_file->output();
        m_output->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_FLUSH_PACKETS;
        if (const auto added = addPictures(format.size); !added)
            return added;
        for (const SoundSource source : format.sounds) {
            if (const auto added = addSound(SoundSources::channels(source)); !added)
                return added;
        }
        AVDictionary *options = nullptr;
        av_dict_set(&options, "movflags", "empty_moov+default_base_moof+skip_trailer", 0);
        av_dict_set_int(&options, "frag_duration", microseconds(kFragment).count(), 0);
        const int error = avformat_write_header(m_output.get(), &options);
        av_dict_free(&options);
        if (error < 0)
            return noEncoder(avReason(error));
        if (const auto written = m_file->endHeader(); !written)
            return written;
        m_worker = std::thread(&FilmWriter::work, this);
        return {};
    }

    void write(const FilmFrame &frame, std::optional<microseconds> time) override
    {
        const std::lock_guard lock(m_canvasMutex);
        if (!frame.changed.isEmpty()) {
            m_canvas.update(frame.picture, frame.at, frame.changed);
            m_isNew = true;
        }
        if (time)
            queuePicture(*time);
    }

    void repeat(microseconds time) override
    {
        const std::lock_guard lock(m_canvasMutex);
        queuePicture(time);
    }

    void writeSound(qsizetype track, std::span<const float> samples) override
    {
        Job job;
        job.track = track;
        job.samples.assign(samples.begin(), samples.end());
        push(std::move(job));
    }

    Counts counts() const override
    {
        const std::lock_guard lock(m_mutex);
        return m_counts;
    }

    Result<void> close() override
    {
        if (m_worker.joinable()) {
            {
                const std::lock_guard lock(m_mutex);
                m_isClosing = true;
            }
            m_news.notify_one();
            m_worker.join();
        }
        if (m_error)
            return std::unexpected(*m_error);
        return {};
    }

private:
    // A picture, or samples of a track.
    struct Job {
        AvFrame picture;
        bool isChange = false; // else it shows the same as the one before
        qsizetype track = -1;
        std::vector<float> samples;
    };

    Result<void> addPictures(QSize size)
    {
        const AVCodec *codec = avcodec_find_encoder_by_name("libx264");
        if (!codec)
            return noEncoder(QStringLiteral("no libx264"));
        m_encoder.reset(avcodec_alloc_context3(codec));
        m_encoder->width = size.width();
        m_encoder->height = size.height();
        m_encoder->pix_fmt = AV_PIX_FMT_YUV420P;
        m_encoder->time_base = kPictureUnit;
        m_encoder->framerate = {30, 1};
        m_encoder->color_range = AVCOL_RANGE_MPEG;
        m_encoder->colorspace = AVCOL_SPC_BT709;
        m_encoder->color_primaries = AVCOL_PRI_BT709;
        m_encoder->color_trc = AVCOL_TRC_BT709;
        m_encoder->sample_aspect_ratio = {1, 1};
        m_encoder->gop_size = 1 << 16; // keys are set by time
        m_encoder->max_b_frames = 0;
        m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        AVDictionary *options = nullptr;
        av_dict_set(&options, "preset", "veryfast", 0);
        av_dict_set(&options, "crf", kQuality, 0);
        av_dict_set(&options, "forced-idr", "1", 0);
        // Nothing may wait in the encoder: a still screen gives two frames a second, and a killed film must
        // have them.
        av_dict_set(&options, "x264-params", "rc-lookahead=0:sync-lookahead=0:sliced-threads=1:mbtree=0", 0);
        const int error = avcodec_open2(m_encoder.get(), codec, &options);
        av_dict_free(&options);
        if (error < 0)
            return noEncoder(avReason(error));
        AVStream *stream = avformat_new_stream(m_output.get(), nullptr);
        if (!stream || avcodec_parameters_from_context(stream->codecpar, m_encoder.get()) < 0)
            return noEncoder({});
        stream->time_base = kPictureUnit;
        stream->avg_frame_rate = m_encoder->framerate;
        return {};
    }

    Result<void> addSound(int channels)
    {
        const AVCodec *codec = avcodec_find_encoder(AV_CODEC_ID_AAC);
        if (!codec)
            return noEncoder(QStringLiteral("no AAC"));
        SoundTrack track;
        track.channels = channels;
        track.encoder.reset(avcodec_alloc_context3(codec));
        track.encoder->sample_fmt = AV_SAMPLE_FMT_FLTP;
        track.encoder->sample_rate = SoundSources::kRate;
        track.encoder->bit_rate = channels == 1 ? kMonoRate : kStereoRate;
        av_channel_layout_default(&track.encoder->ch_layout, channels);
        track.encoder->time_base = {1, SoundSources::kRate};
        track.encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
        if (const int error = avcodec_open2(track.encoder.get(), codec, nullptr); error < 0)
            return noEncoder(avReason(error));
        AVStream *stream = avformat_new_stream(m_output.get(), nullptr);
        if (!stream || avcodec_parameters_from_context(stream->codecpar, track.encoder.get()) < 0)
            return noEncoder({});
        stream->time_base = track.encoder->time_base;
        track.stream = stream->index;
        track.frame.reset(av_frame_alloc());
        track.frame->format = AV_SAMPLE_FMT_FLTP;
        track.frame->sample_rate = SoundSources::kRate;
        track.frame->nb_samples = track.encoder->frame_size;
        av_channel_layout_copy(&track.frame->ch_layout, &track.encoder->ch_layout);
        if (av_frame_get_buffer(track.frame.get(), 0) < 0)
            return noEncoder({});
        m_sounds.push_back(std::move(track));
        return {};
    }

    // A picture that isn't taken stays on the canvas: the next one shows what it brought.
    void queuePicture(microseconds time)
    {
        AvFrame picture;
        {
            const std::lock_guard lock(m_mutex);
            if (time <= m_lastTime || m_error || m_isClosing)
                return;
            // Behind for a while: as many frames as the encoder manages, evenly spaced.
            const bool isTooSoon = m_spacing > microseconds(0) && time - m_lastTime < m_spacing;
            if (m_pictures >= kQueue || isTooSoon) {
                m_counts.leftOut += m_isNew ? 1 : 0;
                if (m_pictures >= kQueue)
                    m_spacing = std::max(m_spacing, m_encodingTime + m_encodingTime / 8);
                return;
            }
            if (m_pictures == 0 && m_encodingTime < std::chrono::milliseconds(30))
                m_spacing = {};
            ++m_pictures;
            m_lastTime = time;
            if (!m_spare.empty()) {
                picture = std::move(m_spare.back());
                m_spare.pop_back();
            }
        }
        if (!picture)
            picture = newPicture();
        if (!picture)
            return;
        for (int plane = 0; plane < 3; ++plane) {
            const int stride = m_canvas.stride(plane);
            for (int y = 0; y < m_canvas.rows(plane); ++y)
                std::memcpy(picture->data[plane] + std::ptrdiff_t(y) * picture->linesize[plane],
                            m_canvas.plane(plane) + std::ptrdiff_t(y) * stride, std::size_t(stride));
        }
        picture->pts = av_rescale_q(time.count(), kMicroseconds, kPictureUnit);
        Job job;
        job.picture = std::move(picture);
        job.isChange = std::exchange(m_isNew, false);
        push(std::move(job));
    }

    AvFrame newPicture() const
    {
        AvFrame picture(av_frame_alloc());
        picture->format = AV_PIX_FMT_YUV420P;
        picture->width = m_canvas.size().width();
        picture->height = m_canvas.size().height();
        picture->color_range = AVCOL_RANGE_MPEG;
        picture->colorspace = AVCOL_SPC_BT709;
        picture->color_primaries = AVCOL_PRI_BT709;
        picture->color_trc = AVCOL_TRC_BT709;
        if (av_frame_get_buffer(picture.get(), 0) < 0)
            picture.reset();
        return picture;
    }

    void push(Job job)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (m_error || m_isClosing)
                return;
            m_jobs.push_back(std::move(job));
        }
        m_news.notify_one();
    }

    void work()
    {
        while (true) {
            Job job;
            {
                std::unique_lock lock(m_mutex);
                m_news.wait(lock, [this] { return m_isClosing || !m_jobs.empty(); });
                if (m_jobs.empty())
                    break;
                job = std::move(m_jobs.front());
                m_jobs.pop_front();
            }
            if (job.picture)
                encodePicture(std::move(job));
            else
                encodeSound(m_sounds[std::size_t(job.track)], job.samples);
        }
        finish();
    }

    void encodePicture(Job job)
    {
        const auto began = steady_clock::now();
        const std::int64_t sinceKey = job.picture->pts - m_lastKey;
        m_hasChanged = m_hasChanged || job.isChange;
        const bool isKey =
            m_lastKey < 0 || (m_hasChanged && sinceKey >= av_rescale_q(microseconds(kBetweenKeys).count(),
                                                                       kMicroseconds, kPictureUnit));
        job.picture->pict_type = isKey ? AV_PICTURE_TYPE_I : AV_PICTURE_TYPE_NONE;
        if (isKey) {
            m_lastKey = job.picture->pts;
            m_hasChanged = false;
        }
        if (!m_error && avcodec_send_frame(m_encoder.get(), job.picture.get()) < 0)
            tellFailure(PlatformTexts::tr("The film couldn't be encoded."));
        takePackets(*m_encoder, 0);
        const std::lock_guard lock(m_mutex);
        --m_pictures;
        ++m_counts.frames;
        const auto took = std::chrono::duration_cast<microseconds>(steady_clock::now() - began);
        m_encodingTime = (3 * m_encodingTime + took) / 4;
        m_spare.push_back(std::move(job.picture));
    }

    void encodeSound(SoundTrack &track, const std::vector<float> &samples)
    {
        track.waiting.insert(track.waiting.end(), samples.begin(), samples.end());
        const auto perFrame = std::size_t(track.encoder->frame_size) * std::size_t(track.channels);
        std::size_t done = 0;
        for (; track.waiting.size() - done >= perFrame; done += perFrame)
            encodeSamples(track, track.waiting.data() + done);
        track.waiting.erase(track.waiting.begin(), track.waiting.begin() + std::ptrdiff_t(done));
    }

    void encodeSamples(SoundTrack &track, const float *samples)
    {
        if (av_frame_make_writable(track.frame.get()) < 0)
            return tellFailure(PlatformTexts::tr("The film couldn't be encoded."));
        for (int channel = 0; channel < track.channels; ++channel) {
            auto *plane = reinterpret_cast<float *>(track.frame->extended_data[channel]);
            for (int i = 0; i < track.frame->nb_samples; ++i)
                plane[i] = samples[i * track.channels + channel];
        }
        track.frame->pts = track.encoded;
        track.encoded += track.frame->nb_samples;
        if (!m_error && avcodec_send_frame(track.encoder.get(), track.frame.get()) < 0)
            tellFailure(PlatformTexts::tr("The film couldn't be encoded."));
        takePackets(*track.encoder, track.stream);
    }

    void takePackets(AVCodecContext &encoder, int stream)
    {
        while (!m_error && avcodec_receive_packet(&encoder, m_packet.get()) >= 0) {
            // What an encoder of sound puts before the beginning belongs to no moment of the film.
            if (m_packet->pts < 0) {
                av_packet_unref(m_packet.get());
                continue;
            }
            m_packet->stream_index = stream;
            if (stream == 0)
                writePicture();
            else
                writePacket(*m_packet, encoder.time_base);
            av_packet_unref(m_packet.get());
        }
    }

    // A picture's packet waits for the next one, which tells how long it was shown: pieces of the file begin
    // where those before them end.
    void writePicture()
    {
        if (m_held->size > 0) {
            m_held->duration = m_packet->pts - m_held->pts;
            writePacket(*m_held, m_encoder->time_base);
            av_packet_unref(m_held.get());
        }
        av_packet_move_ref(m_held.get(), m_packet.get());
    }

    void writePacket(AVPacket &packet, AVRational unit)
    {
        av_packet_rescale_ts(&packet, unit, m_output->streams[packet.stream_index]->time_base);
        if (m_error)
            return;
        if (av_write_frame(m_output.get(), &packet) < 0 || m_output->pb->error < 0)
            tellFailure(PlatformTexts::tr("The film couldn't be written: %1.").arg(m_file->failure()));
        else
            m_file->keep();
    }

    void finish()
    {
        for (SoundTrack &track : m_sounds) {
            if (!track.waiting.empty()) {
                track.waiting.resize(std::size_t(track.encoder->frame_size) * std::size_t(track.channels));
                encodeSamples(track, track.waiting.data());
                track.waiting.clear();
            }
            avcodec_send_frame(track.encoder.get(), nullptr);
            takePackets(*track.encoder, track.stream);
        }
        avcodec_send_frame(m_encoder.get(), nullptr);
        takePackets(*m_encoder, 0);
        if (m_held->size > 0) {
            m_held->duration = av_rescale_q(1, AVRational{1, 30}, kPictureUnit);
            writePacket(*m_held, m_encoder->time_base);
        }
        if (!m_error && (av_write_trailer(m_output.get()) < 0 || m_output->pb->error < 0))
            tellFailure(PlatformTexts::tr("The film couldn't be written: %1.").arg(m_file->failure()));
        if (m_error)
            m_file->dropTorn();
        else
            m_file->keep();
    }

    void tellFailure(const QString &sentence)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (m_error)
                return;
            m_error = Error{Error::Kind::Failed, sentence, {}};
            m_jobs.clear();
        }
        if (m_failed)
            m_failed(*m_error);
    }

    std::mutex m_canvasMutex; // taken before m_mutex
    YuvCanvas m_canvas;
    bool m_isNew = false; // the canvas has changed since it was last queued

    mutable std::mutex m_mutex;
    std::condition_variable m_news;
    std::deque<Job> m_jobs;
    std::vector<AvFrame> m_spare;
    std::size_t m_pictures = 0; // of the jobs, with the one in work
    microseconds m_lastTime{-1};
    microseconds m_encodingTime{0}; // of a frame, lately
    microseconds m_spacing{0};      // between frames while the encoder can't follow
    Counts m_counts;
    bool m_isClosing = false;
    std::optional<Error> m_error;

    // The worker's
    std::function<void(const Error &)> m_failed;
    std::unique_ptr<FilmFile> m_file;
    AvOutput m_output;
    AvCodec m_encoder;
    std::vector<SoundTrack> m_sounds;
    AvPacket m_packet;
    AvPacket m_held; // the last picture's
    std::int64_t m_lastKey = -1;
    bool m_hasChanged = false; // since the last key
    std::thread m_worker;
};

} // namespace

Result<std::unique_ptr<MovieWriter>> makeFilmWriter(const QString &path, const MovieFormat &format,
                                                    std::function<void(const Error &)> failed)
{
    auto file = FilmFile::create(path);
    if (!file)
        return std::unexpected(file.error());
    auto writer = std::make_unique<FilmWriter>(format.size, std::move(failed), std::move(*file));
    if (const auto opened = writer->open(format); !opened) {
        writer.reset();
        QFile::remove(path);
        return std::unexpected(opened.error());
    }
    return writer;
}
