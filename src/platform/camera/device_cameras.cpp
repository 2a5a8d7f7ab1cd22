#include "platform/camera/device_cameras.h"

#include "platform/texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <atomic>
#include <chrono>
#include <thread>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavdevice/avdevice.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

namespace {

using Clock = std::chrono::steady_clock;

struct Release {
    void operator()(AVFormatContext *held) const { avformat_close_input(&held); }
    void operator()(AVCodecContext *held) const { avcodec_free_context(&held); }
    void operator()(AVFrame *held) const { av_frame_free(&held); }
    void operator()(AVPacket *held) const { av_packet_free(&held); }
    void operator()(SwsContext *held) const { sws_freeContext(held); }
};
template <typename T>
using Owned = std::unique_ptr<T, Release>;

class DeviceStream : public CameraStream {
public:
    DeviceStream(int side, std::function<void(const QImage &)> picture, std::function<void()> lost)
        : m_side(side),
          m_picture(std::move(picture)),
          m_lost(std::move(lost)),
          m_frame(av_frame_alloc()),
          m_packet(av_packet_alloc())
    {}
    ~DeviceStream() override
    {
        m_stops = true;
        if (m_thread.joinable())
            m_thread.join();
    }
    DeviceStream(const DeviceStream &) = delete;
    DeviceStream &operator=(const DeviceStream &) = delete;

    bool open(const QString &device)
    {
        m_isFilm = QFileInfo(device).isFile();
        // The size and rate that nearly every camera has; otherwise its own.
        if (!openInput(device, !m_isFilm) && (m_isFilm || !openInput(device, false)))
            return false;
        if (avformat_find_stream_info(m_input.get(), nullptr) < 0)
            return false;
        const AVCodec *codec = nullptr;
        m_stream = av_find_best_stream(m_input.get(), AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
        if (m_stream < 0 || !codec)
            return false;
        m_decoder.reset(avcodec_alloc_context3(codec));
        if (!m_decoder || avcodec_parameters_to_context(m_decoder.get(), stream().codecpar) < 0 ||
            avcodec_open2(m_decoder.get(), codec, nullptr) < 0 || !readFrame())
            return false;
        m_thread = std::thread([this] { run(); });
        return true;
    }

private:
    AVStream &stream() const { return *m_input->streams[m_stream]; }

    static int isStopped(void *self) { return static_cast<DeviceStream *>(self)->m_stops ? 1 : 0; }

    bool openInput(const QString &device, bool asUsual)
    {
        AVFormatContext *input = avformat_alloc_context();
        if (!input)
            return false;
        input->interrupt_callback = {&DeviceStream::isStopped, this};
        const AVInputFormat *format = m_isFilm ? nullptr : av_find_input_format("v4l2");
        if (!m_isFilm && !format)
            return false;
        AVDictionary *options = nullptr;
        if (asUsual) {
            av_dict_set(&options, "video_size", "640x480", 0);
            av_dict_set(&options, "framerate", "30", 0);
        }
        const int error =
            avformat_open_input(&input, QFile::encodeName(device).constData(), format, &options);
        av_dict_free(&options);
        m_input.reset(error < 0 ? nullptr : input);
        return error >= 0;
    }

    // A film begins anew at its end.
    bool readFrame()
    {
        bool hasBegunAnew = false;
        while (!m_stops) {
            if (avcodec_receive_frame(m_decoder.get(), m_frame.get()) >= 0)
                return true;
            const int error = av_read_frame(m_input.get(), m_packet.get());
            if (error < 0) {
                if (!m_isFilm || hasBegunAnew ||
                    av_seek_frame(m_input.get(), -1, 0, AVSEEK_FLAG_BACKWARD) < 0)
                    return false;
                avcodec_flush_buffers(m_decoder.get());
                hasBegunAnew = true;
                continue;
            }
            if (m_packet->stream_index == m_stream)
                avcodec_send_packet(m_decoder.get(), m_packet.get()); // what is broken is passed over
            av_packet_unref(m_packet.get());
        }
        return false;
    }

    void run()
    {
        const AVRational rate = stream().avg_frame_rate;
        const auto pause = std::chrono::duration_cast<Clock::duration>(
            std::chrono::duration<double>(rate.num > 0 && rate.den > 0 ? av_q2d(av_inv_q(rate)) : 0.04));
        auto next = Clock::now();
        do {
            const QImage picture = square(*m_frame);
            if (!picture.isNull())
                m_picture(picture);
            if (m_isFilm) // a device has a pace of its own
                std::this_thread::sleep_until(next += pause);
        } while (readFrame());
        if (!m_stops)
            m_lost();
    }

    QImage square(const AVFrame &frame)
    {
        const int from = std::min(frame.width, frame.height);
        const QSize scaled(int(std::lround(double(frame.width) * m_side / from)) & ~1,
                           int(std::lround(double(frame.height) * m_side / from)) & ~1);
        m_scaler.reset(sws_getCachedContext(m_scaler.release(), frame.width, frame.height,
                                            AVPixelFormat(frame.format), scaled.width(), scaled.height(),
                                            AV_PIX_FMT_BGR0, SWS_BILINEAR, nullptr, nullptr, nullptr));
        QImage picture(scaled, QImage::Format_RGB32);
        if (!m_scaler || picture.isNull())
            return {};
        std::uint8_t *rows[] = {picture.bits(), nullptr, nullptr, nullptr};
        const int strides[] = {int(picture.bytesPerLine()), 0, 0, 0};
        if (sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height, rows, strides) <= 0)
            return {};
        return picture.copy((scaled.width() - m_side) / 2, (scaled.height() - m_side) / 2, m_side, m_side);
    }

    int m_side;
    std::function<void(const QImage &)> m_picture;
    std::function<void()> m_lost;
    bool m_isFilm = false;
    Owned<AVFormatContext> m_input;
    int m_stream = -1;
    Owned<AVCodecContext> m_decoder;
    Owned<AVFrame> m_frame;
    Owned<AVPacket> m_packet;
    Owned<SwsContext> m_scaler;
    std::atomic<bool> m_stops = false;
    std::thread m_thread;
};

// In the order of their numbers.
QStringList devices()
{
    const QString chosen = qEnvironmentVariable("LUMENPOST_CAMERA");
    if (!chosen.isEmpty())
        return {chosen};
    QStringList found;
    constexpr int kMost = 16;
    for (int i = 0; i < kMost; ++i) {
        const QString device = QStringLiteral("/dev/video%1").arg(i);
        if (QFileInfo::exists(device))
            found.append(device);
    }
    return found;
}

} // namespace

Result<std::unique_ptr<CameraStream>>
DeviceCameras::open(int side, std::function<void(const QImage &)> picture, std::function<void()> lost)
{
    avdevice_register_all();
    for (const QString &device : devices()) {
        auto stream = std::make_unique<DeviceStream>(side, picture, lost);
        if (stream->open(device))
            return stream;
    }
    return fail(Error::Kind::Unavailable, PlatformTexts::tr("There is no camera that can be used."));
}
