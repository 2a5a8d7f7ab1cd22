#include "capture/floating_parts.h"

#include "capture/pixel_rows.h"
#include "capture/row_signatures.h"

#include <algorithm>
#include <vector>

namespace {

using PixelRows::isSame;
using PixelRows::row;

constexpr int kTile = 16;        // columns: half of a small button
constexpr int kGap = 16;         // rows within what floats that look like the page
constexpr int kLeastRows = 12;   // that are seen to stand: less is a word that is alike by chance
constexpr int kMostParts = 4;    // more of them are the pattern of a ground that stands
constexpr double kTallest = 0.4; // of a frame: what is taller is a side bar
constexpr int kWide = 4;         // tiles, with the shade: the thumb of an inner scroll bar has fewer
constexpr int kShade = 32;       // pixels around it, of its edge and its shadow

// For how many steps each tile stood, where the content says that it moved.
class Standing {
public:
    Standing(const QImage &frame, int left, int end)
        : m_left(left),
          m_end(end),
          m_columns((end - left) / kTile),
          m_rows(frame.height()),
          m_counts(size_t(std::max(0, m_columns)) * size_t(m_rows))
    {}
    void add(const QImage &a, const QImage &b, const ScrollStep &step)
    {
        const int bottom = m_rows - step.footer;
        for (int y = step.header; y < bottom; ++y) {
            if (isCarried(a, b, step, y))
                continue;
            for (int column = 0; column < m_columns; ++column) {
                const int from = m_left + column * kTile;
                m_counts[at(column, y)] += stands(a, b, step, y, from, from + kTile);
            }
        }
    }
    // Rectangles of tiles that stood for at least so many steps.
    QList<QRect> rectangles(int least)
    {
        QList<QRect> found;
        for (int column = 0; column < m_columns; ++column) {
            for (int y = 0; y < m_rows; ++y) {
                if (m_counts[at(column, y)] < least)
                    continue;
                QRect tiles(column, y, 1, 1);
                const int count = take(tiles, least);
                if (count >= kLeastRows && tiles.height() >= kLeastRows &&
                    tiles.height() <= kTallest * m_rows)
                    found.append(
                        {m_left + tiles.x() * kTile, tiles.y(), tiles.width() * kTile, tiles.height()});
            }
        }
        return found;
    }

private:
    size_t at(int column, int y) const { return size_t(column) * size_t(m_rows) + size_t(y); }

    // Whether what stands in a row can have come from below, and go on above, within what scrolls.
    bool mayCome(const ScrollStep &step, int y) const { return y + step.shift < m_rows - step.footer; }
    static bool mayGo(const ScrollStep &step, int y) { return y - step.shift >= step.header; }

    // Whether the shift explains all of a row that can be seen in both pictures.
    bool isCarried(const QImage &a, const QImage &b, const ScrollStep &step, int y) const
    {
        const bool comes = mayCome(step, y);
        const bool goes = mayGo(step, y);
        return (comes || goes) && (!comes || isSame(row(b, y), row(a, y + step.shift), m_left, m_end)) &&
               (!goes || isSame(row(a, y), row(b, y - step.shift), m_left, m_end));
    }

    // Whether a tile stays, and the shift explains it in neither picture.
    bool stands(const QImage &a, const QImage &b, const ScrollStep &step, int y, int from, int to) const
    {
        if (!isSame(row(a, y), row(b, y), from, to))
            return false;
        const bool comes = mayCome(step, y);
        const bool goes = mayGo(step, y);
        // Where one picture alone could tell, blank page is alike too.
        if ((!comes || !goes) && isSame(row(a, y), row(a, y) + 1, from, to - 1))
            return false;
        return !(comes && isSame(row(b, y), row(a, y + step.shift), from, to)) &&
               !(goes && isSame(row(a, y), row(b, y - step.shift), from, to));
    }

    // Takes all tiles that hang together with the first; `tiles` becomes what they cover.
    int take(QRect &tiles, int least)
    {
        std::vector<QPoint> open{tiles.topLeft()};
        m_counts[at(tiles.x(), tiles.y())] = 0;
        int count = 0;
        while (!open.empty()) {
            const QPoint tile = open.back();
            open.pop_back();
            ++count;
            tiles |= QRect(tile, QSize(1, 1));
            for (int column = std::max(0, tile.x() - 1); column <= std::min(m_columns - 1, tile.x() + 1);
                 ++column) {
                for (int y = std::max(0, tile.y() - kGap); y <= std::min(m_rows - 1, tile.y() + kGap); ++y) {
                    if (m_counts[at(column, y)] < least)
                        continue;
                    m_counts[at(column, y)] = 0;
                    open.emplace_back(column, y);
                }
            }
        }
        return count;
    }

    int m_left;
    int m_end;
    int m_columns;
    int m_rows;
    std::vector<int> m_counts;
};

} // namespace

QList<QRect> FloatingParts::find(const QList<QImage> &frames, const QList<ScrollStep> &steps, int left,
                                 int end)
{
    Standing standing(frames.first(), left, end);
    for (int i = 0; i < steps.size(); ++i)
        standing.add(frames[i], frames[i + 1], steps[i]);
    const int half = int(steps.size() + 1) / 2;
    QList<QRect> parts = standing.rectangles(std::max(1, half));
    if (parts.size() > kMostParts)
        return {};
    const QRect pane(left, 0, end - left, frames.first().height());
    for (QRect &part : parts)
        part = part.adjusted(-kShade, -kShade, kShade, kShade) & pane;
    return parts;
}

bool FloatingParts::hideRows(const QImage &a, const QImage &b, const ScrollStep &step)
{
    const int firstHidden = a.height() - step.footer - step.shift;
    const int endHidden = step.header + step.shift;
    if (firstHidden >= endHidden)
        return false;
    const auto isWide = [](const QRect &part) { return part.width() >= kWide * kTile + kShade; };
    const int end = std::min(a.width() - step.right, RowSignatures::comparedColumns(a.width()));
    return std::ranges::any_of(find({a, b}, {step}, step.left, end), [&](const QRect &part) {
        return isWide(part) && part.top() < endHidden && part.bottom() >= firstHidden;
    });
}
