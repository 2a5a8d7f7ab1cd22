#include "document/png_reader.h"

#include "document/image_files.h"
#include "support/temporary_folder.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QRandomGenerator>
#include <gtest/gtest.h>

namespace {

// A photo's noise, a gradient, letters and plain ground: adaptive encoders choose every row filter.
QImage mixed(const QSize &size, QImage::Format format)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(244, 244, 247));
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, size.width(), size.height());
    gradient.setColorAt(0, QColor(90, 70, 250));
    gradient.setColorAt(1, QColor(250, 170, 60));
    painter.fillRect(0, 0, size.width() / 2, size.height(), gradient);
    QRandomGenerator random(7);
    for (int y = size.height() / 2; y < size.height(); ++y) {
        for (int x = 0; x < size.width() / 3; ++x)
            image.setPixel(x, y, qRgb(random.bounded(256), x % 256, y % 256));
    }
    painter.drawText(image.rect(), Qt::AlignCenter | Qt::TextWordWrap, "Letters on plain ground");
    if (format == QImage::Format_ARGB32) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(size.width() / 2, 0, size.width() / 3, size.height() / 2, QColor(200, 30, 90, 77));
        painter.fillRect(0, 0, size.width() / 4, size.height() / 4, Qt::transparent);
    }
    painter.end();
    return image.convertToFormat(format);
}

QByteArray encoded(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, "PNG"));
    return buffer.data();
}

double meanDifference(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return 1000;
    double total = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb one = a.pixel(x, y);
            const QRgb other = b.pixel(x, y);
            total += std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other)) +
                     std::abs(qBlue(one) - qBlue(other)) + std::abs(qAlpha(one) - qAlpha(other));
        }
    }
    return total / (4.0 * a.width() * a.height());
}

} // namespace

TEST(PngReader, ReadsWhatTheGeneralDecoderReads)
{
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_Grayscale8}) {
        for (const QSize size : {QSize(1, 1), QSize(2, 300), QSize(301, 2), QSize(230, 170)}) {
            const QByteArray bytes = encoded(mixed(size, format));
            QImage expected = QImage::fromData(bytes, "PNG");
            const auto read = readPng(bytes);
            ASSERT_TRUE(read) << format << " " << size.width();
            EXPECT_EQ(*read, expected.convertToFormat(read->format())) << format << " " << size.width();
        }
    }
    // Our own encoder writes strips, each by itself.
    const QImage own = mixed({700, 500}, QImage::Format_RGB32);
    EXPECT_EQ(readPng(ImageFiles::encode(own, ImageFiles::Type::Png)), own);
}

TEST(PngReader, ReducesAsAnAverageOfTheWhole)
{
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_Grayscale8}) {
        const QImage image = mixed({960, 720}, format);
        const auto reduced = readReducedPng(encoded(image), 80);
        ASSERT_TRUE(reduced);
        EXPECT_EQ(reduced->size(), QSize(160, 120));
        const QImage expected = image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                                    .scaled(160, 120, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        EXPECT_LT(meanDifference(expected, reduced->convertToFormat(QImage::Format_ARGB32_Premultiplied)),
                  1.0)
            << format;
    }
    // Blocks at the edges that aren't whole, and pictures of a few pixels' height.
    EXPECT_EQ(readReducedPng(encoded(mixed({1000, 3}, QImage::Format_RGB32)), 100)->size(), QSize(200, 1));
    EXPECT_EQ(readReducedPng(encoded(mixed({40, 30}, QImage::Format_RGB32)), 100)->size(), QSize(40, 30));
}

TEST(PngReader, LeavesTheRestToTheGeneralDecoder)
{
    const QImage image = mixed({60, 40}, QImage::Format_RGB32);
    const QByteArray bytes = encoded(image);
    EXPECT_FALSE(readPng(encoded(image.convertToFormat(QImage::Format_RGBA64))));
    EXPECT_FALSE(readPng(encoded(image.convertToFormat(QImage::Format_Indexed8))));
    EXPECT_FALSE(readPng(ImageFiles::encode(image, ImageFiles::Type::Jpeg)));
    // Cut off or changed at any place: nothing, and no reading beyond the end.
    for (qsizetype length = 0; length < bytes.size(); length += 13)
        EXPECT_FALSE(readReducedPng(bytes.left(length), 30)) << length;
    for (qsizetype at = 8; at < bytes.size() - 12; at += 97) {
        QByteArray changed = bytes;
        changed[at] = static_cast<char>(changed[at] ^ 0x55);
        std::ignore = readPng(changed);
        std::ignore = readReducedPng(changed, 30);
    }
}
