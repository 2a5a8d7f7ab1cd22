#include "capture/moving_part.h"

#include "capture/pixel_rows.h"
#include "capture/row_signatures.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace {

// The numbers beside them are the least that the pages of bench/scrolling showed in a right step, at
// 1100x704.
constexpr int kLeastRows = 12;     // that tell of one shift: 86, of a pane inside a page
constexpr double kAboveRivals = 3; // evidence against that of the best rival: 4 over a fixed pattern, else 36
constexpr int kLeastRowsOfBand = 4;  // that moved, or else a band stands still
constexpr double kLeastHeight = 0.2; // of the rows that can be compared: 0.5. Less is an animation.
constexpr double kLeastWidth = 0.1;  // of the columns: 0.42, of a mail list
constexpr double kExplained = 0.6;   // of what changed, where only the learned step speaks for a shift: 0.61
constexpr double kSmallChange = 0.2; // of what is to be seen, while nothing is known of what scrolls
constexpr double kChangeInPane =
    0.67; // of what scrolled before: 0.05 beside a spinner that went on at the end

constexpr int kAround = 60; // rows above and below the pointer: a row of a list, an icon
constexpr int kLitRows = 8; // that look otherwise: less is a caret

bool hasChanged(const TileGrid &a, const TileGrid &b, size_t tile)
{
    return a.hashes[tile] != b.hashes[tile];
}

// Where each tile of one band stands, if it occurs once.
class BandIndex {
public:
    explicit BandIndex(int rows)
    {
        size_t size = 64;
        while (size < size_t(rows) * 2)
            size *= 2;
        m_slots.resize(size);
    }
    void fill(const TileGrid &grid, int band)
    {
        ++m_round;
        for (int y = 0; y < grid.rows; ++y) {
            if (grid.uniform[grid.at(band, y)])
                continue;
            Slot &slot = slotOf(grid.hashes[grid.at(band, y)]);
            slot.row = slot.round == m_round ? kOften : y;
            slot.round = m_round;
            slot.hash = grid.hashes[grid.at(band, y)];
        }
    }
    std::optional<int> onlyRowOf(quint64 hash)
    {
        const Slot &slot = slotOf(hash);
        if (slot.round != m_round || slot.row == kOften)
            return {};
        return slot.row;
    }

private:
    static constexpr int kOften = -1;
    struct Slot {
        quint64 hash = 0;
        int row = 0;
        int round = 0; // the slot is empty unless it is of this one
    };
    Slot &slotOf(quint64 hash)
    {
        const size_t mask = m_slots.size() - 1;
        size_t at = hash & mask;
        while (m_slots[at].round == m_round && m_slots[at].hash != hash)
            at = (at + 1) & mask;
        return m_slots[at];
    }
    std::vector<Slot> m_slots;
    int m_round = 0;
};

// Votes for every shift from all up to all down.
class Votes {
public:
    Votes(const TileGrid &previous, const TileGrid &next)
        : m_rows(next.rows), m_tiles(size_t(next.rows) * 2 + 1), m_tellingRows(m_tiles.size())
    {
        std::vector<std::vector<int>> shifts(size_t(next.rows)); // of each row
        BandIndex index(previous.rows);
        for (int band = 0; band < next.bands; ++band) {
            index.fill(previous, band);
            for (int y = 0; y < next.rows; ++y) {
                const size_t tile = next.at(band, y);
                if (next.uniform[tile] || !hasChanged(previous, next, tile))
                    continue;
                if (const auto row = index.onlyRowOf(next.hashes[tile]))
                    shifts[size_t(y)].push_back(*row - y);
            }
        }
        for (std::vector<int> &ofRow : shifts) {
            std::sort(ofRow.begin(), ofRow.end());
            for (size_t i = 0; i < ofRow.size(); ++i) {
                ++m_tiles[indexOf(ofRow[i])];
                m_tellingRows[indexOf(ofRow[i])] += i == 0 || ofRow[i] != ofRow[i - 1];
            }
        }
    }
    int tiles(int shift) const { return m_tiles[indexOf(shift)]; }
    int tellingRows(int shift) const { return m_tellingRows[indexOf(shift)]; }
    int best() const
    {
        return int(std::max_element(m_tiles.cbegin(), m_tiles.cend()) - m_tiles.cbegin()) - m_rows;
    }
    // Which has most votes beside `shift`, and `another` one.
    int rivalOf(int shift, std::optional<int> another = {}) const
    {
        int rival = shift == -m_rows ? m_rows : -m_rows;
        for (int other = -m_rows; other <= m_rows; ++other) {
            if (other != shift && other != another && tiles(other) > tiles(rival))
                rival = other;
        }
        return rival;
    }
    bool isAboveRivals(int shift) const { return tiles(shift) >= kAboveRivals * tiles(rivalOf(shift)); }

private:
    size_t indexOf(int shift) const { return size_t(shift + m_rows); }
    int m_rows;
    std::vector<int> m_tiles;
    std::vector<int> m_tellingRows; // that vote with at least one tile
};

// What a shift explains: the tiles that changed and stand where it would take them.
struct Moved {
    std::vector<int> rowsOfBand;
    int firstRow = 0;
    int endRow = 0;
    int tiles = 0;
    int changed = 0; // that the shift could have explained
};

Moved movedBy(const TileGrid &previous, const TileGrid &next, int shift)
{
    Moved moved{.rowsOfBand = std::vector<int>(size_t(next.bands)), .firstRow = next.rows};
    for (int band = 0; band < next.bands; ++band) {
        for (int y = 0; y + shift < next.rows; ++y) {
            const size_t tile = next.at(band, y);
            if (next.uniform[tile] || !hasChanged(previous, next, tile))
                continue;
            ++moved.changed;
            if (next.hashes[tile] != previous.hashes[previous.at(band, y + shift)])
                continue;
            ++moved.tiles;
            ++moved.rowsOfBand[size_t(band)];
            moved.firstRow = std::min(moved.firstRow, y);
            moved.endRow = std::max(moved.endRow, y + 1);
        }
    }
    return moved;
}

// Within the reach of `expected`, the shift that explains most, if that is nearly all.
std::optional<int> expectedShift(const TileGrid &previous, const TileGrid &next, double expected)
{
    const int reach = ScrollStep::reachOf(expected);
    const int middle = int(std::lround(expected));
    std::optional<int> best;
    int mostTiles = 0;
    for (int shift = std::max(1, middle - reach); shift <= middle + reach && shift < next.rows; ++shift) {
        const Moved moved = movedBy(previous, next, shift);
        if (moved.tiles > mostTiles && moved.endRow - moved.firstRow >= kLeastRows &&
            moved.tiles >= kExplained * moved.changed) {
            best = shift;
            mostTiles = moved.tiles;
        }
    }
    return best;
}

// Where a picture behind the content moves more slowly than it, and nothing else does, the content's shift.
std::optional<int> shiftOfLayers(const Votes &votes)
{
    const int best = votes.best();
    const int rival = votes.rivalOf(best);
    const bool isOfTwo = votes.tiles(rival) >= kAboveRivals * votes.tiles(votes.rivalOf(best, rival));
    const bool haveBoth = votes.tellingRows(best) >= kLeastRows && votes.tellingRows(rival) >= kLeastRows;
    if (!isOfTwo || !haveBoth || std::min(best, rival) <= 0)
        return {};
    return std::max(best, rival);
}

std::optional<ScrollStep> stepOf(const Votes &votes, const TileGrid &previous, const TileGrid &next,
                                 std::optional<double> expected)
{
    const int best = votes.best();
    if (votes.tellingRows(best) >= kLeastRows && votes.isAboveRivals(best))
        return ScrollStep{.shift = best};
    if (!expected) {
        const std::optional<int> shift = shiftOfLayers(votes);
        return shift ? std::optional(ScrollStep{.shift = *shift}) : std::nullopt;
    }
    const int reach = ScrollStep::reachOf(*expected);
    if (votes.tellingRows(best) >= kLeastRows) {
        const int middle = int(std::lround(*expected));
        int near = std::clamp(middle, 1, next.rows);
        for (int shift = std::max(1, middle - reach); shift <= std::min(next.rows, middle + reach); ++shift)
            near = votes.tiles(shift) > votes.tiles(near) ? shift : near;
        if (votes.tellingRows(near) >= kLeastRows && votes.tiles(near) * kAboveRivals >= votes.tiles(best))
            return ScrollStep{.shift = near};
    }
    if (const auto shift = expectedShift(previous, next, *expected))
        return ScrollStep{.shift = *shift, .sure = false};
    return {};
}

// The bands that moved, to the pixel: from the first column that changed to the last.
void findColumns(const QImage &a, const QImage &b, int first, int last, ScrollStep &step)
{
    const auto changes = [&](int column) {
        for (int y = 0; y < a.height(); ++y) {
            if (!PixelRows::isSame(PixelRows::row(a, y), PixelRows::row(b, y), column, column + 1))
                return true;
        }
        return false;
    };
    const int compared = RowSignatures::comparedColumns(a.width());
    const int bands = (compared + TileGrid::kTileColumns - 1) / TileGrid::kTileColumns;
    int left = std::max(0, first - 1) * TileGrid::kTileColumns;
    while (left < (first + 1) * TileGrid::kTileColumns && !changes(left))
        ++left;
    int right = std::min(compared, (last + 2) * TileGrid::kTileColumns);
    while (right > last * TileGrid::kTileColumns + 1 && !changes(right - 1))
        --right;
    step.left = left;
    step.right = last + 1 >= bands || right == compared ? 0 : a.width() - right;
}

// Whether a band shows something that the shift takes where it is, such as lines at even distances.
bool isCarried(const TileGrid &previous, const TileGrid &next, int band, const Moved &moved, int shift)
{
    bool isPlain = true;
    for (int y = moved.firstRow; y < moved.endRow; ++y) {
        const quint64 tile = next.hashes[next.at(band, y)];
        if (tile != previous.hashes[previous.at(band, y + shift)])
            return false;
        isPlain = isPlain && tile == next.hashes[next.at(band, moved.firstRow)];
    }
    return !isPlain;
}

// The first and the last band that moved.
std::optional<std::pair<int, int>> movedBands(const Moved &moved)
{
    const auto hasMoved = [](int rows) { return rows >= kLeastRowsOfBand; };
    const auto first = std::ranges::find_if(moved.rowsOfBand, hasMoved);
    if (first == moved.rowsOfBand.cend())
        return {};
    const auto end = std::find_if(moved.rowsOfBand.crbegin(), moved.rowsOfBand.crend(), hasMoved).base();
    return std::pair(int(first - moved.rowsOfBand.cbegin()), int(end - moved.rowsOfBand.cbegin()) - 1);
}

// Beside the columns that moved also whole bands that were carried.
void addCarried(const TileGrid &previous, const TileGrid &next, const Moved &moved, ScrollStep &step,
                std::pair<int, int> bands, int width)
{
    auto [first, last] = bands;
    while (first > 0 && isCarried(previous, next, first - 1, moved, step.shift))
        step.left = --first * TileGrid::kTileColumns;
    while (last + 1 < next.bands && isCarried(previous, next, last + 1, moved, step.shift))
        step.right = width - (++last + 1) * TileGrid::kTileColumns;
    if (last + 1 == next.bands)
        step.right = 0;
}

} // namespace

std::optional<ScrollStep> MovingPart::find(const ComparedPicture &previous, const ComparedPicture &next,
                                           std::optional<double> expected)
{
    const Votes votes(previous.tiles(), next.tiles());
    std::optional<ScrollStep> step = stepOf(votes, previous.tiles(), next.tiles(), expected);
    if (!step || step->shift <= 0)
        return {};

    const Moved moved = movedBy(previous.tiles(), next.tiles(), step->shift);
    const auto bands = movedBands(moved);
    if (!bands)
        return {};
    const auto [first, last] = *bands;
    const int rows = next.tiles().rows;
    if (double(moved.endRow - moved.firstRow) < kLeastHeight * (rows - step->shift) ||
        double(last - first + 1) < kLeastWidth * next.tiles().bands)
        return {};
    findColumns(previous.pixels(), next.pixels(), first, last, *step);
    addCarried(previous.tiles(), next.tiles(), moved, *step, *bands, next.pixels().width());

    const int end =
        std::min(next.pixels().width() - step->right, RowSignatures::comparedColumns(next.pixels().width()));
    const auto stands = [&](int y) {
        return PixelRows::isSame(PixelRows::row(previous.pixels(), y), PixelRows::row(next.pixels(), y),
                                 step->left, end);
    };
    while (step->header < rows && stands(step->header))
        ++step->header;
    while (step->footer < rows - step->header && stands(rows - 1 - step->footer))
        ++step->footer;
    if (rows - step->header - step->footer - step->shift < ScrollStep::kLeastOverlap)
        return {};
    return step;
}

bool MovingPart::differsAround(const ComparedPicture &previous, const ComparedPicture &next,
                               const ScrollStep &step, QPoint spot)
{
    const TileGrid &before = previous.tiles();
    const TileGrid &tiles = next.tiles();
    const int end = std::min(spot.y() + kAround, tiles.rows - step.footer - step.shift);
    const int middle = spot.x() / TileGrid::kTileColumns;
    int differing = 0; // rows
    for (int y = std::max(spot.y() - kAround, step.header); y < end; ++y) {
        bool differs = false;
        for (int band = std::max(0, middle - 1); band <= std::min(tiles.bands - 1, middle + 1); ++band)
            differs =
                differs || tiles.hashes[tiles.at(band, y)] != before.hashes[before.at(band, y + step.shift)];
        differing += differs;
    }
    return differing >= kLitRows;
}

bool MovingPart::isStill(const TileGrid &previous, const TileGrid &next,
                         const std::optional<ScrollStep> &pane)
{
    const ScrollStep within = pane.value_or(ScrollStep{});
    const int firstBand = (within.left + TileGrid::kTileColumns - 1) / TileGrid::kTileColumns;
    const int endBand = next.bands - within.right / TileGrid::kTileColumns;
    int telling = 0;
    int changed = 0;
    for (int band = firstBand; band < endBand; ++band) {
        for (int y = within.header; y < next.rows - within.footer; ++y) {
            const size_t tile = next.at(band, y);
            if (next.uniform[tile] && previous.uniform[tile] && !hasChanged(previous, next, tile))
                continue;
            ++telling;
            changed += hasChanged(previous, next, tile);
        }
    }
    return changed < (pane ? kChangeInPane : kSmallChange) * telling;
}
