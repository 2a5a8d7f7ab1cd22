#include "platform/recognition/line_finder.h"

#include "platform/recognition/text_rows.h"

namespace {

// A row in the making of a region.
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
} // namespace

QList<TextRegion> findLines(const QImage &ink)
{
    Components found = components(ink);
    std::vector<Stretch> lines;
    for (const TextRow &row : rowsOf(found)) {
        Stretch &stretch = lines.emplace_back();
        stretch.box = row.box;
        for (const size_t i : row.glyphs) {
            stretch.heights.push_back(found.glyphs[i].box.height());
            stretch.strengths.push_back(found.glyphs[i].strongest);
            stretch.glyphs.push_back(found.glyphs[i].box);
        }
    }

    for (Stretch &line : lines)
        line.dropFrameEnds();
    std::erase_if(lines, [](const Stretch &line) {
        // Alone, so small a glyph is the corner of a rounded shape rather than a letter.
        const int least = line.glyphs.size() <= 2 ? kShortestLetter + 2 : kShortestLetter;
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
