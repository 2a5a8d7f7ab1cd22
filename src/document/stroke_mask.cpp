#include "document/stroke_mask.h"

#include "base/parallel.h"

#include <QThread>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

// Points nearer than this, in pixels, can't be told apart.
constexpr double kSmallestStep = 0.125;
// A band's counts stay in the processor's cache.
constexpr int kBandHeight = 64;

struct Segment {
    QPointF a;
    QPointF u; // unit vector towards the other end; zero for a dot
    double length = 0;

    QPointF b() const { return a + u * length; }
    double distance(double x, double y) const
    {
        const double dx = x - a.x();
        const double dy = y - a.y();
        const double along = std::clamp(dx * u.x() + dy * u.y(), 0.0, length);
        return std::hypot(dx - along * u.x(), dy - along * u.y());
    }
};

// Pixels first … last of a row, empty when last < first.
struct Span {
    int first = 0;
    int last = -1;
};

// The pixels of the row through `y` whose middles are at most `radius` from the segment; in a row of `width`.
Span spanAt(const Segment &segment, double y, double radius, int width)
{
    double left = std::numeric_limits<double>::infinity();
    double right = -left;
    const auto reach = [&](double x0, double x1) {
        left = std::min(left, x0);
        right = std::max(right, x1);
    };
    const QPointF b = segment.b();
    for (const QPointF &end : {segment.a, b}) {
        const double dy = y - end.y();
        if (std::abs(dy) <= radius) {
            const double half = std::sqrt(radius * radius - dy * dy);
            reach(end.x() - half, end.x() + half);
        }
    }
    // The two long sides; the short ones lie inside the discs.
    const double rise = b.y() - segment.a.y();
    if (rise != 0) {
        for (const double side : {radius, -radius}) {
            const QPointF from = segment.a + QPointF(-segment.u.y(), segment.u.x()) * side;
            const double t = (y - from.y()) / rise;
            if (t >= 0 && t <= 1) {
                const double x = from.x() + t * (b.x() - segment.a.x());
                reach(x, x);
            }
        }
    }
    if (left > right)
        return {};
    return {static_cast<int>(std::clamp(std::ceil(left - 0.5), 0.0, double(width))),
            static_cast<int>(std::clamp(std::floor(right - 0.5), -1.0, double(width - 1)))};
}

std::vector<Segment> segmentsNear(const QRectF &near, const QTransform &toMask, const QList<QPolygonF> &lines)
{
    std::vector<Segment> segments;
    const auto add = [&](const QPointF &a, const QPointF &b) {
        if (std::max(a.x(), b.x()) < near.left() || std::min(a.x(), b.x()) > near.right() ||
            std::max(a.y(), b.y()) < near.top() || std::min(a.y(), b.y()) > near.bottom())
            return;
        const double length = std::hypot(b.x() - a.x(), b.y() - a.y());
        segments.push_back({a, length > 0 ? (b - a) / length : QPointF(), length});
    };
    for (const QPolygonF &line : lines) {
        if (line.isEmpty())
            continue;
        QPointF last = toMask.map(line.first());
        if (line.size() == 1)
            add(last, last);
        for (qsizetype i = 1; i < line.size(); ++i) {
            const QPointF next = toMask.map(line[i]);
            const bool isEnd = i + 1 == line.size();
            if (!isEnd && (next - last).manhattanLength() < kSmallestStep)
                continue;
            add(last, next);
            last = next;
        }
    }
    return segments;
}

// Rows `top` … `bottom` of the mask. `pen` is the width in pixels.
class Band {
public:
    Band(uchar *pixels, qsizetype stride, int width, int top, int bottom, double pen)
        : m_pixels(pixels),
          m_stride(stride),
          m_width(width),
          m_top(top),
          m_bottom(bottom),
          m_radius(std::max(pen, 1.0) / 2),
          m_full(static_cast<float>(std::min(pen, 1.0) * 255)),
          m_changes(static_cast<size_t>(width + 1) * (bottom - top + 1))
    {}

    void add(const Segment &segment)
    {
        const double outer = m_radius + 0.5;
        const double inner = m_radius - 0.5;
        const auto [low, high] = std::minmax({segment.a.y(), segment.b().y()});
        if (high + outer < m_top || low - outer > m_bottom + 1)
            return;
        const int first = static_cast<int>(std::max(std::floor(low - outer), double(m_top)));
        const int last = static_cast<int>(std::min(std::ceil(high + outer), double(m_bottom)));
        for (int row = first; row <= last; ++row) {
            const double y = row + 0.5;
            const Span touched = spanAt(segment, y, outer, m_width);
            if (touched.last < touched.first)
                continue;
            const Span filled = inner > 0 ? spanAt(segment, y, inner, m_width) : Span();
            if (filled.last < filled.first) {
                addEdge(segment, row, touched);
                continue;
            }
            int32_t *changes = changesOf(row);
            ++changes[filled.first];
            --changes[filled.last + 1];
            addEdge(segment, row, {touched.first, filled.first - 1});
            addEdge(segment, row, {filled.last + 1, touched.last});
        }
    }

    // To be called once, after all segments.
    void fill()
    {
        for (int row = m_top; row <= m_bottom; ++row) {
            const int32_t *changes = changesOf(row);
            uchar *line = m_pixels + row * m_stride;
            int32_t depth = 0;
            for (int x = 0; x < m_width; ++x) {
                depth += changes[x];
                if (depth > 0)
                    line[x] = 255;
            }
        }
    }

private:
    int32_t *changesOf(int row)
    {
        return m_changes.data() + static_cast<size_t>(row - m_top) * (m_width + 1);
    }

    void addEdge(const Segment &segment, int row, const Span &span)
    {
        uchar *line = m_pixels + row * m_stride;
        for (int x = span.first; x <= span.last; ++x) {
            if (line[x] == 255)
                continue;
            const double cover = std::clamp(m_radius + 0.5 - segment.distance(x + 0.5, row + 0.5), 0.0, 1.0);
            line[x] = std::max(line[x], static_cast<uchar>(std::lround(cover * m_full)));
        }
    }

    uchar *m_pixels;
    qsizetype m_stride;
    int m_width;
    int m_top;
    int m_bottom;
    double m_radius;
    float m_full; // a hairline never covers a whole pixel
    // How many strokes start and end to fill a row at each pixel.
    std::vector<int32_t> m_changes;
};

} // namespace

void strokeMask(QImage &mask, const QTransform &toMask, const QList<QPolygonF> &lines, double width)
{
    const double pen = width * std::sqrt(std::abs(toMask.determinant()));
    if (!(pen > 0) || mask.isNull())
        return;
    const double reach = pen / 2 + 1;
    const std::vector<Segment> segments =
        segmentsNear(QRectF(mask.rect()).adjusted(-reach, -reach, reach, reach), toMask, lines);
    if (segments.empty())
        return;
    uchar *pixels = mask.bits();
    const qsizetype stride = mask.bytesPerLine();
    const int columns = mask.width();
    const int rows = mask.height();
    const int bands = (rows + kBandHeight - 1) / kBandHeight;
    const auto drawBand = [&](int band) {
        const int top = band * kBandHeight;
        Band part(pixels, stride, columns, top, std::min(top + kBandHeight, rows) - 1, pen);
        for (const Segment &segment : segments)
            part.add(segment);
        part.fill();
    };
    // Threads pay off only where there is a lot to do.
    const int workers = segments.size() < 500 ? 1 : std::clamp(QThread::idealThreadCount(), 1, bands);
    inParallel(workers, [&](int worker) {
        for (int band = worker; band < bands; band += workers)
            drawBand(band);
    });
}
