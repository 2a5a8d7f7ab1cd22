#include "platform/media/picture_maker.h"

#include <QTransform>

namespace {

// Without the chroma at full width white comes out as (255, 253, 255) and edges of colours lie 33 dB beside
// the film.
constexpr int kFlags = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT;

} // namespace

int colorSpaceOf(const AVFrame &frame)
{
    if (frame.colorspace == AVCOL_SPC_UNSPECIFIED || frame.colorspace == AVCOL_SPC_RGB)
        return frame.height >= 720 ? SWS_CS_ITU709 : SWS_CS_ITU601;
    return frame.colorspace;
}

QImage PictureMaker::make(const AVFrame &frame)
{
    if (frame.width <= 0 || frame.height <= 0)
        return {};
    m_scaler.reset(sws_getCachedContext(m_scaler.release(), frame.width, frame.height,
                                        AVPixelFormat(frame.format), m_size.width(), m_size.height(),
                                        AV_PIX_FMT_BGR0, kFlags, nullptr, nullptr, nullptr));
    QImage picture(m_size, QImage::Format_RGB32);
    if (!m_scaler || picture.isNull())
        return {};
    const int isFull = frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
    sws_setColorspaceDetails(m_scaler.get(), sws_getCoefficients(colorSpaceOf(frame)), isFull,
                             sws_getCoefficients(SWS_CS_DEFAULT), 1, 0, 1 << 16, 1 << 16);
    std::uint8_t *rows[] = {picture.bits(), nullptr, nullptr, nullptr};
    const int strides[] = {int(picture.bytesPerLine()), 0, 0, 0};
    if (sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height, rows, strides) <= 0)
        return {};
    // The scaler leaves the fourth byte as it likes.
    auto *words = reinterpret_cast<quint32 *>(picture.bits());
    const qsizetype count = picture.sizeInBytes() / 4;
    for (qsizetype i = 0; i < count; ++i)
        words[i] |= 0xff000000u;
    return m_turns == 0 ? picture : picture.transformed(QTransform().rotate(90.0 * m_turns));
}
