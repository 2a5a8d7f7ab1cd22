#include "platform/media/yuv_canvas.h"

#include <algorithm>

namespace {

// The matrix of BT.709 for 8 bits in the limited range, times 65536; a chroma row is applied to the sum of
// four pixels, and so divided by 65536 · 4.
constexpr int kYr = 11966, kYg = 40254, kYb = 4064;
constexpr int kUr = -6596, kUg = -22189, kUb = 28785;
constexpr int kVr = 28785, kVg = -26145, kVb = -2640;
constexpr int kYOffset = (16 << 16) + (1 << 15);
constexpr int kUvOffset = (128 << 18) + (1 << 17);

struct Rows {
    const std::uint32_t *upper;
    const std::uint32_t *lower;
    std::uint8_t *upperY;
    std::uint8_t *lowerY;
    std::uint8_t *u;
    std::uint8_t *v;
    int pairs; // of pixels
};

[[gnu::always_inline]] inline void convertLuma(const std::uint32_t *row, std::uint8_t *y, int count)
{
    for (int x = 0; x < count; ++x) {
        const std::uint32_t p = row[x];
        const int r = int(p >> 16 & 255), g = int(p >> 8 & 255), b = int(p & 255);
        y[x] = std::uint8_t((kYr * r + kYg * g + kYb * b + kYOffset) >> 16);
    }
}

[[gnu::always_inline]] inline void convert(const Rows &rows)
{
    convertLuma(rows.upper, rows.upperY, 2 * rows.pairs);
    convertLuma(rows.lower, rows.lowerY, 2 * rows.pairs);
    for (int x = 0; x < rows.pairs; ++x) {
        const std::uint32_t p = rows.upper[2 * x], q = rows.upper[2 * x + 1];
        const std::uint32_t s = rows.lower[2 * x], t = rows.lower[2 * x + 1];
        // Red and blue are summed side by side: ten bits each have room.
        const std::uint32_t rb = (p & 0xff00ff) + (q & 0xff00ff) + (s & 0xff00ff) + (t & 0xff00ff);
        const int r = int(rb >> 16), b = int(rb & 0xffff);
        const int g = int((p >> 8 & 255) + (q >> 8 & 255) + (s >> 8 & 255) + (t >> 8 & 255));
        rows.u[x] = std::uint8_t((kUr * r + kUg * g + kUb * b + kUvOffset) >> 18);
        rows.v[x] = std::uint8_t((kVr * r + kVg * g + kVb * b + kUvOffset) >> 18);
    }
}

void convertPlain(const Rows &rows)
{
    convert(rows);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void convertWide(const Rows &rows)
{
    convert(rows);
}
#endif

using Convert = void (*)(const Rows &);

Convert fastest()
{
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2"))
        return convertWide;
#endif
    return convertPlain;
}

} // namespace

YuvCanvas::YuvCanvas(QSize size) : m_size(size)
{
    const auto pixels = std::size_t(size.width()) * std::size_t(size.height());
    m_planes[0].assign(pixels, 16);
    m_planes[1].assign(pixels / 4, 128);
    m_planes[2].assign(pixels / 4, 128);
}

void YuvCanvas::update(const QImage &picture, QPoint at, const QRegion &changed)
{
    static const Convert convertRows = fastest();
    const QRegion inside = changed & QRect(at, picture.size()) & QRect(QPoint(), m_size);
    for (const QRect &rect : inside) {
        for (int y = rect.top(); y < rect.bottom(); y += 2) {
            const auto row = [&](int offset) {
                return reinterpret_cast<const std::uint32_t *>(picture.constScanLine(y + offset - at.y())) +
                       rect.left() - at.x();
            };
            const std::size_t luma = std::size_t(y) * std::size_t(m_size.width()) + std::size_t(rect.left());
            const std::size_t chroma =
                std::size_t(y / 2) * std::size_t(m_size.width() / 2) + std::size_t(rect.left() / 2);
            convertRows({row(0), row(1), &m_planes[0][luma], &m_planes[0][luma + std::size_t(m_size.width())],
                         &m_planes[1][chroma], &m_planes[2][chroma], rect.width() / 2});
        }
    }
}
