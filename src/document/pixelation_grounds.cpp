#include "document/pixelation_grounds.h"

namespace {

constexpr int kShadeBits = 5; // of each channel that one colour is told from another by
constexpr float kSameShade = 20;
// A surface is as broad in both directions; the strokes of bold letters of 120 points at twice the density
// have 45.
constexpr double kBroadPixels = 64;
// The side of a cell.
constexpr double kCellPixels = 64;
// A ground is flat when so much of what is around has its colours: pages of dense text have .45 and more,
// faces less than .2.
constexpr float kFlat = 0.3F;
constexpr float kWhole = 0.999F;
// The steps in which the ends of a line are told, and what is filled between letters: no inside of a letter
// that isn't large is wider.
constexpr double kEndPixels = 40;
// What is taller is large type, whose last letters differ so in width that steps tell them apart (of digits
// of 48 pixels 20 in 100 were guessed; a line of a table between its rules takes 44 in blocks), unless it is
// broader than any stroke, or coloured as charts are; its rows are filled from edge to edge.
constexpr double kLargePixels = 45;
constexpr double kTallestLetter = 260;
constexpr double kBroadestStroke = 80; // with the blocks at its edges
constexpr double kWidestGap = 60;
// A contrast below which nothing is legible that was worth hiding.
constexpr int kFaintContrast = 40;
constexpr float kFarCells = 0.2F; // the weight of cells that don't touch a block's own

bool areOne(const Shade &a, const Shade &b)
{
    for (size_t c = 0; c < 3; ++c)
        if (std::abs(a.color[c] - b.color[c]) > kSameShade)
            return false;
    return true;
}

using Shades = std::vector<Shade>;

void add(Shades &shades, const Shade &shade, float weight)
{
    if (shade.share <= 0)
        return;
    const auto known = std::ranges::find_if(shades, [&](const Shade &other) { return areOne(shade, other); });
    if (known != shades.end())
        known->share += weight * shade.share;
    else
        shades.push_back({shade.color, weight * shade.share});
}

// Squares of many blocks, which are looked at together.
class Cells {
public:
    Cells(const std::vector<Block> &blocks, const Grid &grid)
        : m_blocks(blocks),
          m_grid(grid),
          m_side(std::max(1, static_cast<int>(std::lround(kCellPixels / grid.side)))),
          m_columns((grid.columns + m_side - 1) / m_side),
          m_rows((grid.rows + m_side - 1) / m_side),
          m_broad(static_cast<size_t>(m_columns) * m_rows),
          m_usual(m_broad.size()),
          m_inkAround(m_broad.size()),
          m_isNearInk(blocks.size(), false),
          m_isFlat(m_broad.size(), false)
    {
        findBroad();
        findUsual();
        for (size_t i = 0; i < m_broad.size(); ++i)
            gatherSurfaces(i);
        gatherInk();
        findInk();
    }

    // The surface that a block lies on, when ink is near on flat ground.
    std::optional<InkedGround> groundOf(int column, int row) const
    {
        const size_t cell = cellOf(column, row);
        if (!m_isFlat[cell] || !m_isNearInk[static_cast<size_t>(row) * m_grid.columns + column])
            return {};
        const int reach = std::max(2, m_side / 3);
        Shades shades = m_surfaces[cell];
        for (Shade &shade : shades)
            shade.share = 0;
        for (int y = std::max(row - reach, 0); y <= std::min(row + reach, m_grid.rows - 1); ++y)
            for (int x = std::max(column - reach, 0); x <= std::min(column + reach, m_grid.columns - 1); ++x)
                for (const Shade &shade : blockAt(x, y).shades)
                    for (Shade &surface : shades)
                        if (areOne(shade, surface))
                            surface.share += shade.share;
        const Shade &ground = *std::ranges::max_element(shades, {}, &Shade::share);
        return InkedGround{ground, directionOf(ground, m_inkAround[cell])};
    }

private:
    // From a ground to its ink.
    static std::array<float, 3> directionOf(const Shade &ground, const Shade &ink)
    {
        std::array<float, 3> way{};
        float most = 0;
        for (size_t c = 0; c < 3; ++c) {
            way[c] = ink.share > 0 ? ink.color[c] / ink.share - ground.color[c] : 0;
            most = std::max(most, std::abs(way[c]));
        }
        const float light = (ground.color[0] + 2 * ground.color[1] + ground.color[2]) / 4;
        constexpr float kClear = 8; // of 255; less is none
        for (float &part : way)
            part = most < kClear ? (light > 127 ? -1.0F : 1.0F) : std::round(4 * part / most) / 4;
        return way;
    }
    const Block &blockAt(int column, int row) const
    {
        return m_blocks[static_cast<size_t>(row) * m_grid.columns + column];
    }
    size_t cellOf(int column, int row) const
    {
        return static_cast<size_t>(row / m_side) * m_columns + column / m_side;
    }
    template <typename Visit>
    void around(size_t cell, int reach, Visit visit) const
    {
        const int column = static_cast<int>(cell % m_columns);
        const int row = static_cast<int>(cell / m_columns);
        for (int y = std::max(row - reach, 0); y <= std::min(row + reach, m_rows - 1); ++y)
            for (int x = std::max(column - reach, 0); x <= std::min(column + reach, m_columns - 1); ++x)
                visit(static_cast<size_t>(y) * m_columns + x,
                      std::max(std::abs(x - column), std::abs(y - row)) > 1);
    }
    // Colours that fill squares as broad as no stroke is. What touches the edge of the picture goes on beyond
    // it.
    void findBroad()
    {
        const int side = std::max(2, static_cast<int>(std::ceil(kBroadPixels / m_grid.side)));
        const int width = m_grid.columns + 2 * side;
        const auto shadeAt = [&](int x, int y) -> const Shade & {
            return blockAt(std::clamp(x - side, 0, m_grid.columns - 1),
                           std::clamp(y - side, 0, m_grid.rows - 1))
                .shades[0];
        };
        std::vector<int> above(static_cast<size_t>(width),
                               0); // the side of the largest square that ends at a block
        std::vector<int> squares(above.size(), 0);
        for (int y = 0; y < m_grid.rows + 2 * side; ++y) {
            for (int x = 0; x < width; ++x) {
                const Shade &own = shadeAt(x, y);
                int least = own.share > 0.5F ? 0 : -1;
                if (least == 0 && x > 0 && y > 0) {
                    const auto before = [&](int dx, int dy, int square) {
                        return areOne(shadeAt(x - dx, y - dy), own) ? square : 0;
                    };
                    const auto at = static_cast<size_t>(x);
                    least = std::min({side, before(1, 0, squares[at - 1]), before(0, 1, above[at]),
                                      before(1, 1, above[at - 1])});
                }
                squares[static_cast<size_t>(x)] = least + 1;
                if (least + 1 >= side)
                    add(m_broad[cellOf(std::clamp(x - side, 0, m_grid.columns - 1),
                                       std::clamp(y - side, 0, m_grid.rows - 1))],
                        own, 1);
            }
            std::swap(above, squares);
        }
    }

    // The most frequent colour around each cell.
    void findUsual()
    {
        std::vector<Shades> own(m_broad.size());
        std::vector<float> count(m_broad.size(), 0);
        for (int row = 0; row < m_grid.rows; ++row)
            for (int column = 0; column < m_grid.columns; ++column) {
                for (const Shade &shade : blockAt(column, row).shades)
                    add(own[cellOf(column, row)], shade, 1);
                ++count[cellOf(column, row)];
            }
        for (size_t cell = 0; cell < own.size(); ++cell) {
            Shades all;
            float total = 0;
            around(cell, 2, [&](size_t other, bool isFar) {
                for (const Shade &shade : own[other])
                    add(all, shade, isFar ? kFarCells : 1);
                total += (isFar ? kFarCells : 1) * count[other];
            });
            const auto most = std::ranges::max_element(all, {}, &Shade::share);
            if (most != all.end() && most->share >= kFlat * total) {
                m_usual[cell] = *most;
                m_isFlat[cell] = true;
            }
        }
    }

    void gatherSurfaces(size_t cell)
    {
        Shades surfaces;
        around(cell, 1, [&](size_t other, bool) {
            for (const Shade &shade : m_broad[other])
                add(surfaces, shade, 1);
        });
        if (m_isFlat[cell])
            add(surfaces, m_usual[cell], 1);
        m_surfaces.push_back(std::move(surfaces));
    }

    bool isSurface(size_t cell, const Shade &shade) const
    {
        return std::ranges::any_of(m_surfaces[cell],
                                   [&](const Shade &surface) { return areOne(shade, surface); });
    }

    // The sum of what is no surface, around each cell.
    void gatherInk()
    {
        std::vector<Shade> own(m_broad.size());
        for (int row = 0; row < m_grid.rows; ++row)
            for (int column = 0; column < m_grid.columns; ++column)
                for (const Shade &shade : blockAt(column, row).shades) {
                    Shade &sum = own[cellOf(column, row)];
                    if (shade.share <= 0 || isSurface(cellOf(column, row), shade))
                        continue;
                    sum.share += shade.share;
                    for (size_t c = 0; c < 3; ++c)
                        sum.color[c] += shade.share * shade.color[c];
                }
        for (size_t cell = 0; cell < own.size(); ++cell)
            around(cell, 1, [&](size_t other, bool) {
                m_inkAround[cell].share += own[other].share;
                for (size_t c = 0; c < 3; ++c)
                    m_inkAround[cell].color[c] += own[other].color[c];
            });
    }

    bool isColored(int column, int row) const
    {
        const size_t cell = cellOf(column, row);
        for (const Shade &shade : blockAt(column, row).shades) {
            if (shade.share <= 0 || isSurface(cell, shade))
                continue;
            Shade ink = shade;
            for (float &channel : ink.color)
                channel *= shade.share;
            const auto way = directionOf(m_usual[cell], ink);
            return std::ranges::max(way) - std::ranges::min(way) >= 0.5F;
        }
        return false;
    }

    bool hasInk(int column, int row) const
    {
        const Block &block = blockAt(column, row);
        if (block.faintest < block.strongest)
            return true;
        const size_t cell = cellOf(column, row);
        float share = 0;
        for (const Shade &shade : block.shades)
            share += isSurface(cell, shade) ? shade.share : 0;
        if (share >= kWhole)
            return false;
        return !isSurface(cell, block.shades[0]) || block.brightest - block.darkest > kFaintContrast;
    }

    // Where ink is near: above and below by a block, to the sides by steps so wide that the ends don't tell
    // where the first and the last letter end, and in all gaps between letters and inside them. The rows of
    // large type are filled from edge to edge; shapes of a colour are no letters.
    void findInk()
    {
        std::vector<bool> ink(m_blocks.size());
        for (int row = 0; row < m_grid.rows; ++row)
            for (int column = 0; column < m_grid.columns; ++column)
                ink[static_cast<size_t>(row) * m_grid.columns + column] = hasInk(column, row);
        const std::vector<bool> isShape = lookAtPieces(ink);
        for (int row = 0; row < m_grid.rows; ++row)
            fillRow(row, ink, isShape);
    }

    void fillRow(int row, const std::vector<bool> &ink, const std::vector<bool> &isShape)
    {
        const int step = std::max(1, static_cast<int>(std::lround(kEndPixels / m_grid.side)));
        const int gap = static_cast<int>(std::ceil(kWidestGap / m_grid.side));
        int last = -1 - gap; // the last column with letters
        for (int column = 0; column < m_grid.columns; ++column) {
            bool any = false;
            bool isLetter = false;
            for (int y = std::max(row - 1, 0); y <= std::min(row + 1, m_grid.rows - 1); ++y) {
                const size_t at = static_cast<size_t>(y) * m_grid.columns + column;
                any = any || ink[at];
                isLetter = isLetter || (ink[at] && !isShape[at]);
            }
            if (!any)
                continue;
            int from = column - 1;
            int to = column + 1;
            if (isLetter) {
                from = (column / step - 1) * step;
                to = from + 3 * step - 1;
                if (column - last <= gap)
                    from = std::min(from, last);
                last = column;
            }
            for (int x = std::max(from, 0); x <= std::min(to, m_grid.columns - 1); ++x)
                m_isNearInk[static_cast<size_t>(row) * m_grid.columns + x] = true;
        }
    }

    // One connected piece of ink, in blocks.
    struct Piece {
        int top = 0;
        int bottom = -1;
        int left = 0;
        int right = -1;
        int colored = 0;       // of its blocks
        int broadest = 0;      // the side of the largest square in it
        bool isFilled = false; // a block of it from edge to edge
        std::vector<size_t> blocks = {};
        bool isShape() const { return isFilled && 2 * colored > static_cast<int>(blocks.size()); }
    };

    Piece pieceAt(size_t start, const std::vector<bool> &ink, const std::vector<int> &squares,
                  std::vector<bool> &isSeen) const
    {
        Piece piece;
        piece.top = m_grid.rows;
        piece.left = m_grid.columns;
        std::vector<size_t> open{start};
        isSeen[start] = true;
        while (!open.empty()) {
            const size_t at = open.back();
            open.pop_back();
            const int column = static_cast<int>(at % static_cast<size_t>(m_grid.columns));
            const int row = static_cast<int>(at / static_cast<size_t>(m_grid.columns));
            piece.top = std::min(piece.top, row);
            piece.bottom = std::max(piece.bottom, row);
            piece.blocks.push_back(at);
            piece.isFilled = piece.isFilled || (m_blocks[at].shades[0].share > 0.95F &&
                                                !isSurface(cellOf(column, row), m_blocks[at].shades[0]));
            piece.colored += isColored(column, row);
            piece.left = std::min(piece.left, column);
            piece.right = std::max(piece.right, column);
            piece.broadest = std::max(piece.broadest, squares[at]);
            for (int y = std::max(row - 1, 0); y <= std::min(row + 1, m_grid.rows - 1); ++y)
                for (int x = std::max(column - 1, 0); x <= std::min(column + 1, m_grid.columns - 1); ++x) {
                    const size_t next = static_cast<size_t>(y) * m_grid.columns + x;
                    if (!ink[next] || isSeen[next])
                        continue;
                    isSeen[next] = true;
                    open.push_back(next);
                }
        }
        return piece;
    }

    // A letter takes all of its box, or its outline would tell which it is.
    void fillBox(const Piece &piece, std::vector<bool> &boxes) const
    {
        if ((piece.bottom + 1 - piece.top) * m_grid.side > kTallestLetter)
            return; // a frame
        for (int y = piece.top; y <= piece.bottom; ++y)
            for (int x = piece.left; x <= piece.right; ++x)
                boxes[static_cast<size_t>(y) * m_grid.columns + x] = true;
    }

    // Fills the boxes of letters, and the rows of large type. Gives the blocks of shapes of a colour.
    std::vector<bool> lookAtPieces(std::vector<bool> &boxes)
    {
        const std::vector<bool> ink = boxes;
        std::vector<bool> isShape(ink.size(), false);
        const auto columns = static_cast<size_t>(m_grid.columns);
        std::vector<int> squares(ink.size(), 0);
        for (size_t i = 0; i < ink.size(); ++i)
            if (ink[i])
                squares[i] =
                    i < columns || i % columns == 0
                        ? 1
                        : 1 + std::min({squares[i - 1], squares[i - columns], squares[i - columns - 1]});
        std::vector<bool> isSeen(ink.size(), false);
        for (size_t i = 0; i < ink.size(); ++i) {
            if (!ink[i] || isSeen[i])
                continue;
            const Piece piece = pieceAt(i, ink, squares, isSeen);
            for (const size_t block : piece.blocks)
                isShape[block] = piece.isShape();
            if (!piece.isShape())
                fillBox(piece, boxes);
            if ((piece.bottom + 1 - piece.top) * m_grid.side < kLargePixels ||
                piece.broadest * m_grid.side >= kBroadestStroke || piece.isShape())
                continue;
            const int top = std::max(piece.top - 1, 0);
            const int bottom = std::min(piece.bottom + 2, m_grid.rows);
            std::fill(m_isNearInk.begin() + std::ptrdiff_t{top} * m_grid.columns,
                      m_isNearInk.begin() + std::ptrdiff_t{bottom} * m_grid.columns, true);
        }
        return isShape;
    }

    const std::vector<Block> &m_blocks;
    const Grid &m_grid;
    const int m_side; // blocks
    const int m_columns;
    const int m_rows;
    std::vector<Shades> m_broad;
    std::vector<Shade> m_usual;
    std::vector<Shade> m_inkAround; // sums over a cell and those that touch it
    std::vector<Shades> m_surfaces; // of a cell and those that touch it
    std::vector<bool> m_isNearInk;  // of blocks
    std::vector<bool> m_isFlat;
};

} // namespace

std::array<Shade, 2> shadesOf(const QImage &seen, const QRect &part, int stepX, int stepY)
{
    // Of alike colours the one that most have, exactly: a mean would tell of the soft edges of letters. Found
    // as a majority is (Boyer and Moore, 1981).
    struct Count {
        int count = 0;
        std::array<uchar, 3> color{};
        int lead = 0;
    };
    static thread_local std::vector<Count> counts(size_t(1) << (3 * kShadeBits));
    static thread_local std::vector<size_t> used;
    used.clear();
    int all = 0;
    for (int y = part.top(); y <= part.bottom(); y += stepY) {
        const uchar *line = seen.constScanLine(y);
        for (int x = part.left(); x <= part.right(); x += stepX) {
            const uchar *px = line + 4 * static_cast<qsizetype>(x);
            size_t index = 0;
            for (size_t c = 0; c < 3; ++c)
                index = index << kShadeBits | px[c] >> (8 - kShadeBits);
            if (counts[index].count++ == 0)
                used.push_back(index);
            Count &count = counts[index];
            const std::array<uchar, 3> color{px[0], px[1], px[2]};
            if (count.lead == 0)
                count.color = color;
            count.lead += count.color == color ? 1 : -1;
            ++all;
        }
    }
    std::array<Shade, 2> shades;
    for (const size_t index : used) {
        Count &count = counts[index];
        Shade shade{{}, static_cast<float>(count.count) / static_cast<float>(all)};
        for (size_t c = 0; c < 3; ++c)
            shade.color[c] = count.color[c];
        count = {};
        if (shade.share > shades[0].share) {
            shades[1] = shades[0];
            shades[0] = shade;
        } else if (shade.share > shades[1].share) {
            shades[1] = shade;
        }
    }
    return shades;
}

std::vector<std::optional<InkedGround>> groundsUnderInk(const std::vector<Block> &blocks, const Grid &grid)
{
    const Cells cells(blocks, grid);
    std::vector<std::optional<InkedGround>> grounds(blocks.size());
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column)
            grounds[static_cast<size_t>(row) * grid.columns + column] = cells.groundOf(column, row);
    return grounds;
}
