#pragma once

#include "base/result.h"

#include <QFile>
#include <QString>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/error.h>
#include <libavutil/frame.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

// Owners of what the FFmpeg libraries allocate.
struct AvRelease {
    void operator()(AVCodecContext *held) const { avcodec_free_context(&held); }
    void operator()(AVFrame *held) const { av_frame_free(&held); }
    void operator()(AVPacket *held) const { av_packet_free(&held); }
    void operator()(SwrContext *held) const { swr_free(&held); }
    void operator()(SwsContext *held) const { sws_freeContext(held); }
};
using AvCodec = std::unique_ptr<AVCodecContext, AvRelease>;
using AvFrame = std::unique_ptr<AVFrame, AvRelease>;
using AvPacket = std::unique_ptr<AVPacket, AvRelease>;
using AvResampler = std::unique_ptr<SwrContext, AvRelease>;
using AvScaler = std::unique_ptr<SwsContext, AvRelease>;

struct AvCloseInput {
    void operator()(AVFormatContext *held) const { avformat_close_input(&held); }
};
using AvInput = std::unique_ptr<AVFormatContext, AvCloseInput>;

// An output whose bytes go elsewhere: its writer is owned by someone else.
struct AvFreeContext {
    void operator()(AVFormatContext *held) const { avformat_free_context(held); }
};
using AvOutput = std::unique_ptr<AVFormatContext, AvFreeContext>;

// For the log.
inline QString avReason(int error)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return QString::fromUtf8(text);
}

// A file, whatever its name looks like.
inline QByteArray avUrl(const QString &path)
{
    return "file:" + QFile::encodeName(path);
}
