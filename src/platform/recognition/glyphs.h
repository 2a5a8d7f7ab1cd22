#pragma once

#include <QImage>
#include <QRect>
#include <opencv2/core.hpp>
#include <vector>

inline constexpr int kTallestGlyph = 140; // pixels; what is taller is no text
inline constexpr int kShortestLetter = 5;

// A connected piece of ink that may be a letter or a part of one.
struct Glyph {
    QRect box;
    int label = 0;
    int strongest = 0;
    int left() const { return box.left(); }
    int right() const { return box.left() + box.width(); }
    int top() const { return box.top(); }
    int bottom() const { return box.top() + box.height(); }
};

// What a picture's ink is made of.
struct Components {
    std::vector<Glyph> glyphs;
    std::vector<QRect> uprights; // rules between columns
    cv::Mat labels;
};

Components components(const QImage &ink);

// Glyphs by bands of rows, so that only neighbours are looked at.
class Neighborhood {
public:
    Neighborhood(const std::vector<Glyph> &glyphs, int rows)
        : m_glyphs(glyphs), m_bands(size_t(rows / kBand + 1))
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
    static constexpr int kBand = 32;
    int bandOf(int y) const { return std::clamp(y / kBand, 0, int(m_bands.size()) - 1); }
    const std::vector<Glyph> &m_glyphs;
    std::vector<std::vector<size_t>> m_bands;
};

// Pixels from one to the other along a row; negative where one stands above the other.
inline int gapBetween(const Glyph &a, const Glyph &b)
{
    return std::max(a.left(), b.left()) - std::min(a.right(), b.right());
}

inline int sharedRows(const Glyph &a, const Glyph &b)
{
    return std::min(a.bottom(), b.bottom()) - std::max(a.top(), b.top());
}
