#include "document/soft_shadow.h"

#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace {

// Up to here the Gaussian is summed directly, in eight-bit weights; beyond, three box blurs are as good and
// cheaper.
constexpr double kLargestDirectSigma = 4;
constexpr int kTileSide = 64;

// Weights of distance 0, 1, 2 … from the middle; the whole kernel sums to 256.
std::vector<uint16_t> gaussianWeights(double sigma)
{
    const int radius = static_cast<int>(std::ceil(sigma * 3));
    std::vector<double> exact(radius + 1);
    double sum = 0;
    for (int i = 0; i <= radius; ++i) {
        exact[i] = std::exp(-0.5 * i * i / (sigma * sigma));
        sum += i == 0 ? exact[i] : 2 * exact[i];
    }
    std::vector<uint16_t> weights(radius + 1);
    int rest = 256;
    for (int i = radius; i > 0; --i) {
        weights[i] = static_cast<uint16_t>(std::lround(exact[i] / sum * 256));
        rest -= 2 * weights[i];
    }
    weights[0] = static_cast<uint16_t>(rest);
    return weights;
}

// out[x] for x in [0, count) from in[x - radius … x + radius].
void convolve(const uint8_t *in, uint8_t *out, int count, qsizetype step,
              const std::vector<uint16_t> &weights, uint16_t *sums)
{
    const uint16_t w0 = weights[0];
    for (int x = 0; x < count; ++x)
        sums[x] = static_cast<uint16_t>(in[x] * w0 + 128);
    for (size_t i = 1; i < weights.size(); ++i) {
        const uint16_t w = weights[i];
        if (w == 0)
            continue;
        const uint8_t *before = in - static_cast<qsizetype>(i) * step;
        const uint8_t *after = in + static_cast<qsizetype>(i) * step;
        for (int x = 0; x < count; ++x)
            sums[x] = static_cast<uint16_t>(sums[x] + (before[x] + after[x]) * w);
    }
    for (int x = 0; x < count; ++x)
        out[x] = static_cast<uint8_t>(std::min(sums[x], uint16_t(65280)) >> 8);
}

// The least and the greatest value of a rectangle.
std::pair<uint8_t, uint8_t> range(const QImage &mask, const QRect &rect)
{
    uint8_t low = 255;
    uint8_t high = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const uchar *line = mask.constScanLine(y) + rect.left();
        for (int x = 0; x < rect.width(); ++x) {
            low = std::min(low, line[x]);
            high = std::max(high, line[x]);
        }
    }
    return {low, high};
}

struct Tile {
    QRect rect;
    enum { Empty, Flat, Mixed } kind = Mixed;
    uint8_t value = 0; // of a flat one
};

// Cuts a mask into tiles and says which of them a blur of `radius` <= tileSide changes at all. What lies
// beyond the mask counts as empty.
std::vector<Tile> tilesOf(const QImage &mask)
{
    const int columns = (mask.width() + kTileSide - 1) / kTileSide;
    const int rows = (mask.height() + kTileSide - 1) / kTileSide;
    std::vector<std::pair<uint8_t, uint8_t>> ranges(static_cast<size_t>(columns) * rows);
    std::vector<Tile> tiles(ranges.size());
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const QRect rect = QRect(column * kTileSide, row * kTileSide, kTileSide, kTileSide) & mask.rect();
            tiles[row * columns + column].rect = rect;
            ranges[row * columns + column] = range(mask, rect);
        }
    }
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            uint8_t low = 255;
            uint8_t high = 0;
            for (int r = row - 1; r <= row + 1; ++r) {
                for (int c = column - 1; c <= column + 1; ++c) {
                    const bool inside = r >= 0 && c >= 0 && r < rows && c < columns;
                    const auto [l, h] = inside ? ranges[r * columns + c] : std::pair<uint8_t, uint8_t>(0, 0);
                    low = std::min(low, l);
                    high = std::max(high, h);
                }
            }
            Tile &tile = tiles[row * columns + column];
            tile.kind = high == 0 ? Tile::Empty : low == high ? Tile::Flat : Tile::Mixed;
            tile.value = low;
        }
    }
    return tiles;
}

// The blurred content of one tile. `mask` must reach `radius` beyond what is asked for, or end there.
void blurTile(const QImage &mask, const QRect &tile, const std::vector<uint16_t> &weights, QImage &out)
{
    const int radius = static_cast<int>(weights.size()) - 1;
    const int inWidth = tile.width() + 2 * radius;
    const int inHeight = tile.height() + 2 * radius;
    std::vector<uint8_t> in(static_cast<size_t>(inWidth) * inHeight, 0);
    const QRect wanted = tile.adjusted(-radius, -radius, radius, radius);
    const QRect there = wanted & mask.rect();
    for (int y = there.top(); y <= there.bottom(); ++y)
        std::memcpy(in.data() + static_cast<size_t>(y - wanted.top()) * inWidth +
                        (there.left() - wanted.left()),
                    mask.constScanLine(y) + there.left(), there.width());

    std::vector<uint16_t> sums(tile.width());
    std::vector<uint8_t> across(static_cast<size_t>(tile.width()) * inHeight);
    for (int y = 0; y < inHeight; ++y)
        convolve(in.data() + static_cast<size_t>(y) * inWidth + radius,
                 across.data() + static_cast<size_t>(y) * tile.width(), tile.width(), 1, weights,
                 sums.data());
    for (int y = 0; y < tile.height(); ++y)
        convolve(across.data() + static_cast<size_t>(y + radius) * tile.width(), out.scanLine(y),
                 tile.width(), tile.width(), weights, sums.data());
}

// One pass of a moving average over `count` values `step` apart.
void boxPass(const uint8_t *in, uint8_t *out, int count, qsizetype step, int radius)
{
    const int width = 2 * radius + 1;
    const uint32_t reciprocal = ((1u << 24) + width / 2) / width;
    uint32_t sum = 0;
    for (int i = 0; i <= std::min(radius, count - 1); ++i)
        sum += in[i * step];
    for (int i = 0; i < count; ++i) {
        out[i * step] = static_cast<uint8_t>((static_cast<uint64_t>(sum) * reciprocal + (1u << 23)) >> 24);
        if (i + radius + 1 < count)
            sum += in[(i + radius + 1) * step];
        if (i - radius >= 0)
            sum -= in[(i - radius) * step];
    }
}

// Three boxes whose variances add up to the Gaussian's (Kovesi, Fast Almost-Gaussian Filtering, 2010).
std::array<int, 3> boxRadii(double sigma)
{
    const double ideal = std::sqrt(12 * sigma * sigma / 3 + 1);
    int lower = static_cast<int>(std::floor(ideal));
    if (lower % 2 == 0)
        --lower;
    const double count = (12 * sigma * sigma - 3.0 * lower * lower - 12.0 * lower - 9) / (-4.0 * lower - 4);
    const int lowerOnes = std::clamp(static_cast<int>(std::lround(count)), 0, 3);
    std::array<int, 3> radii;
    for (int i = 0; i < 3; ++i)
        radii[i] = ((i < lowerOnes ? lower : lower + 2) - 1) / 2;
    return radii;
}

void boxBlur(QImage &mask, double sigma)
{
    const int width = mask.width();
    const int height = mask.height();
    const qsizetype stride = mask.bytesPerLine();
    uint8_t *pixels = mask.bits();
    std::vector<uint8_t> a(std::max(width, height));
    std::vector<uint8_t> b(a.size());
    const std::array<int, 3> radii = boxRadii(sigma);
    for (int y = 0; y < height; ++y) {
        uint8_t *line = pixels + y * stride;
        boxPass(line, a.data(), width, 1, radii[0]);
        boxPass(a.data(), b.data(), width, 1, radii[1]);
        boxPass(b.data(), line, width, 1, radii[2]);
    }
    for (int x = 0; x < width; ++x) {
        for (int y = 0; y < height; ++y)
            a[y] = pixels[y * stride + x];
        boxPass(a.data(), b.data(), height, 1, radii[0]);
        boxPass(b.data(), a.data(), height, 1, radii[1]);
        boxPass(a.data(), b.data(), height, 1, radii[2]);
        for (int y = 0; y < height; ++y)
            pixels[y * stride + x] = b[y];
    }
}

// A premultiplied picture of the colour, as opaque as the mask.
QImage tinted(const QImage &mask, const QRect &rect, const QColor &color)
{
    QImage image(rect.size(), QImage::Format_ARGB32_Premultiplied);
    std::array<QRgb, 256> table;
    const QRgb full = color.rgba();
    for (int a = 0; a < 256; ++a)
        table[a] = qPremultiply(qRgba(qRed(full), qGreen(full), qBlue(full), (qAlpha(full) * a + 127) / 255));
    for (int y = 0; y < rect.height(); ++y) {
        const uchar *in = mask.constScanLine(rect.top() + y) + rect.left();
        auto *out = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < rect.width(); ++x)
            out[x] = table[in[x]];
    }
    return image;
}

} // namespace

void blurMask(QImage &mask, double sigma)
{
    if (!(sigma > 0.05) || mask.isNull())
        return;
    if (sigma > kLargestDirectSigma) {
        boxBlur(mask, sigma);
        return;
    }
    const std::vector<uint16_t> weights = gaussianWeights(sigma);
    QImage whole(mask.size(), QImage::Format_Alpha8);
    blurTile(mask, mask.rect(), weights, whole);
    mask = whole;
}

QRectF visibleRect(const QPainter &painter)
{
    if (painter.hasClipping())
        return painter.clipBoundingRect();
    const QPaintDevice *device = painter.device();
    const QRectF whole(0, 0, device->width() * device->devicePixelRatioF(),
                       device->height() * device->devicePixelRatioF());
    return painter.deviceTransform().inverted().mapRect(whole);
}

void SoftShadow::paint(QPainter &painter, const QRectF &bounds,
                       const std::function<void(QPainter &)> &shape) const
{
    paintMask(painter, bounds, [&](QImage &mask, const QTransform &toMask) {
        QPainter masking(&mask);
        masking.setRenderHints(painter.renderHints());
        masking.setTransform(toMask);
        shape(masking);
    });
}

void SoftShadow::paintMask(QPainter &painter, const QRectF &bounds, const MaskFiller &shape) const
{
    const QTransform device = painter.deviceTransform();
    const double scale = std::sqrt(std::abs(device.determinant()));
    const double sigma = blur / 2 * scale;
    const double margin = std::ceil(sigma * 3) + 1;

    // The shadow is worked out in device pixels, where it lies, so that it needs no resampling.
    const QRectF shadowed = bounds.translated(offset).adjusted(-reach(), -reach(), reach(), reach());
    const QRectF seen = device.mapRect(shadowed & visibleRect(painter));
    const QRectF source =
        device.mapRect(bounds.translated(offset)).adjusted(-margin, -margin, margin, margin) &
        seen.adjusted(-margin, -margin, margin, margin);
    const QRect area = source.toAlignedRect();
    if (seen.isEmpty() || area.isEmpty())
        return;

    QImage mask(area.size(), QImage::Format_Alpha8);
    if (mask.isNull())
        return;
    mask.fill(0);
    shape(mask, QTransform::fromTranslate(offset.x(), offset.y()) * device *
                    QTransform::fromTranslate(-area.x(), -area.y()));

    painter.save();
    painter.setWorldTransform(device.inverted() * painter.worldTransform()); // device pixels from here on
    if (sigma > kLargestDirectSigma) {
        blurMask(mask, sigma);
        painter.drawImage(area.topLeft(), tinted(mask, mask.rect(), color));
    } else {
        const std::vector<uint16_t> weights = gaussianWeights(std::max(sigma, 0.1));
        QImage out(kTileSide, kTileSide, QImage::Format_Alpha8);
        for (const Tile &tile : tilesOf(mask)) {
            if (tile.kind == Tile::Empty)
                continue;
            if (tile.kind == Tile::Flat) {
                QColor flat = color;
                flat.setAlphaF(color.alphaF() * static_cast<float>(tile.value) / 255);
                painter.fillRect(tile.rect.translated(area.topLeft()), flat);
                continue;
            }
            blurTile(mask, tile.rect, weights, out);
            painter.drawImage(tile.rect.topLeft() + area.topLeft(),
                              tinted(out, QRect(QPoint(0, 0), tile.rect.size()), color));
        }
    }
    painter.restore();
}

void SoftShadow::paintFrame(QPainter &painter, const QRectF &frame, double radius, Inside inside) const
{
    const auto rounded = [radius](const QRectF &rect) {
        QPainterPath path;
        path.addRoundedRect(rect, radius, radius);
        return path;
    };
    // From here on inwards the blur sees neither the corner nor the far side.
    const int soft = static_cast<int>(std::ceil(blur * 1.5)) + 2;
    const int corner = soft * 2 + static_cast<int>(std::ceil(radius)) + 1;
    const bool whole =
        frame == QRectF(frame.toAlignedRect()) && painter.deviceTransform().type() <= QTransform::TxTranslate;
    if (!whole || frame.width() < 2 * corner || frame.height() < 2 * corner) {
        const QPainterPath path = rounded(frame);
        paint(painter, frame, [&](QPainter &mask) { mask.fillPath(path, Qt::white); });
        return;
    }

    // A small frame with the same corners, one pixel of each edge between them.
    const int side = 2 * corner + 1;
    QImage mask(side, side, QImage::Format_Alpha8);
    mask.fill(0);
    {
        QPainter masking(&mask);
        masking.setRenderHint(QPainter::Antialiasing);
        masking.fillPath(rounded(QRectF(soft, soft, side - 2 * soft, side - 2 * soft)), Qt::white);
    }
    blurMask(mask, blur / 2);
    const QImage small = tinted(mask, mask.rect(), color);

    const QRectF outer = frame.translated(offset).adjusted(-soft, -soft, soft, soft);
    const double w = outer.width() - 2 * corner;
    const double h = outer.height() - 2 * corner;
    const double right = outer.left() + corner + w;
    const double bottom = outer.top() + corner + h;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    const auto piece = [&](double x, double y, double width, double height, int fromX, int fromY, int fromW,
                           int fromH) {
        painter.drawImage(QRectF(x, y, width, height), small.copy(fromX, fromY, fromW, fromH));
    };
    const int far = corner + 1;
    piece(outer.left(), outer.top(), corner, corner, 0, 0, corner, corner);
    piece(right, outer.top(), corner, corner, far, 0, corner, corner);
    piece(outer.left(), bottom, corner, corner, 0, far, corner, corner);
    piece(right, bottom, corner, corner, far, far, corner, corner);
    piece(outer.left() + corner, outer.top(), w, corner, corner, 0, 1, corner);
    piece(outer.left() + corner, bottom, w, corner, corner, far, 1, corner);
    piece(outer.left(), outer.top() + corner, corner, h, 0, corner, corner, 1);
    piece(right, outer.top() + corner, corner, h, far, corner, corner, 1);
    if (inside == Inside::Painted)
        painter.fillRect(QRectF(outer.left() + corner, outer.top() + corner, w, h), color);
    painter.restore();
}
