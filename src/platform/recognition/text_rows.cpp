#include "platform/recognition/text_rows.h"

#include <limits>
#include <numeric>
#include <ranges>

namespace {

class Groups {
public:
    explicit Groups(size_t count) : m_parent(count) { std::iota(m_parent.begin(), m_parent.end(), 0); }
    size_t rootOf(size_t i)
    {
        while (m_parent[i] != i)
            i = m_parent[i] = m_parent[m_parent[i]];
        return i;
    }
    void unite(size_t a, size_t b) { m_parent[rootOf(a)] = rootOf(b); }

private:
    std::vector<size_t> m_parent;
};

// Neighbours of alike size on one level.
bool areLettersOfOneLine(const Glyph &a, const Glyph &b)
{
    const int tall = std::max(a.box.height(), b.box.height());
    const int shorter = std::min(a.box.height(), b.box.height());
    return 2 * shorter >= tall && gapBetween(a, b) <= std::max(tall * 1.5, 8.0) &&
           sharedRows(a, b) > 0.45 * shorter;
}

void measure(TextRow &line, const std::vector<Glyph> &glyphs)
{
    std::vector<int> bottoms;
    line.box = {};
    for (const size_t i : line.glyphs) {
        line.box = line.box.united(glyphs[i].box);
        bottoms.push_back(glyphs[i].bottom());
    }
    std::ranges::sort(bottoms);
    int most = 0;
    for (const int bottom : bottoms) {
        const int count =
            int(std::ranges::upper_bound(bottoms, bottom) - std::ranges::lower_bound(bottoms, bottom));
        if (count > most) {
            most = count;
            line.baseline = bottom;
        }
    }
    std::vector<int> tops;
    std::vector<int> heights;
    for (const size_t i : line.glyphs) {
        tops.push_back(glyphs[i].top());
        heights.push_back(glyphs[i].box.height());
    }
    std::ranges::sort(tops);
    std::ranges::sort(heights);
    line.usual = heights[heights.size() / 2];
    line.top = std::min(tops[tops.size() / 10], line.baseline - 1);
}

std::vector<TextRow> grouped(const std::vector<Glyph> &glyphs, const Neighborhood &near,
                             const std::vector<size_t> &which)
{
    std::vector<bool> isMeant(glyphs.size(), false);
    for (const size_t i : which)
        isMeant[i] = true;
    Groups groups(glyphs.size());
    for (const size_t i : which)
        near.before(i, 2 * kTallestGlyph + 60, [&](size_t other) {
            if (other != i && isMeant[other] && areLettersOfOneLine(glyphs[i], glyphs[other]))
                groups.unite(i, other);
        });
    std::vector<TextRow> lines;
    std::vector<int> lineOf(glyphs.size(), -1);
    for (const size_t i : which) {
        const size_t root = groups.rootOf(i);
        if (lineOf[root] < 0) {
            lineOf[root] = int(lines.size());
            lines.emplace_back();
        }
        lines[size_t(lineOf[root])].glyphs.push_back(i);
    }
    for (TextRow &line : lines)
        measure(line, glyphs);
    return lines;
}

// Much taller than what stands around it on its rows: perhaps letters of two lines that touch.
bool standsOut(const std::vector<Glyph> &glyphs, const Neighborhood &near, size_t i)
{
    const Glyph &glyph = glyphs[i];
    const int reach = 5 * glyph.box.height();
    std::vector<int> heights;
    near.around(glyph.left() - reach, glyph.right() + reach, glyph, [&](size_t other) {
        if (other != i && sharedRows(glyph, glyphs[other]) > 0 &&
            glyphs[other].box.height() >= kShortestLetter)
            heights.push_back(glyphs[other].box.height());
    });
    if (heights.size() < 6)
        return false;
    std::ranges::sort(heights);
    return glyph.box.height() * 10 >= 16 * heights[heights.size() * 4 / 5];
}

// How far a glyph's nearest neighbour in a line is from it, to the left or right.
int gapTo(const TextRow &line, const std::vector<Glyph> &glyphs, const Glyph &glyph)
{
    int least = std::numeric_limits<int>::max();
    for (const size_t i : line.glyphs)
        least = std::min(least, gapBetween(glyphs[i], glyph));
    return least;
}

// Cuts letters that touch the line above or below apart, half way between the two lines. Gives the pieces;
// none when the glyph is of one line.
std::vector<Glyph> cut(const Glyph &glyph, const std::vector<TextRow> &lines,
                       const std::vector<Glyph> &glyphs, const cv::Mat &labels)
{
    std::vector<const TextRow *> crossed;
    for (const TextRow &line : lines) {
        const int shared = std::min(glyph.bottom(), line.baseline) - std::max(glyph.top(), line.top);
        if (line.glyphs.size() >= 3 && 2 * shared >= line.height() && line.height() >= kShortestLetter &&
            gapTo(line, glyphs, glyph) <= 3 * line.height())
            crossed.push_back(&line);
    }
    std::ranges::sort(crossed, {}, [](const TextRow *line) { return line->baseline; });
    std::vector<int> cuts;
    for (size_t i = 1; i < crossed.size(); ++i)
        if (crossed[i]->top > crossed[i - 1]->baseline - 1)
            cuts.push_back((crossed[i]->top + crossed[i - 1]->baseline + 1) / 2);
    if (cuts.empty())
        return {};
    cuts.push_back(glyph.bottom());
    std::vector<Glyph> pieces;
    int from = glyph.top();
    for (const int to : cuts) {
        Glyph piece{{}, glyph.label, glyph.strongest};
        for (int y = from; y < to; ++y) {
            const int *row = labels.ptr<int>(y);
            for (int x = glyph.left(); x < glyph.right(); ++x)
                if (row[x] == glyph.label)
                    piece.box = piece.box.united(QRect(x, y, 1, 1));
        }
        if (!piece.box.isEmpty())
            pieces.push_back(piece);
        from = to;
    }
    return pieces;
}

// Dots, accents, commas, quotation marks, dashes and underscores: small against the letters of their line.
bool areMarks(const TextRow &group, const TextRow &line)
{
    const int height = group.box.height();
    return 100 * height <= 38 * line.height() || (group.glyphs.size() <= 2 && 2 * height < line.height());
}

// How badly a mark stands for one of this line, in heights of the line; infinite for none of it.
double misplacement(const Glyph &mark, const TextRow &line)
{
    const double height = line.height();
    const double middle = mark.top() + mark.box.height() / 2.0;
    const bool isStroke = mark.box.width() >= 3 * mark.box.height() && 3 * mark.box.width() >= line.height();
    const double above = (line.top - middle) / height;
    const double below = (middle - line.baseline) / height;
    if (above > 0) // an accent over a capital; a stroke there rather underlines what is above
        return above > 0.4 ? std::numeric_limits<double>::infinity() : isStroke ? 2 * above : above;
    if (below > 0)
        return below > 0.5 ? std::numeric_limits<double>::infinity() : below;
    return 0;
}

void attach(size_t mark, std::vector<TextRow> &lines, const std::vector<Glyph> &glyphs,
            std::vector<bool> &isTaken)
{
    const Glyph &glyph = glyphs[mark];
    TextRow *best = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (TextRow &line : lines) {
        if (2 * glyph.box.height() >= line.height())
            continue;
        const double reach = std::max(1.5 * line.height(), 8.0);
        if (glyph.left() > line.box.right() + reach || glyph.right() < line.box.left() - reach)
            continue;
        const double misplaced = misplacement(glyph, line);
        if (misplaced >= least)
            continue;
        if (gapTo(line, glyphs, glyph) > reach)
            continue;
        least = misplaced;
        best = &line;
    }
    if (!best)
        return;
    best->glyphs.push_back(mark);
    best->box = best->box.united(glyph.box);
    isTaken[mark] = true;
}

// Words of one line across wider gaps, unless a rule stands between.
void joinWords(std::vector<TextRow> &lines, const std::vector<Glyph> &glyphs,
               const std::vector<QRect> &uprights)
{
    std::ranges::sort(lines, {}, [](const TextRow &line) { return line.box.left(); });
    const auto belong = [&](const TextRow &a, const TextRow &b) {
        const int low = std::min(a.height(), b.height());
        const int high = std::max(a.height(), b.height());
        const int shared = std::min(a.baseline, b.baseline) - std::max(a.top, b.top);
        const int gap = b.box.left() - a.box.left() - a.box.width();
        if (10 * shared < 6 * low || gap > 3 * std::max(a.usual, b.usual))
            return false;
        const TextRow &small = a.height() == low ? a : b;
        if (2 * low < high && small.glyphs.size() > 2)
            return false; // a line beside something larger
        if (gap < -low &&
            (10 * shared < 8 * low || std::abs(a.baseline - b.baseline) > std::max(2, high / 5)))
            return false;
        const QRect between(a.box.right(), std::max(a.top, b.top), std::max(gap, 1), shared);
        return std::ranges::none_of(uprights, [&](const QRect &rule) {
            return rule.intersects(between) && rule.height() > 1.2 * std::max(a.box.height(), b.box.height());
        });
    };
    for (size_t i = 0; i < lines.size(); ++i) {
        for (size_t j = i + 1; j < lines.size(); ++j) {
            TextRow &a = lines[i];
            TextRow &b = lines[j];
            if (a.glyphs.empty() || b.glyphs.empty() || !belong(a, b))
                continue;
            a.glyphs.insert(a.glyphs.end(), b.glyphs.begin(), b.glyphs.end());
            const QRect box = a.box.united(b.box);
            measure(a, glyphs);
            a.box = box;
            b.glyphs.clear();
        }
    }
    std::erase_if(lines, [](const TextRow &line) { return line.glyphs.empty(); });
}

// Cuts letters apart that touch those of another row.
void cutTouchingRows(Components &ink)
{
    std::vector<size_t> usual;
    std::vector<size_t> tall;
    const Neighborhood near(ink.glyphs, ink.labels.rows);
    for (size_t i = 0; i < ink.glyphs.size(); ++i)
        (standsOut(ink.glyphs, near, i) ? tall : usual).push_back(i);
    if (tall.empty())
        return;
    const std::vector<TextRow> rough = grouped(ink.glyphs, near, usual);
    for (const size_t i : tall) {
        const auto pieces = cut(ink.glyphs[i], rough, ink.glyphs, ink.labels);
        if (pieces.empty())
            continue;
        ink.glyphs[i] = pieces[0];
        ink.glyphs.insert(ink.glyphs.end(), pieces.begin() + 1, pieces.end());
    }
}

// Moves what is small against a row beside it out of the rows; gives its glyphs, from left to right.
std::vector<size_t> takeMarks(std::vector<TextRow> &rows, const std::vector<Glyph> &glyphs)
{
    const auto standByAnother = [&rows](const TextRow &group) {
        return std::ranges::any_of(rows, [&](const TextRow &row) {
            const int reach = std::max(row.height() * 3 / 2, 8);
            return areMarks(group, row) &&
                   row.box.adjusted(-reach, -row.height(), reach, row.height()).intersects(group.box);
        });
    };
    std::vector<TextRow> kept;
    std::vector<size_t> marks;
    for (const TextRow &group : rows) {
        if (standByAnother(group))
            marks.insert(marks.end(), group.glyphs.begin(), group.glyphs.end());
        else
            kept.push_back(group);
    }
    rows = std::move(kept);
    std::ranges::sort(marks, {}, [&](size_t i) { return glyphs[i].left(); });
    return marks;
}

} // namespace

std::vector<TextRow> rowsOf(Components &ink)
{
    cutTouchingRows(ink);
    const std::vector<Glyph> &glyphs = ink.glyphs;
    const Neighborhood near(glyphs, ink.labels.rows);
    std::vector<size_t> all(glyphs.size());
    std::iota(all.begin(), all.end(), 0);
    std::vector<TextRow> rows = grouped(glyphs, near, all);
    std::vector<size_t> marks = takeMarks(rows, glyphs);
    joinWords(rows, glyphs, ink.uprights);
    // Runs of dashes are attached one after the other, from either end.
    std::vector<bool> isTaken(glyphs.size(), false);
    for (const size_t mark : marks)
        attach(mark, rows, glyphs, isTaken);
    for (const size_t mark : std::ranges::reverse_view(marks))
        if (!isTaken[mark])
            attach(mark, rows, glyphs, isTaken);
    std::erase_if(marks, [&](size_t mark) { return isTaken[mark]; });
    const std::vector<TextRow> rest = grouped(glyphs, near, marks);
    rows.insert(rows.end(), rest.begin(), rest.end());
    joinWords(rows, glyphs, ink.uprights);
    return rows;
}
