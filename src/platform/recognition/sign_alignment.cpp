#include "platform/recognition/sign_alignment.h"

#include <array>
#include <limits>

namespace {

// About how wide the ink of a character is in fonts that aren't of fixed width, in heights of a capital.
double usualWidth(const QString &text)
{
    struct Width {
        QStringView characters;
        double width;
    };
    static constexpr std::array<Width, 8> kWidths{{{u"ilI|!.,:;'’‘`·", 0.2},
                                                   {u"j()[]{}\"“”1°^*", 0.38},
                                                   {u"frtJ-/\\", 0.45},
                                                   {u"«»", 0.6},
                                                   {u"sczLF?_", 0.65},
                                                   {u"OQGDCHNUAVXYKR&+=<>~#–→", 0.95},
                                                   {u"mMwÆæœ%½¼", 1.15},
                                                   {u"W@—…", 1.35}}};
    constexpr double kOfOthers = 0.74;
    if (text.isEmpty())
        return 0;
    for (const Width &width : kWidths)
        if (width.characters.contains(text[0]))
            return width.width;
    return kOfOthers;
}

// What misfits cost; lengths are in heights of a capital.
constexpr double kSkippedSymbol = 0.7;
constexpr double kSkippedCell = 0.7;
constexpr double kDisplaced = 0.2; // little: readers lag behind by some of a letter within a word
constexpr double kUsualLag = 0.5;
constexpr double kAstray = 1; // what lies beyond
constexpr double kWrongWidth = 0.7;
constexpr double kWrongColumns = 3; // in a fixed-width font
constexpr double kWrongBlank = 0.6;
constexpr double kTouching = 0.15;
constexpr double kTwoPieces = 0.3;
constexpr double kFarthestPlace = 8;
constexpr size_t kMostTouching = 6;

// The cheapest way from the first to the last of signs and cells, by dynamic programming.
class Alignment {
public:
    explicit Alignment(ReadLine &line)
        : m_line(line),
          m_signs(line.signs.size()),
          m_cells(line.cells.size()),
          m_unit(line.capHeight),
          m_steps((m_signs + 1) * (m_cells + 1))
    {
        for (const ReadSign &sign : line.signs)
            m_widths.push_back(usualWidth(sign.text) * m_unit);
    }

    void run()
    {
        at(0, 0).cost = 0;
        for (size_t i = 0; i <= m_signs; ++i)
            for (size_t j = 0; j <= m_cells; ++j)
                if (std::isfinite(at(i, j).cost))
                    goOnFrom(i, j);
        assign();
    }

private:
    struct Step {
        double cost = std::numeric_limits<double>::infinity();
        int signs = 0;
        int cells = 0;
    };
    Step &at(size_t i, size_t j) { return m_steps[i * (m_cells + 1) + j]; }
    void offer(size_t i, size_t j, double cost, size_t signs, size_t cells)
    {
        if (Step &step = at(i + signs, j + cells); cost < step.cost)
            step = {cost, int(signs), int(cells)};
    }

    void goOnFrom(size_t i, size_t j)
    {
        const double here = at(i, j).cost;
        if (i < m_signs)
            offer(i, j, here + kSkippedSymbol, 1, 0);
        if (j < m_cells) // a speck is skipped more lightly than a letter
            offer(i, j, here + kSkippedCell * std::min(1.0, 0.3 + m_line.cells[j].height() / m_unit), 0, 1);
        if (i == m_signs || j == m_cells)
            return;
        const QRectF cell(m_line.cells[j]);
        if (std::abs(center(m_line.signs[i].box) - cell.center().x()) >
            kFarthestPlace * m_unit + cell.width())
            return;
        const double start = here + ofBlank(i, j);
        for (size_t count = 1; count <= kMostTouching && i + count <= m_signs; ++count) {
            if (count > 1 && m_line.signs[i + count - 1].blankBefore)
                break;
            offer(i, j, start + ofFit(i, count, cell.left(), cell.right()), count, 1);
        }
        if (j + 1 == m_cells)
            return;
        const double right = QRectF(m_line.cells[j + 1]).right();
        const double widest = m_line.pitch > 0 ? 1.1 * m_line.pitch : 1.4 * m_unit;
        if (right - cell.left() <= widest)
            offer(i, j, start + kTwoPieces + ofFit(i, 1, cell.left(), right), 1, 2);
    }

    double ofFit(size_t first, size_t count, double left, double right) const
    {
        const double middle =
            (m_line.signs[first].box.left() + m_line.signs[first + count - 1].box.right()) / 2;
        const double away = std::abs(middle - (left + right) / 2) / m_unit;
        const double cost =
            kDisplaced * away + kAstray * std::max(0.0, away - kUsualLag) + kTouching * double(count - 1);
        if (m_line.pitch > 0) {
            const double columns = (right - left) / m_line.pitch;
            const double tooWide = columns - (double(count) + 0.15);
            const double tooNarrow = count > 1 ? double(count) - columns : 0;
            return cost + kWrongColumns * std::max({0.0, tooWide, tooNarrow});
        }
        double width = 0;
        for (size_t s = first; s < first + count; ++s)
            width += m_widths[s];
        return cost + kWrongWidth * std::abs(right - left - width) / m_unit;
    }

    // A blank that was read where the ink has no gap, or a gap where none was read.
    double ofBlank(size_t i, size_t j)
    {
        const Step &before = at(i, j);
        if (i == 0 || j == 0 || before.signs == 0 || before.cells == 0)
            return 0;
        const double gap = m_line.cells[j].left() - m_line.cells[j - 1].right() - 1;
        const double pitch = m_line.pitch;
        const bool isNarrow = pitch > 0 ? gap < 0.6 * pitch : gap < 0.18 * m_unit;
        const bool isWide = pitch > 0 ? gap > 0.85 * pitch : gap > 0.45 * m_unit;
        return (m_line.signs[i].blankBefore ? isNarrow : isWide) ? kWrongBlank : 0;
    }

    void assign()
    {
        for (size_t i = m_signs, j = m_cells; i > 0 || j > 0;) {
            const Step &step = at(i, j);
            if (step.signs == 0 && step.cells == 0)
                return;
            i -= size_t(step.signs);
            j -= size_t(step.cells);
            if (step.cells == 0)
                continue;
            for (size_t s = i; s < i + size_t(step.signs); ++s) {
                m_line.signs[s].cell = int(j);
                m_line.signs[s].isAlone = step.signs == 1 && step.cells == 1;
            }
        }
    }

    ReadLine &m_line;
    size_t m_signs;
    size_t m_cells;
    double m_unit;
    std::vector<Step> m_steps;
    std::vector<double> m_widths;
};

} // namespace

void align(ReadLine &line)
{
    Alignment(line).run();
}
