#include "platform/recognition/pixel_source.h"

#include <opencv2/imgproc.hpp>

namespace {

constexpr qint64 kBandPixels = 4'000'000; // converted at once

} // namespace

PixelSource::PixelSource(QImage image)
    : m_image(std::move(image)),
      m_isUsual(m_image.format() == QImage::Format_RGB32 || m_image.format() == QImage::Format_ARGB32 ||
                m_image.format() == QImage::Format_ARGB32_Premultiplied)
{}

cv::Mat PixelSource::rows(const QRect &part) const
{
    if (m_isUsual)
        return cv::Mat(part.height(), part.width(), CV_8UC4,
                       const_cast<uchar *>(m_image.constScanLine(part.y())) + qsizetype(part.x()) * 4,
                       size_t(m_image.bytesPerLine()));
    const QImage converted = m_image.copy(part).convertToFormat(QImage::Format_RGB32);
    return cv::Mat(converted.height(), converted.width(), CV_8UC4, const_cast<uchar *>(converted.constBits()),
                   size_t(converted.bytesPerLine()))
        .clone();
}

cv::Mat PixelSource::scaled(const QRect &part, QSize size) const
{
    if (part.size() == size)
        return rows(part);
    const int method = size.width() < part.width() ? cv::INTER_AREA : cv::INTER_LINEAR;
    const qint64 pixels = qint64(part.width()) * part.height();
    const int bands =
        m_isUsual ? 1 : int(std::clamp<qint64>(pixels / kBandPixels, 1, std::max(1, size.height() / 8)));
    cv::Mat result(size.height(), size.width(), CV_8UC4);
    for (int i = 0; i < bands; ++i) {
        const int from = size.height() * i / bands;
        const int to = size.height() * (i + 1) / bands;
        const int top = int(qint64(part.height()) * from / size.height());
        const int bottom = std::max(top + 1, int(qint64(part.height()) * to / size.height()));
        cv::Mat band = result.rowRange(from, to);
        cv::resize(rows(QRect(part.x(), part.y() + top, part.width(), bottom - top)), band, band.size(), 0, 0,
                   method);
    }
    return result;
}
