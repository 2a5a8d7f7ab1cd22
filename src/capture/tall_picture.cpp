#include "capture/tall_picture.h"

#include "capture/floating_parts.h"
#include "capture/pixel_rows.h"
#include "capture/row_signatures.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

using PixelRows::isSame;
using PixelRows::row;

constexpr double kStickyShare = 0.12; // of a frame's height: what sticks to the top is seldom taller
constexpr int kAgreeingRows = 4;      // a single one may be alike by chance
constexpr int kBeside = 64;           // columns: some letters
constexpr int kGroundRows = 3;        // that are alike are the ground of a side bar

int differences(const quint32 *a, const quint32 *b, int from, int to)
{
    int count = 0;
    for (int x = from; x < to; ++x)
        count += ((a[x] ^ b[x]) & PixelRows::kColors) != 0;
    return count;
}

class Composition {
public:
    Composition(const QList<QImage> &frames, const QList<ScrollStep> &steps)
        : m_frames(frames), m_steps(steps)
    {
        m_height = frames.first().height();
        m_width = frames.first().width();
        findSides();
        m_end = std::min(m_width - m_right, RowSignatures::comparedColumns(m_width));
        dropMargins();
    }

    // The columns that scroll: rows of each frame up to its seam.
    void drawMoving(QImage &tall)
    {
        int offset = 0; // of the frame in the page
        int from = 0;   // in the page
        for (int i = 0; i < m_frames.size(); ++i) {
            const bool isLast = i == m_steps.size();
            const int to = std::max(from, offset + (isLast ? m_height : seam(i)));
            for (int y = from; y < to; ++y)
                copy(m_frames[i], y - offset, tall, y, m_left, m_width - m_right);
            m_drawn.append({offset, from, to});
            from = to;
            if (!isLast)
                offset += m_steps[i].shift;
        }
    }

    // What floats is left where it hides rows that no other frame shows: in the first, or else in the last.
    void drawFloating(QImage &tall) const
    {
        const QList<QRect> parts = FloatingParts::find(m_frames, m_steps, m_left, m_end);
        for (const QRect &part : parts) {
            const bool isFirst = !canBeRestored(part, parts);
            for (int i = 0; i < m_drawn.size(); ++i) {
                if (i == (isFirst ? 0 : int(m_drawn.size()) - 1))
                    continue;
                const int end = std::min(m_drawn[i].to, m_drawn[i].offset + part.bottom() + 1);
                for (int y = std::max(m_drawn[i].from, m_drawn[i].offset + part.top()); y < end; ++y) {
                    if (const auto other = frameWithout(parts, part, y, i))
                        copy(m_frames[*other], y - m_drawn[*other].offset, tall, y, part.left(),
                             part.right() + 1);
                }
            }
        }
    }

    void drawSide(QImage &tall, int from, int to) const
    {
        if (from == to)
            return;
        const int bottom = m_height - m_footer;
        for (int y = 0; y < bottom; ++y)
            copy(m_frames.first(), y, tall, y, from, to);
        const int ground = groundRow(from, to, bottom);
        int offset = 0;
        for (int i = 0; i < m_steps.size(); ++i) {
            offset += m_steps[i].shift;
            for (int y = std::max(0, bottom - m_steps[i].shift); y < bottom; ++y) {
                // What appears beside the new rows belongs to them.
                if (isSame(row(m_frames[i], y), row(m_frames[i + 1], y), from, to))
                    copy(m_frames.first(), ground, tall, offset + y, from, to);
                else
                    copy(m_frames[i + 1], y, tall, offset + y, from, to);
            }
        }
        for (int y = bottom; y < m_height; ++y)
            copy(m_frames.last(), y, tall, offset + y, from, to);
    }

    void draw(QImage &tall)
    {
        drawMoving(tall);
        drawFloating(tall);
        drawSide(tall, 0, m_left);
        drawSide(tall, m_width - m_right, m_width);
    }

private:
    static void copy(const QImage &from, int fromRow, QImage &to, int toRow, int left, int right)
    {
        std::memcpy(to.scanLine(toRow) + qsizetype(left) * 4,
                    from.constScanLine(fromRow) + qsizetype(left) * 4, size_t(right - left) * 4);
    }

    struct Drawn {
        int offset; // of a frame in the page
        int from;   // rows of the page that are drawn from it
        int to;
    };

    // Whether all that it hides in the first frame is to be seen in another.
    bool canBeRestored(const QRect &part, const QList<QRect> &parts) const
    {
        const int end = std::min(part.bottom() + 1, m_drawn.first().to);
        for (int y = part.top(); y < end; ++y) {
            if (!frameWithout(parts, part, y, 0))
                return false;
        }
        return true;
    }

    // The frame next to `near` in which nothing floats over row `y` of the page in the columns of `part`.
    std::optional<int> frameWithout(const QList<QRect> &parts, const QRect &part, int y, int near) const
    {
        const auto isFree = [&](int i) {
            if (i < 0 || i >= m_drawn.size())
                return false;
            const ScrollStep &step = m_steps[std::min(i, int(m_steps.size()) - 1)];
            const QRect place(part.left(), y - m_drawn[i].offset, part.width(), 1);
            return place.y() >= step.header && place.y() < m_height - step.footer &&
                   std::ranges::none_of(parts, [&](const QRect &other) { return other.intersects(place); }) &&
                   agreesBeside(part, m_frames[near], y - m_drawn[near].offset, m_frames[i], place.y());
        };
        for (int far = 1; far < m_drawn.size(); ++far) {
            for (const int i : {near - far, near + far}) {
                if (isFree(i))
                    return i;
            }
        }
        return {};
    }

    // Whether two frames show the same page left and right of what floats.
    bool agreesBeside(const QRect &part, const QImage &a, int rowOfA, const QImage &b, int rowOfB) const
    {
        const int left = std::max(m_left, part.left() - kBeside);
        const int right = std::min(m_end, part.right() + 1 + kBeside);
        const bool hasBeside = left < part.left() || right > part.right() + 1;
        return hasBeside && isSame(row(a, rowOfA), row(b, rowOfB), left, part.left()) &&
               isSame(row(a, rowOfA), row(b, rowOfB), part.right() + 1, right);
    }

    bool hasSides(const ScrollStep &step) const { return step.left > 0 || step.right > 0; }

    // What moved in any step moves in all. A step in which the whole region moved says nothing of the sides
    // but by what it changed.
    void findSides()
    {
        bool found = false;
        for (const ScrollStep &step : m_steps) {
            if (!hasSides(step))
                continue;
            m_left = found ? std::min(m_left, step.left) : step.left;
            m_right = found ? std::min(m_right, step.right) : step.right;
            m_footer = found ? std::min(m_footer, step.footer) : step.footer;
            m_header = found ? std::min(m_header, step.header) : step.header;
            found = true;
        }
        if (!found)
            return;
        const int compared = RowSignatures::comparedColumns(m_width);
        for (int i = 0; i < m_steps.size(); ++i) {
            if (hasSides(m_steps[i]))
                continue;
            for (int y = m_steps[i].header; y < m_height - m_steps[i].footer; ++y) {
                const quint32 *a = row(m_frames[i], y);
                const quint32 *b = row(m_frames[i + 1], y);
                while (m_left > 0 && !isSame(a, b, 0, m_left))
                    --m_left;
                while (m_right > m_width - compared && !isSame(a, b, m_width - m_right, compared))
                    --m_right;
            }
            m_footer = std::min(m_footer, m_steps[i].footer);
        }
        if (m_right <= m_width - compared)
            m_right = 0;
    }

    // A margin may scroll or stand, its ground looks the same: it is drawn with what moves, and so is what
    // stands in it at the top and at the bottom.
    void dropMargins()
    {
        const bool isLeftBlank = isBlank(0, m_left);
        if (isBlank(m_width - m_right, std::min(m_width, RowSignatures::comparedColumns(m_width)))) {
            m_right = 0;
            m_end = RowSignatures::comparedColumns(m_width);
        }
        if (isLeftBlank)
            m_left = 0;
    }

    // Whether columns show one colour in all rows that would be taken from the midst of a frame.
    bool isBlank(int from, int to) const
    {
        if (from >= to)
            return false;
        const quint32 *ground = nullptr;
        for (int i = 0; i < m_steps.size(); ++i) {
            const int top = i > 0 ? seam(i - 1) - m_steps[i - 1].shift : 0;
            const int end = seam(i);
            for (int y = std::max({top, m_steps[i].header, int(m_height * kStickyShare)}); y < end; ++y) {
                const quint32 *at = row(m_frames[i], y) + from;
                ground = ground ? ground : at;
                if (((at[0] ^ ground[0]) & PixelRows::kColors) != 0 ||
                    differences(at, at + 1, 0, to - from - 1) > 0)
                    return false;
            }
        }
        return ground != nullptr;
    }

    // The row of frame `i`, at which the next one takes over.
    int seam(int i) const
    {
        const ScrollStep &step = m_steps[i];
        const QImage &a = m_frames[i];
        const QImage &b = m_frames[i + 1];
        const int first = step.shift + step.header;
        const int end = std::max(first + 1, m_height - step.footer);
        const int target = first + std::min(int(m_height * kStickyShare), (end - first) / 2);
        const auto agrees = [&](int at) {
            const int to = std::min(end, at + kAgreeingRows);
            for (int y = at; y < to; ++y) {
                if (!isSame(row(a, y), row(b, y - step.shift), m_left, m_end))
                    return false;
            }
            return true;
        };
        for (int y = target; y < end; ++y) {
            if (agrees(y))
                return y;
        }
        for (int y = target - 1; y >= first; --y) {
            if (agrees(y))
                return y;
        }
        int best = target;
        int least = std::numeric_limits<int>::max();
        for (int y = target; y < end; ++y) {
            const int differing = differences(row(a, y), row(b, y - step.shift), m_left, m_end);
            if (differing < least) {
                least = differing;
                best = y;
            }
        }
        return best;
    }

    // The lowest row of a side that looks like those above it.
    int groundRow(int from, int to, int bottom) const
    {
        const QImage &frame = m_frames.first();
        for (int y = bottom - 1; y >= m_header + kGroundRows - 1; --y) {
            bool isGround = true;
            for (int above = 1; above < kGroundRows; ++above)
                isGround = isGround && isSame(row(frame, y), row(frame, y - above), from, to);
            if (isGround)
                return y;
        }
        return bottom - 1;
    }

    const QList<QImage> &m_frames;
    const QList<ScrollStep> &m_steps;
    QList<Drawn> m_drawn; // frame by frame
    int m_height = 0;
    int m_width = 0;
    int m_left = 0; // columns that stand
    int m_right = 0;
    int m_footer = 0; // rows that the sides have below their ground
    int m_header = 0; // and above it
    int m_end = 0;    // of the columns that are compared
};

} // namespace

std::optional<QImage> TallPicture::compose(const QList<QImage> &frames, const QList<ScrollStep> &steps)
{
    qint64 height = frames.first().height();
    for (const ScrollStep &step : steps)
        height += step.shift;
    bool isOpaque = true;
    for (const QImage &frame : frames)
        isOpaque = isOpaque && !frame.hasAlphaChannel();
    if (height > std::numeric_limits<int>::max())
        return {};

    const QImage::Format format = isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    QImage tall(frames.first().width(), int(height), format);
    if (tall.isNull())
        return {};
    tall.setDevicePixelRatio(frames.first().devicePixelRatio());
    // Pictures that were taken as they are compared have this form already.
    QList<QImage> pixels;
    for (const QImage &frame : frames) {
        pixels.append(frame.format() == format ? frame : frame.convertToFormat(format));
        if (pixels.last().isNull())
            return {};
    }
    Composition(pixels, steps).draw(tall);
    return tall;
}
