#include "platform/recognition/line_finder.h"

#include <limits>
#include <numeric>
#include <opencv2/imgproc.hpp>
#include <ranges>

namespace {

constexpr int FaintestInk = 22;
constexpr int TallestGlyph = 140;
constexpr int ShortestLetter = 5;

struct Glyph {
    QRect box;
    int label = 0;
    int strongest = 0;
    int left() const { return box.left(); }
    int right() const { return box.left() + box.width(); }
    int top() const { return box.top(); }
    int bottom() const { return box.top() + box.height(); }
};

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

struct Components {
    std::vector<Glyph> glyphs;
    std::vector<QRect> uprights; // rules between columns
    cv::Mat labels;
};

Components components(const QImage &ink)
{
    const cv::Mat map(ink.height(), ink.width(), CV_8UC1, const_cast<uchar *>(ink.constBits()),
                      size_t(ink.bytesPerLine()));
    cv::Mat mask;
    cv::threshold(map, mask, FaintestInk, 255, cv::THRESH_BINARY);
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centers;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centers, 8, CV_32S);
    std::vector<int> strongest(size_t(count), 0);
    for (int y = 0; y < map.rows; ++y) {
        const int *row = labels.ptr<int>(y);
        const uchar *values = map.ptr(y);
        for (int x = 0; x < map.cols; ++x)
            if (row[x])
                strongest[size_t(row[x])] = std::max<int>(strongest[size_t(row[x])], values[x]);
    }
    Components found;
    for (int label = 1; label < count; ++label) {
        const int width = stats.at<int>(label, cv::CC_STAT_WIDTH);
        const int height = stats.at<int>(label, cv::CC_STAT_HEIGHT);
        const int area = stats.at<int>(label, cv::CC_STAT_AREA);
        const QRect box(stats.at<int>(label, cv::CC_STAT_LEFT), stats.at<int>(label, cv::CC_STAT_TOP), width,
                        height);
        const double filled = double(area) / (double(width) * height);
        if (height >= 30 && width <= 4) {
            found.uprights.push_back(box);
            continue;
        }
        const bool rule = width > 40 && height <= 4;
        const bool frame = width > 24 && height > 14 && filled < 0.12;
        const bool longFrame = width > 6 * height && height > 12 && filled < 0.3;
        if (frame || longFrame)
            found.uprights.push_back(QRect(box.left(), box.top(), 1, height)),
                found.uprights.push_back(QRect(box.right(), box.top(), 1, height));
        // A terminal's block cursor: broader than any I, taller than a full stop.
        const bool cursor = filled > 0.97 && height >= 12 && width <= height && 9 * width >= 4 * height;
        if (rule || frame || longFrame || cursor || height > TallestGlyph || area < 2)
            continue;
        found.glyphs.push_back({box, label, strongest[size_t(label)]});
    }
    found.labels = labels;
    return found;
}

// Glyphs by bands of rows, so that only neighbours are looked at.
class Neighborhood {
public:
    Neighborhood(const std::vector<Glyph> &glyphs, int rows)
        : m_glyphs(glyphs), m_bands(size_t(rows / Band + 1))
    {
        for (size_t i = 0; i < glyphs.size(); ++i)
            for (int band = bandOf(glyphs[i].top()); band <= bandOf(glyphs[i].bottom()); ++band)
                m_bands[size_t(band)].push_back(i);
        for (auto &band : m_bands)
            std::ranges::sort(band, {}, [&](size_t i) { return glyphs[i].left(); });
    }
    // Calls visit(index) for glyphs that share rows with this one and begin at most `reach` to the left of
    // its beginning; once or more for each.
    template <typename Visit>
    void before(size_t i, int reach, Visit visit) const
    {
        const Glyph &glyph = m_glyphs[i];
        around(glyph.left() - reach, glyph.left(), glyph, visit);
    }
    template <typename Visit>
    void around(int from, int to, const Glyph &glyph, Visit visit) const
    {
        for (int b = bandOf(glyph.top()); b <= bandOf(glyph.bottom()); ++b) {
            const auto &band = m_bands[size_t(b)];
            auto it = std::ranges::lower_bound(band, from, {}, [&](size_t i) { return m_glyphs[i].left(); });
            for (; it != band.end() && m_glyphs[*it].left() <= to; ++it)
                visit(*it);
        }
    }

private:
    static constexpr int Band = 32;
    int bandOf(int y) const { return std::clamp(y / Band, 0, int(m_bands.size()) - 1); }
    const std::vector<Glyph> &m_glyphs;
    std::vector<std::vector<size_t>> m_bands;
};

int gapBetween(const Glyph &a, const Glyph &b)
{
    return std::max(a.left(), b.left()) - std::min(a.right(), b.right());
}

int sharedRows(const Glyph &a, const Glyph &b)
{
    return std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top());
}

// Neighbours of alike size on one level.
bool areLettersOfOneLine(const Glyph &a, const Glyph &b)
{
    const int tall = std::max(a.box.height(), b.box.height());
    const int shorter = std::min(a.box.height(), b.box.height());
    return 2 * shorter >= tall && gapBetween(a, b) <= std::max(tall * 1.5, 8.0) &&
           sharedRows(a, b) > 0.45 * shorter;
}

struct Line {
    std::vector<size_t> glyphs;
    QRect box;
    int top = 0;      // of its tall letters
    int baseline = 0; // the row under its letters
    int usual = 0;    // height of its letters
    int height() const { return baseline - top; }
};

void measure(Line &line, const std::vector<Glyph> &glyphs)
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

std::vector<Line> grouped(const std::vector<Glyph> &glyphs, const Neighborhood &near,
                          const std::vector<size_t> &which)
{
    std::vector<bool> isMeant(glyphs.size(), false);
    for (const size_t i : which)
        isMeant[i] = true;
    Groups groups(glyphs.size());
    for (const size_t i : which)
        near.before(i, 2 * TallestGlyph + 60, [&](size_t other) {
            if (other != i && isMeant[other] && areLettersOfOneLine(glyphs[i], glyphs[other]))
                groups.unite(i, other);
        });
    std::vector<Line> lines;
    std::vector<int> lineOf(glyphs.size(), -1);
    for (const size_t i : which) {
        const size_t root = groups.rootOf(i);
        if (lineOf[root] < 0) {
            lineOf[root] = int(lines.size());
            lines.emplace_back();
        }
        lines[size_t(lineOf[root])].glyphs.push_back(i);
    }
    for (Line &line : lines)
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
            glyphs[other].box.height() >= ShortestLetter)
            heights.push_back(glyphs[other].box.height());
    });
    if (heights.size() < 6)
        return false;
    std::ranges::sort(heights);
    return glyph.box.height() * 10 >= 16 * heights[heights.size() * 4 / 5];
}

// How far a glyph's nearest neighbour in a line is from it, to the left or right.
int gapTo(const Line &line, const std::vector<Glyph> &glyphs, const Glyph &glyph)
{
    int least = std::numeric_limits<int>::max();
    for (const size_t i : line.glyphs)
        least = std::min(least, gapBetween(glyphs[i], glyph));
    return least;
}

// Cuts letters that touch the line above or below apart, half way between the two lines. Gives the pieces;
// none when the glyph is of one line.
std::vector<Glyph> cut(const Glyph &glyph, const std::vector<Line> &lines, const std::vector<Glyph> &glyphs,
                       const cv::Mat &labels)
{
    std::vector<const Line *> crossed;
    for (const Line &line : lines) {
        const int shared = std::min(glyph.bottom(), line.baseline) - std::max(glyph.top(), line.top);
        if (line.glyphs.size() >= 3 && 2 * shared >= line.height() && line.height() >= ShortestLetter &&
            gapTo(line, glyphs, glyph) <= 3 * line.height())
            crossed.push_back(&line);
    }
    std::ranges::sort(crossed, {}, [](const Line *line) { return line->baseline; });
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
bool areMarks(const Line &group, const Line &line)
{
    const int height = group.box.height();
    return 100 * height <= 38 * line.height() || (group.glyphs.size() <= 2 && 2 * height < line.height());
}

// How badly a mark stands for one of this line, in heights of the line; infinite for none of it.
double misplacement(const Glyph &mark, const Line &line)
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

void attach(size_t mark, std::vector<Line> &lines, const std::vector<Glyph> &glyphs,
            std::vector<bool> &isTaken)
{
    const Glyph &glyph = glyphs[mark];
    Line *best = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (Line &line : lines) {
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
void joinWords(std::vector<Line> &lines, const std::vector<Glyph> &glyphs, const std::vector<QRect> &uprights)
{
    std::ranges::sort(lines, {}, [](const Line &line) { return line.box.left(); });
    const auto belong = [&](const Line &a, const Line &b) {
        const int low = std::min(a.height(), b.height());
        const int high = std::max(a.height(), b.height());
        const int shared = std::min(a.baseline, b.baseline) - std::max(a.top, b.top);
        const int gap = b.box.left() - a.box.left() - a.box.width();
        if (10 * shared < 6 * low || gap > 3 * std::max(a.usual, b.usual))
            return false;
        const Line &small = a.height() == low ? a : b;
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
            Line &a = lines[i];
            Line &b = lines[j];
            if (a.glyphs.empty() || b.glyphs.empty() || !belong(a, b))
                continue;
            a.glyphs.insert(a.glyphs.end(), b.glyphs.begin(), b.glyphs.end());
            const QRect box = a.box.united(b.box);
            measure(a, glyphs);
            a.box = box;
            b.glyphs.clear();
        }
    }
    std::erase_if(lines, [](const Line &line) { return line.glyphs.empty(); });
}

// Letters first, then the marks that stand by them.
std::vector<Line> linesOf(std::vector<Glyph> &glyphs, const cv::Mat &labels,
                          const std::vector<QRect> &uprights)
{
    std::vector<size_t> usual;
    std::vector<size_t> tall;
    {
        const Neighborhood near(glyphs, labels.rows);
        for (size_t i = 0; i < glyphs.size(); ++i)
            (standsOut(glyphs, near, i) ? tall : usual).push_back(i);
    }
    if (!tall.empty()) {
        const Neighborhood near(glyphs, labels.rows);
        const std::vector<Line> rough = grouped(glyphs, near, usual);
        for (const size_t i : tall) {
            const auto pieces = cut(glyphs[i], rough, glyphs, labels);
            if (pieces.empty())
                continue;
            glyphs[i] = pieces[0];
            glyphs.insert(glyphs.end(), pieces.begin() + 1, pieces.end());
        }
    }
    const Neighborhood near(glyphs, labels.rows);
    std::vector<size_t> all(glyphs.size());
    std::iota(all.begin(), all.end(), 0);
    std::vector<Line> groups = grouped(glyphs, near, all);

    std::vector<Line> lines;
    std::vector<size_t> marks;
    for (const Line &group : groups) {
        const bool marked = std::ranges::any_of(groups, [&](const Line &line) {
            const int reach = std::max(line.height() * 3 / 2, 8);
            return areMarks(group, line) &&
                   line.box.adjusted(-reach, -line.height(), reach, line.height()).intersects(group.box);
        });
        if (marked)
            marks.insert(marks.end(), group.glyphs.begin(), group.glyphs.end());
        else
            lines.push_back(group);
    }
    joinWords(lines, glyphs, uprights);
    std::ranges::sort(marks, {}, [&](size_t i) { return glyphs[i].left(); });
    std::vector<bool> isTaken(glyphs.size(), false);
    for (const size_t mark : marks)
        attach(mark, lines, glyphs, isTaken);
    for (const size_t mark : std::ranges::reverse_view(marks))
        if (!isTaken[mark])
            attach(mark, lines, glyphs, isTaken);
    std::erase_if(marks, [&](size_t mark) { return isTaken[mark]; });
    const std::vector<Line> rest = grouped(glyphs, near, marks);
    lines.insert(lines.end(), rest.begin(), rest.end());
    joinWords(lines, glyphs, uprights);
    return lines;
}

} // namespace

QList<TextRegion> findLines(const QImage &ink)
{
    Components found = components(ink);
    std::vector<Glyph> &glyphs = found.glyphs;

    struct Stretch {
        QRect box;
        std::vector<int> heights;
        std::vector<int> strengths;
        std::vector<QRect> glyphs;
        // The upright side of a field's frame is no letter: it stands out above and below all others.
        void dropFrameEnds()
        {
            std::ranges::sort(glyphs, {}, [](const QRect &glyph) { return glyph.left(); });
            const auto standsOut = [this](size_t index) {
                const QRect &end = glyphs[index];
                if (end.width() > 3)
                    return false;
                QRect others;
                for (size_t i = 0; i < glyphs.size(); ++i)
                    if (i != index)
                        others = others.united(glyphs[i]);
                return end.top() + 3 <= others.top() && end.bottom() >= others.bottom() + 2;
            };
            bool dropped = false;
            while (glyphs.size() > 1 && standsOut(glyphs.size() - 1)) {
                glyphs.pop_back();
                dropped = true;
            }
            while (glyphs.size() > 1 && standsOut(0)) {
                glyphs.erase(glyphs.begin());
                dropped = true;
            }
            if (!dropped)
                return;
            box = {};
            heights.clear();
            for (const QRect &glyph : glyphs) {
                box = box.united(glyph);
                heights.push_back(glyph.height());
            }
        }
        int glyphHeight() const
        {
            std::vector<int> sorted = heights;
            std::ranges::sort(sorted);
            return sorted[sorted.size() / 2];
        }
    };
    std::vector<Stretch> lines;
    for (const Line &line : linesOf(glyphs, found.labels, found.uprights)) {
        Stretch &stretch = lines.emplace_back();
        stretch.box = line.box;
        for (const size_t i : line.glyphs) {
            stretch.heights.push_back(glyphs[i].box.height());
            stretch.strengths.push_back(glyphs[i].strongest);
            stretch.glyphs.push_back(glyphs[i].box);
        }
    }

    for (Stretch &line : lines)
        line.dropFrameEnds();
    std::erase_if(lines, [](const Stretch &line) {
        // Alone, so small a glyph is the corner of a rounded shape rather than a letter.
        const int least = line.glyphs.size() <= 2 ? ShortestLetter + 2 : ShortestLetter;
        // Alone, so thin a stroke is the side of a field's frame.
        const bool isStroke = line.glyphs.size() == 1 && line.box.height() >= 9 * line.box.width();
        return line.glyphs.empty() || isStroke || std::ranges::max(line.heights) < least;
    });
    std::ranges::sort(lines, [](const Stretch &a, const Stretch &b) {
        return std::pair(a.box.top(), a.box.left()) < std::pair(b.box.top(), b.box.left());
    });
    QList<TextRegion> regions;
    for (Stretch &line : lines) {
        std::ranges::sort(line.strengths);
        std::ranges::sort(line.glyphs, {}, [](const QRect &glyph) { return glyph.left(); });
        regions.append(
            {line.box, line.glyphHeight(), line.strengths[line.strengths.size() * 3 / 4], line.glyphs});
    }
    return regions;
}
