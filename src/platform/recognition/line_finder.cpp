#include "platform/recognition/line_finder.h"

#include <numeric>
#include <opencv2/imgproc.hpp>

namespace {

constexpr int FaintestInk = 22;
constexpr int TallestGlyph = 140;
constexpr int ShortestLetter = 5;

struct Glyph {
    QRect box;
    int area = 0;
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
        found.glyphs.push_back({box, area, strongest[size_t(label)]});
    }
    return found;
}

bool belongTogether(const Glyph &a, const Glyph &b)
{
    const int tall = std::max(a.box.height(), b.box.height());
    const int gap = std::max(a.left(), b.left()) - std::min(a.right(), b.right());
    const int overlap = std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top());
    const int shorter = std::min(a.box.height(), b.box.height());
    if (gap > std::max(tall * 1.5, 8.0))
        return false;
    if (gap < 0 && overlap <= 0) // one above the other: dots, accents, the two bars of "="
        return -overlap <= std::max(3.0, 0.18 * tall) &&
               (shorter * 2 < tall + 2 || std::max(a.box.height(), b.box.height()) <= 4);
    if (shorter * 2 < tall) { // dots, dashes and quotes; underscores hang below
        const Glyph &small = a.box.height() < b.box.height() ? a : b;
        const Glyph &large = &small == &a ? b : a;
        const bool isUnderscore =
            small.top() >= large.bottom() - 1 && small.box.height() <= std::max(2, tall / 5) &&
            small.box.width() >= 3 * small.box.height() && small.box.width() >= tall / 3;
        return overlap > (isUnderscore ? -0.4 * tall : 0);
    }
    return overlap > 0.45 * shorter;
}

} // namespace

QList<TextRegion> findLines(const QImage &ink)
{
    Components found = components(ink);
    auto &glyphs = found.glyphs;
    std::ranges::sort(glyphs, {}, &Glyph::left);

    // Glyphs by bands of rows, so that only neighbours are compared.
    constexpr int Band = 32;
    std::vector<std::vector<size_t>> bands(size_t(ink.height() / Band + 1));
    Groups groups(glyphs.size());
    for (size_t i = 0; i < glyphs.size(); ++i) {
        const int first = std::max(0, (glyphs[i].top() - 4) / Band);
        const int last = std::min(int(bands.size()) - 1, (glyphs[i].bottom() + 4) / Band);
        for (int band = first; band <= last; ++band) {
            auto &row = bands[size_t(band)];
            for (auto it = row.rbegin(); it != row.rend(); ++it) {
                const Glyph &other = glyphs[*it];
                if (glyphs[i].left() - other.left() > 2 * TallestGlyph + 60)
                    break;
                if (belongTogether(other, glyphs[i]))
                    groups.unite(i, *it);
            }
            row.push_back(i);
        }
    }

    struct Line {
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
    std::vector<Line> lines;
    std::vector<int> lineOf(glyphs.size(), -1);
    for (size_t i = 0; i < glyphs.size(); ++i) {
        const size_t root = groups.rootOf(i);
        if (lineOf[root] < 0) {
            lineOf[root] = int(lines.size());
            lines.emplace_back();
        }
        Line &line = lines[size_t(lineOf[root])];
        line.box = line.box.united(glyphs[i].box);
        line.heights.push_back(glyphs[i].box.height());
        line.strengths.push_back(glyphs[i].strongest);
        line.glyphs.push_back(glyphs[i].box);
    }

    // Words of one line across wider gaps, unless a rule stands between.
    std::ranges::sort(lines, {}, [](const Line &line) { return line.box.left(); });
    for (size_t i = 0; i < lines.size(); ++i) {
        for (size_t j = i + 1; j < lines.size(); ++j) {
            Line &a = lines[i];
            Line &b = lines[j];
            if (a.box.isNull() || b.box.isNull())
                continue;
            const int gap = b.box.left() - a.box.left() - a.box.width();
            const int overlap =
                std::min(a.box.bottom(), b.box.bottom()) - std::max(a.box.top(), b.box.top()) + 1;
            const int shorter = std::min(a.box.height(), b.box.height());
            const int reach = 3 * std::max(a.glyphHeight(), b.glyphHeight());
            if (gap > reach || overlap < 0.6 * shorter || gap < -shorter)
                continue;
            const QRect between(a.box.right(), std::max(a.box.top(), b.box.top()), std::max(gap, 1), overlap);
            const bool ruled = std::ranges::any_of(found.uprights, [&](const QRect &rule) {
                return rule.intersects(between) &&
                       rule.height() > 1.2 * std::max(a.box.height(), b.box.height());
            });
            if (ruled)
                continue;
            a.box = a.box.united(b.box);
            a.heights.insert(a.heights.end(), b.heights.begin(), b.heights.end());
            a.strengths.insert(a.strengths.end(), b.strengths.begin(), b.strengths.end());
            a.glyphs.insert(a.glyphs.end(), b.glyphs.begin(), b.glyphs.end());
            b.box = {};
        }
    }
    for (Line &line : lines)
        line.dropFrameEnds();
    std::erase_if(lines, [](const Line &line) {
        // Alone, so small a glyph is the corner of a rounded shape rather than a letter.
        const int least = line.glyphs.size() <= 2 ? ShortestLetter + 2 : ShortestLetter;
        return line.glyphs.empty() || std::ranges::max(line.heights) < least;
    });
    std::ranges::sort(lines, [](const Line &a, const Line &b) {
        return std::pair(a.box.top(), a.box.left()) < std::pair(b.box.top(), b.box.left());
    });
    QList<TextRegion> regions;
    for (Line &line : lines) {
        std::ranges::sort(line.strengths);
        std::ranges::sort(line.glyphs, {}, [](const QRect &glyph) { return glyph.left(); });
        regions.append(
            {line.box, line.glyphHeight(), line.strengths[line.strengths.size() * 3 / 4], line.glyphs});
    }
    return regions;
}
