#include "capture/row_signatures.h"

#include "capture/pixel_rows.h"

#include <QColorSpace>
#include <array>
#include <cstring>

namespace {

constexpr int kScrollBarColumns = 48;
constexpr int kLeastColumns = 4;

constexpr quint64 kColorsOfTwo = 0x00ffffff00ffffff;

// Each row is a serial chain of multiplications; several rows side by side keep the multiplier busy.
template <int Lanes>
void hashRows(const QImage &image, int firstRow, int columns, quint64 *hashes)
{
    std::array<const uchar *, Lanes> row;
    std::array<quint64, Lanes> state;
    for (int lane = 0; lane < Lanes; ++lane) {
        row[lane] = image.constScanLine(firstRow + lane);
        state[lane] = PixelRows::kSeed;
    }
    for (int x = 0; x + 1 < columns; x += 2) {
        for (int lane = 0; lane < Lanes; ++lane) {
            quint64 pixels;
            std::memcpy(&pixels, row[lane] + qsizetype(x) * 4, sizeof pixels);
            state[lane] = PixelRows::mixed(state[lane], pixels & kColorsOfTwo);
        }
    }
    for (int lane = 0; lane < Lanes; ++lane) {
        if (columns % 2 == 1) {
            quint32 pixel;
            std::memcpy(&pixel, row[lane] + qsizetype(columns - 1) * 4, sizeof pixel);
            state[lane] = PixelRows::mixed(state[lane], pixel & PixelRows::kColors);
        }
        hashes[firstRow + lane] = state[lane];
    }
}

bool isUniform(const quint32 *row, int columns)
{
    constexpr int kBlock = 64; // long enough to run in vectors, short enough to stop early
    for (int start = 0; start < columns; start += kBlock) {
        const int end = std::min(columns, start + kBlock);
        quint32 differing = 0;
        for (int x = start; x < end; ++x)
            differing |= row[x] ^ row[0];
        if (differing & PixelRows::kColors)
            return false;
    }
    return true;
}

} // namespace

int RowSignatures::comparedColumns(int width)
{
    return std::min(width, std::max(width, kScrollBarColumns + kLeastColumns) - kScrollBarColumns);
}

QImage RowSignatures::comparable(const QImage &image)
{
    QImage pixels = image;
    const QColorSpace sRgb(QColorSpace::SRgb);
    if (pixels.colorSpace().isValid() && pixels.colorSpace() != sRgb)
        pixels = pixels.convertedToColorSpace(sRgb);
    if (pixels.format() == QImage::Format_RGB32 || pixels.format() == QImage::Format_ARGB32_Premultiplied)
        return pixels;
    return pixels.convertToFormat(pixels.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                           : QImage::Format_RGB32);
}

std::optional<RowSignatures> RowSignatures::of(const QImage &image)
{
    RowSignatures signatures;
    if (image.width() == 0 || image.height() == 0)
        return signatures;
    const QImage pixels = comparable(image);
    if (pixels.isNull())
        return {};

    const int columns = comparedColumns(pixels.width());
    const int height = pixels.height();
    signatures.hashes.resize(height);
    signatures.uniform.resize(height);

    constexpr int kLanes = 4; // a step takes five cycles, the multiplier starts one a cycle
    int y = 0;
    for (; y + kLanes <= height; y += kLanes)
        hashRows<kLanes>(pixels, y, columns, signatures.hashes.data());
    for (; y < height; ++y)
        hashRows<1>(pixels, y, columns, signatures.hashes.data());
    for (y = 0; y < height; ++y)
        signatures.uniform[y] =
            isUniform(reinterpret_cast<const quint32 *>(pixels.constScanLine(y)), columns);
    return signatures;
}
