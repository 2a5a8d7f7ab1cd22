#include "recording/gif_palette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace {

constexpr std::uint32_t kColor = 0xffffff;
// A colour that covers one pixel in so many stays exact, for half of the places at most.
constexpr std::size_t kExactShare = 400;
constexpr int kRefinements = 2;
// Colours that differ by no more in each channel may be one and the noise of the film's compression. On seven
// films (pages that scroll, a moved window, typing, photographs, fractals) files get 3 to 9% smaller, at -0.1
// to 0 dB.
constexpr int kNoise = 3;
// So many colours are shared out each for itself, more in bins; a page of 300 greys gains 0.3 dB.
constexpr std::size_t kFew = 4096;
// Where not all colours have room, a table that isn't full makes for shorter codes: the same films get 2 to
// 11% smaller than with 255 and lose up to 1.2 dB, where they are well above the palette of a whole film.
constexpr int kShared = 159;

std::uint32_t hashOf(std::uint32_t color, std::uint32_t mask)
{
    return color * 2654435761U >> 7 & mask;
}

bool isAlike(QRgb one, QRgb other)
{
    return std::abs(qRed(one) - qRed(other)) <= kNoise && std::abs(qGreen(one) - qGreen(other)) <= kNoise &&
           std::abs(qBlue(one) - qBlue(other)) <= kNoise;
}

// Colours of nearly the same value, as one.
struct Bin {
    double red = 0, green = 0, blue = 0; // means
    double count = 0;
    double channel(int axis) const { return axis == 0 ? red : axis == 1 ? green : blue; }
};

struct Box {
    std::size_t first = 0, last = 0; // bins
    std::array<double, 3> mean{};
    std::array<double, 3> spread{}; // sums of squares
    double count = 0;
    int widest() const { return int(std::ranges::max_element(spread) - spread.begin()); }
    double gain() const { return spread[std::size_t(widest())]; }
};

Box boxOf(const std::vector<Bin> &bins, std::size_t first, std::size_t last)
{
    Box box{first, last, {}, {}, 0};
    for (std::size_t i = first; i < last; ++i) {
        box.count += bins[i].count;
        for (int axis = 0; axis < 3; ++axis)
            box.mean[std::size_t(axis)] += bins[i].count * bins[i].channel(axis);
    }
    for (double &mean : box.mean)
        mean /= box.count;
    for (std::size_t i = first; i < last; ++i) {
        for (int axis = 0; axis < 3; ++axis) {
            const double off = bins[i].channel(axis) - box.mean[std::size_t(axis)];
            box.spread[std::size_t(axis)] += bins[i].count * off * off;
        }
    }
    return box;
}

QRgb rgbOf(const std::array<double, 3> &mean)
{
    return qRgb(int(std::lround(mean[0])), int(std::lround(mean[1])), int(std::lround(mean[2])));
}

} // namespace

GifPalette::GifPalette(std::span<const QRgb> pixels, int most)
{
    count(pixels);
    if (int(m_counted.size()) <= most) {
        for (const Counted &counted : m_counted)
            m_colors.push_back(counted.color | 0xff000000U);
        sortBySum();
        return; // the values are the indices already
    }
    quantize(std::min(most, kShared));
    sortBySum();
    assign();
}

int GifPalette::indexOf(QRgb color) const
{
    const auto mask = std::uint32_t(m_keys.size() - 1);
    const std::uint32_t key = (color & kColor) + 1;
    for (std::uint32_t at = hashOf(key, mask); m_keys[at] != 0; at = (at + 1) & mask) {
        if (m_keys[at] == key)
            return int(m_values[at]);
    }
    return nearest(color);
}

void GifPalette::count(std::span<const QRgb> pixels)
{
    m_keys.assign(1024, 0);
    m_values.assign(1024, 0);
    auto mask = std::uint32_t(m_keys.size() - 1);
    const auto grow = [&] {
        m_keys.assign(m_keys.size() * 4, 0);
        m_values.assign(m_keys.size(), 0);
        mask = std::uint32_t(m_keys.size() - 1);
        for (std::size_t i = 0; i < m_counted.size(); ++i) {
            std::uint32_t at = hashOf(m_counted[i].color + 1, mask);
            while (m_keys[at] != 0)
                at = (at + 1) & mask;
            m_keys[at] = m_counted[i].color + 1;
            m_values[at] = std::uint32_t(i);
        }
    };
    std::uint32_t lastColor = ~0U;
    std::uint32_t lastPlace = 0;
    for (const QRgb pixel : pixels) {
        const std::uint32_t color = pixel & kColor;
        if (color == lastColor) {
            ++m_counted[lastPlace].count;
            continue;
        }
        std::uint32_t at = hashOf(color + 1, mask);
        while (m_keys[at] != 0 && m_keys[at] != color + 1)
            at = (at + 1) & mask;
        if (m_keys[at] == 0) {
            m_keys[at] = color + 1;
            m_values[at] = std::uint32_t(m_counted.size());
            m_counted.push_back({color, 0});
        }
        lastColor = color;
        lastPlace = m_values[at];
        ++m_counted[lastPlace].count;
        if (m_counted.size() * 2 > m_keys.size())
            grow();
    }
}

void GifPalette::quantize(int most)
{
    std::size_t total = 0;
    for (const Counted &counted : m_counted)
        total += counted.count;
    std::vector<Counted> frequent = m_counted;
    std::erase_if(frequent, [&](const Counted &counted) { return counted.count * kExactShare < total; });
    std::ranges::sort(frequent, std::ranges::greater(), &Counted::count);
    std::vector<Counted> apart; // a colour and its noise take one place
    for (const Counted &counted : frequent) {
        if (std::ranges::none_of(apart,
                                 [&](const Counted &kept) { return isAlike(kept.color, counted.color); }))
            apart.push_back(counted);
    }
    frequent = std::move(apart);
    frequent.resize(std::min(frequent.size(), std::size_t(most) / 2));
    for (const Counted &counted : frequent)
        m_colors.push_back(counted.color | 0xff000000U);

    // The rest each for itself, or in bins of four values a channel where there are very many.
    const bool isFew = m_counted.size() <= kFew;
    std::vector<Bin> cells(isFew ? m_counted.size() : std::size_t(1) << 18);
    for (std::size_t i = 0; i < m_counted.size(); ++i) {
        const Counted &counted = m_counted[i];
        if (std::ranges::find(frequent, counted.color, &Counted::color) != frequent.end())
            continue;
        const int red = qRed(counted.color), green = qGreen(counted.color), blue = qBlue(counted.color);
        Bin &bin = cells[isFew ? i : std::size_t(red >> 2 << 12 | green >> 2 << 6 | blue >> 2)];
        bin.red += double(red) * counted.count;
        bin.green += double(green) * counted.count;
        bin.blue += double(blue) * counted.count;
        bin.count += counted.count;
    }
    std::erase_if(cells, [](const Bin &bin) { return bin.count == 0; });
    for (Bin &bin : cells) {
        bin.red /= bin.count;
        bin.green /= bin.count;
        bin.blue /= bin.count;
    }
    if (cells.empty())
        return;
    std::vector<Box> boxes{boxOf(cells, 0, cells.size())};
    const std::size_t wanted = std::size_t(most) - m_colors.size();
    while (boxes.size() < wanted) {
        const auto widest = std::ranges::max_element(boxes, {}, &Box::gain);
        if (widest->gain() <= 0)
            break;
        const Box box = *widest;
        const int axis = box.widest();
        const auto middle = std::partition(
            cells.begin() + std::ptrdiff_t(box.first), cells.begin() + std::ptrdiff_t(box.last),
            [&](const Bin &bin) { return bin.channel(axis) <= box.mean[std::size_t(axis)]; });
        const auto split = std::size_t(middle - cells.begin());
        if (split == box.first || split == box.last)
            break;
        *widest = boxOf(cells, box.first, split);
        boxes.push_back(boxOf(cells, split, box.last));
    }
    const std::size_t exact = m_colors.size();
    for (const Box &box : boxes)
        m_colors.push_back(rgbOf(box.mean));

    // Means of what is really nearest to each.
    for (int round = 0; round < kRefinements; ++round) {
        sortBySum();
        std::vector<std::array<double, 4>> sums(m_colors.size());
        for (const Bin &bin : cells) {
            auto &sum = sums[std::size_t(nearest(rgbOf({bin.red, bin.green, bin.blue})))];
            sum[0] += bin.red * bin.count;
            sum[1] += bin.green * bin.count;
            sum[2] += bin.blue * bin.count;
            sum[3] += bin.count;
        }
        for (std::size_t i = exact; i < m_colors.size(); ++i) {
            if (sums[i][3] > 0)
                m_colors[i] =
                    rgbOf({sums[i][0] / sums[i][3], sums[i][1] / sums[i][3], sums[i][2] / sums[i][3]});
        }
    }
}

void GifPalette::assign()
{
    for (std::size_t at = 0; at < m_keys.size(); ++at) {
        if (m_keys[at] != 0)
            m_values[at] = std::uint32_t(nearest(m_keys[at] - 1));
    }
}

void GifPalette::sortBySum()
{
    m_bySum.clear();
    for (std::size_t i = 0; i < m_colors.size(); ++i) {
        const int red = qRed(m_colors[i]), green = qGreen(m_colors[i]), blue = qBlue(m_colors[i]);
        m_bySum.push_back({red + green + blue, red, green, blue, int(i)});
    }
    std::ranges::sort(m_bySum, {}, &Placed::sum);
}

// Outwards from the colours of the same sum, on both sides: two colours are at least as far apart as their
// sums by the root of three.
int GifPalette::nearest(QRgb color) const
{
    const int red = qRed(color), green = qGreen(color), blue = qBlue(color);
    const int sum = red + green + blue;
    const Placed *const begin = m_bySum.data();
    const Placed *const end = begin + m_bySum.size();
    const Placed *up =
        std::lower_bound(begin, end, sum, [](const Placed &placed, int value) { return placed.sum < value; });
    const Placed *down = up;
    int best = 0;
    int least = INT32_MAX / 3;
    const auto look = [&](const Placed &placed) {
        const int apart = placed.sum - sum;
        if (apart * apart > 3 * least)
            return false;
        const int r = placed.red - red, g = placed.green - green, b = placed.blue - blue;
        const int distance = r * r + g * g + b * b;
        if (distance < least) {
            least = distance;
            best = placed.index;
        }
        return true;
    };
    while (up != end || down != begin) {
        if (up != end)
            up = look(*up) ? up + 1 : end;
        if (down != begin)
            down = look(down[-1]) ? down - 1 : begin;
    }
    return best;
}
