#include "document/pixelation.h"

#include "document/opaque.h"
#include "document/pixelation_grounds.h"

#include <QRandomGenerator>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>
#include <vector>

namespace {

// The standard deviation of the noise along the spread of a neighbourhood, in standard deviations of its
// brightness: from block to block, and of the part that is as smooth as the means are. Chosen so that an
// attacker who knows the algorithm and the distribution of its noise guesses little better than chance; see
// the test.
constexpr double kRoughNoise = 0.25;
constexpr double kSmoothNoise = 0.3;
// Blocks whose grounds differ by more than this in brightness don't mix.
constexpr double kOtherGround = 40;
// A contrast below which nothing is legible that was worth hiding.
constexpr int kFaint = 40;
// Blocks are sampled at least this often along a side.
constexpr int kSamplesPerSide = 12;

// Noise that only who has the key can repeat: the stream of ChaCha with eight rounds (D. J. Bernstein,
// ChaCha, a variant of Salsa20, 2008), one block of it for each block of the picture.
class Noise {
public:
    Noise(const std::array<uint32_t, 8> &key, uint64_t picture) : m_key(key), m_picture(picture) {}

    // Two independent normal deviates (Box and Muller, 1958).
    std::array<double, 2> at(uint32_t index) const
    {
        std::array<uint32_t, 16> s{0x61707865, 0x3320646e, 0x79622d32, 0x6b206574};
        std::copy(m_key.begin(), m_key.end(), s.begin() + 4);
        s[12] = index;
        s[13] = static_cast<uint32_t>(m_picture);
        s[14] = static_cast<uint32_t>(m_picture >> 32);
        const std::array<uint32_t, 16> before = s;
        for (int round = 0; round < 4; ++round) { // eight single rounds
            quarter(s[0], s[4], s[8], s[12]);
            quarter(s[1], s[5], s[9], s[13]);
            quarter(s[2], s[6], s[10], s[14]);
            quarter(s[3], s[7], s[11], s[15]);
            quarter(s[0], s[5], s[10], s[15]);
            quarter(s[1], s[6], s[11], s[12]);
            quarter(s[2], s[7], s[8], s[13]);
            quarter(s[3], s[4], s[9], s[14]);
        }
        const double radius = std::sqrt(-2 * std::log((s[0] + before[0] + 0.5) / 4294967296.0));
        const double angle = 2 * std::numbers::pi * ((s[1] + before[1]) / 4294967296.0);
        return {radius * std::cos(angle), radius * std::sin(angle)};
    }

private:
    static void quarter(uint32_t &a, uint32_t &b, uint32_t &c, uint32_t &d)
    {
        const auto turn = [](uint32_t v, int by) { return (v << by) | (v >> (32 - by)); };
        a += b;
        d = turn(d ^ a, 16);
        c += d;
        b = turn(b ^ c, 12);
        a += b;
        d = turn(d ^ a, 8);
        c += d;
        b = turn(b ^ c, 7);
    }

    std::array<uint32_t, 8> m_key;
    uint64_t m_picture;
};

const std::array<uint32_t, 8> &keyOfThisRun()
{
    static const std::array<uint32_t, 8> key = [] {
        std::array<uint32_t, 8> words;
        QRandomGenerator::system()->fillRange(words.data(), words.size());
        return words;
    }();
    return key;
}

// Colours come from the picture without transparency, opacity from the picture itself.
Block measure(const QImage &image, const QImage &seen, int x0, int x1, int y0, int y1, int stepX, int stepY)
{
    std::array<int64_t, 3> sum{};
    std::array<int64_t, 3> product{};
    int64_t squares = 0;
    int64_t lights = 0;
    int64_t count = 0;
    std::array<int, kBins> histogram{};
    Block block;
    for (int y = y0; y < y1; y += stepY) {
        const uchar *line = seen.constScanLine(y);
        const uchar *opacities = image.constScanLine(y) + 3;
        std::array<int, 3> s{};
        std::array<int, 3> p{};
        int sq = 0;
        int li = 0;
        for (int x = x0; x < x1; x += stepX) {
            const uchar *px = line + 4 * static_cast<qsizetype>(x);
            const int light = (px[0] + 2 * px[1] + px[2]) >> 2;
            for (int c = 0; c < 3; ++c) {
                s[c] += px[c];
                p[c] += px[c] * light;
            }
            const int opacity = opacities[4 * static_cast<qsizetype>(x)];
            block.faintest = std::min(block.faintest, opacity);
            block.strongest = std::max(block.strongest, opacity);
            sq += light * light;
            li += light;
            ++histogram[light * kBins / 256];
            block.darkest = std::min(block.darkest, light);
            block.brightest = std::max(block.brightest, light);
            ++count;
        }
        for (int c = 0; c < 3; ++c)
            sum[c] += s[c];
        for (int c = 0; c < 3; ++c)
            product[c] += p[c];
        squares += sq;
        lights += li;
    }
    if (count == 0)
        return block;
    const double n = static_cast<double>(count);
    const double light = lights / n;
    for (int c = 0; c < 3; ++c)
        block.mean[c] = sum[c] / n;
    for (int c = 0; c < 3; ++c)
        block.spread[c] = product[c] / n - block.mean[c] * light;
    block.variance = std::max(0.0, squares / n - light * light);
    for (int i = 0; i < kBins; ++i)
        block.histogram[i] = static_cast<float>(histogram[i] / n);
    block.shades = shadesOf(seen, QRect(QPoint(x0, y0), QPoint(x1 - 1, y1 - 1)), stepX, stepY);
    return block;
}

// What nobody else can know of a picture, from all that was measured in it.
uint64_t fingerprint(const std::vector<Block> &blocks)
{
    uint64_t hash = 14695981039346656037ull; // FNV-1a
    const auto *bytes = reinterpret_cast<const unsigned char *>(blocks.data());
    for (size_t i = 0; i < blocks.size() * sizeof(Block); ++i)
        hash = (hash ^ bytes[i]) * 1099511628211ull;
    return hash;
}

// The brightness of the ground that a text stands on: what most of the blocks around have, whatever the
// letters are.
std::vector<double> groundsOf(const std::vector<Block> &blocks, const Grid &grid)
{
    std::vector<double> grounds(blocks.size());
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column) {
            std::array<float, kBins> sum{};
            for (int y = std::max(row - 1, 0); y <= std::min(row + 1, grid.rows - 1); ++y) {
                for (int x = std::max(column - 1, 0); x <= std::min(column + 1, grid.columns - 1); ++x) {
                    const auto &histogram = blocks[static_cast<size_t>(y) * grid.columns + x].histogram;
                    for (int i = 0; i < kBins; ++i)
                        sum[i] += histogram[i];
                }
            }
            const auto most = std::max_element(sum.begin(), sum.end()) - sum.begin();
            grounds[static_cast<size_t>(row) * grid.columns + column] = (most + 0.5) * 256 / kBins;
        }
    }
    return grounds;
}

// A tent of weights over the blocks around one that stand on its ground.
template <typename Visit>
void visitNeighbours(const Grid &grid, const std::vector<double> &grounds, int column, int row, Visit visit)
{
    const double ground = grounds[static_cast<size_t>(row) * grid.columns + column];
    const int top = std::min(row + grid.reach, grid.rows - 1);
    const int right = std::min(column + grid.reach, grid.columns - 1);
    for (int y = std::max(row - grid.reach, 0); y <= top; ++y) {
        for (int x = std::max(column - grid.reach, 0); x <= right; ++x) {
            const size_t index = static_cast<size_t>(y) * grid.columns + x;
            if (std::abs(grounds[index] - ground) <= kOtherGround)
                visit(index,
                      (grid.reach + 1 - std::abs(x - column)) * (grid.reach + 1.0 - std::abs(y - row)));
        }
    }
}

Block neighbourhood(const std::vector<Block> &blocks, const std::vector<double> &grounds, const Grid &grid,
                    int column, int row)
{
    Block result;
    double total = 0;
    visitNeighbours(grid, grounds, column, row, [&](size_t index, double weight) {
        const Block &block = blocks[index];
        for (int c = 0; c < 3; ++c)
            result.mean[c] += weight * block.mean[c];
        for (int c = 0; c < 3; ++c)
            result.spread[c] += weight * block.spread[c];
        result.variance += weight * block.variance;
        total += weight;
    });
    for (double &mean : result.mean)
        mean /= total;
    for (double &spread : result.spread)
        spread /= total;
    result.variance /= total;
    return result;
}

// The noise of every block: a rough part of its own, and one that the means' own filter has smoothed.
std::vector<double> noiseOf(const Noise &noise, const Grid &grid)
{
    // On one ground: where the noise is smooth must not tell what lies under it.
    const std::vector<double> grounds(static_cast<size_t>(grid.columns) * grid.rows, 0);
    std::vector<std::array<double, 2>> raw(grounds.size());
    for (size_t i = 0; i < raw.size(); ++i)
        raw[i] = noise.at(static_cast<uint32_t>(i));
    std::vector<double> result(raw.size());
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column) {
            double sum = 0;
            double squares = 0;
            visitNeighbours(grid, grounds, column, row, [&](size_t index, double weight) {
                sum += weight * raw[index][1];
                squares += weight * weight;
            });
            const size_t index = static_cast<size_t>(row) * grid.columns + column;
            result[index] = kRoughNoise * raw[index][0] + kSmoothNoise * sum / std::sqrt(squares);
        }
    }
    return result;
}

// Whether a block keeps its own colour and opacity: it has only one, and around it is nothing that differs
// from it by more than a faint line.
bool isKept(const std::vector<Block> &blocks, const Grid &grid, int column, int row)
{
    const Block &middle = blocks[static_cast<size_t>(row) * grid.columns + column];
    if (middle.variance > 0 || middle.faintest < middle.strongest)
        return false;
    for (int y = std::max(row - 1, 0); y <= std::min(row + 1, grid.rows - 1); ++y) {
        for (int x = std::max(column - 1, 0); x <= std::min(column + 1, grid.columns - 1); ++x) {
            const Block &block = blocks[static_cast<size_t>(y) * grid.columns + x];
            if (middle.darkest - block.darkest > kFaint || block.brightest - middle.darkest > kFaint ||
                middle.faintest - block.faintest > kFaint || block.strongest - middle.faintest > kFaint)
                return false;
        }
    }
    return true;
}

// The colour only moves along the neighbourhood's own range: the line on which its colours change with their
// brightness. Opaque, or what lies under a translucent block would show.
QRgb colorOf(const Block &around, double noise)
{
    const double move = noise * std::sqrt(around.variance);
    std::array<int, 3> channels;
    for (int c = 0; c < 3; ++c) {
        const double slope = around.variance > 0.25 ? around.spread[c] / around.variance : 0;
        channels[c] = static_cast<int>(std::lround(std::clamp(around.mean[c] + move * slope, 0.0, 255.0)));
    }
    return qRgb(channels[2], channels[1], channels[0]);
}

// Letters on a flat ground: nothing but the ground tells the colour, and how far it goes towards its opposite
// is the same for all that could stand there.
QRgb colorOnGround(const InkedGround &place, double noise)
{
    constexpr double kMean = 33; // of 255; as far as a mosaic of usual text goes
    constexpr double kSpread = 41;
    const double move = std::clamp(kMean + kSpread * noise, 0.0, 2.5 * kMean);
    std::array<int, 3> channels;
    for (size_t c = 0; c < 3; ++c)
        channels[c] = static_cast<int>(
            std::lround(std::clamp<double>(place.ground.color[c] + move * place.direction[c], 0, 255)));
    return qRgb(channels[2], channels[1], channels[0]);
}

} // namespace

double pixelationBlock(const QSize &size)
{
    return std::max(std::max(size.width(), size.height()) / 90.0, 8.0);
}

QRect pixelatedPixels(const QRectF &rect, const QSize &imageSize)
{
    return rect.normalized().toAlignedRect() & QRect(QPoint(), imageSize);
}

QImage pixelated(const QImage &image)
{
    QImage source = image;
    if (source.format() != QImage::Format_RGB32 && source.format() != QImage::Format_ARGB32_Premultiplied)
        source = source.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage result(source.size(), source.format());
    const QImage seen = opaque(source);
    if (source.isNull() || result.isNull() || seen.isNull())
        return image;

    const Grid grid(source.size());
    const int sampling = std::max(1, static_cast<int>(grid.side / kSamplesPerSide));
    std::vector<Block> blocks(static_cast<size_t>(grid.columns) * grid.rows);
    for (int row = 0; row < grid.rows; ++row) {
        for (int column = 0; column < grid.columns; ++column)
            blocks[static_cast<size_t>(row) * grid.columns + column] =
                measure(source, seen, grid.left(column), grid.left(column + 1), grid.top(row),
                        grid.bottom(row), sampling, sampling);
    }

    const std::vector<double> grounds = groundsOf(blocks, grid);
    const std::vector<std::optional<InkedGround>> surfaces = groundsUnderInk(blocks, grid);
    const std::vector<double> noise = noiseOf(Noise(keyOfThisRun(), fingerprint(blocks)), grid);
    for (int row = 0; row < grid.rows; ++row) {
        const int top = grid.top(row);
        const int bottom = grid.bottom(row);
        if (top >= bottom)
            continue;
        auto *first = reinterpret_cast<QRgb *>(result.scanLine(top));
        for (int column = 0; column < grid.columns; ++column) {
            const size_t index = static_cast<size_t>(row) * grid.columns + column;
            QRgb color;
            if (surfaces[index])
                color = colorOnGround(*surfaces[index], noise[index]);
            else if (!isKept(blocks, grid, column, row))
                color = colorOf(neighbourhood(blocks, grounds, grid, column, row), noise[index]);
            else if (blocks[index].faintest < 255)
                color = reinterpret_cast<const QRgb *>(source.constScanLine(top))[grid.left(column)];
            else
                color = colorOf(blocks[index], 0);
            if (source.format() == QImage::Format_RGB32)
                color |= 0xff000000;
            std::fill(first + grid.left(column), first + grid.left(column + 1), color);
        }
        for (int y = top + 1; y < bottom; ++y)
            std::memcpy(result.scanLine(y), first, static_cast<size_t>(grid.width) * 4);
    }
    return result;
}
