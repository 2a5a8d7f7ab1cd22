#pragma once

#include <QRgb>
#include <cstdint>
#include <span>
#include <vector>

// The colours of one picture of at most so many, and where each of its colours is found among them. When
// there is room for all, they stay what they are. Otherwise those that cover most stay exact, as plain areas
// do, and the rest is shared out by splitting boxes of colours where their variance is largest.
class GifPalette {
public:
    // `pixels` are all that will be asked for; their alpha doesn't count.
    GifPalette(std::span<const QRgb> pixels, int most);

    const std::vector<QRgb> &colors() const { return m_colors; }
    // Of a colour that wasn't among the pixels: the nearest.
    int indexOf(QRgb color) const;

private:
    struct Counted {
        QRgb color = 0;
        std::uint32_t count = 0;
    };

    void count(std::span<const QRgb> pixels);
    void quantize(int most);
    void assign();
    void sortBySum();
    int nearest(QRgb color) const;

    std::vector<Counted> m_counted;
    std::vector<QRgb> m_colors;
    // The colours by the sum of their channels, by which the nearest is found.
    struct Placed {
        int sum = 0;
        int red = 0, green = 0, blue = 0;
        int index = 0;
    };
    std::vector<Placed> m_bySum;
    // Open addressing: colour + 1 and its place in m_counted, later its index.
    std::vector<std::uint32_t> m_keys;
    std::vector<std::uint32_t> m_values;
};
