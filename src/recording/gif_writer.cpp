#include "recording/gif_writer.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr int kTransparent = 0;  // index of the colour that leaves what was there
constexpr int kMostColors = 255; // beside it

// How exact a frame is.
struct Care {
    // What differs by no more in each channel is noise of the film's compression.
    int noise = 0;
    // A pixel takes the colour of the one before when that is hardly another: the squares of the channels'
    // differences, added.
    int run = 0;
};
// Of a scrolling page the run saves 5% and brings it nearer to the film, since noise is no longer copied.
constexpr Care kManyColors{4, 24};
// Pictures of no more colours than a table holds keep them: a page in greys comes to 58.5 dB (54.5 with the
// care of others) and gets 8% larger.
constexpr Care kFewColors{1, 0};
// Up to so many pixels a table of 768 bytes weighs more than the colours that it adds, where those of the
// first frame are so near in the mean: films of typing get 39 and 45% smaller at -0.1 dB, others stay as they
// are.
constexpr std::size_t kSmall = 16384;
constexpr int kNear = 96;

int apart(QRgb one, QRgb other)
{
    const int red = qRed(one) - qRed(other), green = qGreen(one) - qGreen(other),
              blue = qBlue(one) - qBlue(other);
    return red * red + green * green + blue * blue;
}

void put16(QByteArray &bytes, int value)
{
    bytes.append(char(value & 255));
    bytes.append(char(value >> 8 & 255));
}

// Variable-length codes in sub-blocks, as GIF89a wants them (appendix F).
class LzwEncoder {
public:
    explicit LzwEncoder(int depth) : m_depth(depth), m_table(kTable)
    {
        m_out.append(char(depth));
        restart();
    }

    void encode(const std::uint8_t *indices, std::size_t count)
    {
        if (count == 0)
            return;
        int prefix = indices[0];
        for (std::size_t i = 1; i < count; ++i) {
            const int next = indices[i];
            const auto key = std::uint32_t(prefix << 8 | next);
            std::uint32_t at = key * 2654435761U >> 19;
            while (m_table[at] != 0 && m_table[at] >> 12 != key)
                at = (at + 1) & (kTable - 1);
            if (m_table[at] != 0) {
                prefix = int(m_table[at] & 0xfff);
                continue;
            }
            put(prefix);
            if (m_next < kMostCodes) {
                m_table[at] = key << 12 | std::uint32_t(m_next);
                if (m_next++ == 1 << m_width && m_width < 12)
                    ++m_width;
            } else {
                put(1 << m_depth);
                forget();
            }
            prefix = next;
        }
        put(prefix);
    }

    QByteArray finish()
    {
        put((1 << m_depth) + 1);
        if (m_bits > 0)
            putByte(m_pending & 255);
        flushBlock();
        m_out.append('\0');
        return m_out;
    }

private:
    static constexpr std::uint32_t kTable = 1 << 13;
    static constexpr int kMostCodes = 4096;

    void restart()
    {
        forget();
        put(1 << m_depth);
    }
    void forget()
    {
        std::ranges::fill(m_table, 0);
        m_next = (1 << m_depth) + 2;
        m_width = m_depth + 1;
    }
    void put(int code)
    {
        m_pending |= std::uint32_t(code) << m_bits;
        m_bits += m_width;
        for (; m_bits >= 8; m_bits -= 8, m_pending >>= 8)
            putByte(int(m_pending & 255));
    }
    void putByte(int byte)
    {
        m_block[m_inBlock++] = char(byte);
        if (m_inBlock == int(m_block.size()))
            flushBlock();
    }
    void flushBlock()
    {
        if (m_inBlock == 0)
            return;
        m_out.append(char(m_inBlock));
        m_out.append(m_block.data(), m_inBlock);
        m_inBlock = 0;
    }

    int m_depth;
    int m_width = 0;
    int m_next = 0;
    std::uint32_t m_pending = 0;
    int m_bits = 0;
    std::vector<std::uint32_t> m_table; // open addressing: prefix, index and their code, in 12, 8 and 12 bits
    std::array<char, 255> m_block;
    int m_inBlock = 0;
    QByteArray m_out;
};

bool hasFewColors(const QImage &picture)
{
    constexpr std::uint32_t kPlaces = 1024;
    std::array<std::uint32_t, kPlaces> known{}; // colour + 1
    int count = 0;
    const int width = picture.width();
    for (int y = 0; y < picture.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = 0; x < width; ++x) {
            if (x > 0 && pixels[x] == pixels[x - 1])
                continue;
            const std::uint32_t key = (pixels[x] & 0xffffff) + 1;
            std::uint32_t at = key * 2654435761U >> 22;
            while (known[at] != 0 && known[at] != key)
                at = (at + 1) % kPlaces;
            if (known[at] == 0) {
                if (++count > kMostColors)
                    return false;
                known[at] = key;
            }
        }
    }
    return true;
}

// Bits of an index into a table of the colours and the transparent one.
int depthOf(const GifPalette &palette)
{
    int depth = 2;
    while (1 << depth < int(palette.colors().size()) + 1)
        ++depth;
    return depth;
}

QByteArray tableOf(const GifPalette &palette)
{
    QByteArray bytes(3, '\0'); // the transparent one
    for (const QRgb color : palette.colors())
        bytes.append(char(qRed(color))).append(char(qGreen(color))).append(char(qBlue(color)));
    bytes.append((qsizetype(3) << depthOf(palette)) - bytes.size(), '\0');
    return bytes;
}

QByteArray header(QSize size, const GifPalette &palette)
{
    QByteArray bytes("GIF89a");
    put16(bytes, size.width());
    put16(bytes, size.height());
    bytes.append(char(0x80 | (depthOf(palette) - 1)));
    bytes.append(2, '\0');
    bytes.append(tableOf(palette));
    bytes.append("\x21\xff\x0bNETSCAPE2.0\x03\x01", 16);
    put16(bytes, 0); // endless
    bytes.append('\0');
    return bytes;
}

QByteArray frameHead(const QRect &rect, int hundredths)
{
    QByteArray bytes("\x21\xf9\x04", 3);
    bytes.append(char(1 << 2 | 1)); // what is there stays; one index is transparent
    put16(bytes, hundredths);
    bytes.append(char(kTransparent));
    bytes.append('\0');
    bytes.append('\x2c');
    put16(bytes, rect.x());
    put16(bytes, rect.y());
    put16(bytes, rect.width());
    put16(bytes, rect.height());
    return bytes;
}

bool isChanged(QRgb stored, QRgb wanted, int noise)
{
    return stored != wanted && (std::abs(qRed(stored) - qRed(wanted)) > noise ||
                                std::abs(qGreen(stored) - qGreen(wanted)) > noise ||
                                std::abs(qBlue(stored) - qBlue(wanted)) > noise);
}

} // namespace

GifWriter::GifWriter(QSize size, std::function<bool(const QByteArray &)> write)
    : m_size(size), m_write(std::move(write))
{}

bool GifWriter::add(const QImage &picture, int hundredths)
{
    const Care care = hasFewColors(picture) ? kFewColors : kManyColors;
    const Change change = changeTo(picture, care.noise);
    if (change.rect.isEmpty()) {
        LzwEncoder nothing(2);
        const std::uint8_t index = kTransparent;
        nothing.encode(&index, 1);
        return m_write(frameHead(QRect(0, 0, 1, 1), hundredths) + '\0' + nothing.finish());
    }
    std::optional<GifPalette> own;
    QByteArray bytes;
    if (!m_first) {
        m_first.emplace(change.colors, kMostColors);
        bytes = header(m_size, *m_first);
    } else if (!serves(*m_first, change, care.run == 0 ? 0 : kNear)) {
        own.emplace(change.colors, kMostColors);
    }
    const GifPalette &palette = own ? *own : *m_first;
    bytes += frameHead(change.rect, hundredths);
    if (own)
        bytes.append(char(0x80 | (depthOf(palette) - 1))).append(tableOf(palette));
    else
        bytes.append('\0');
    LzwEncoder encoder(depthOf(palette));
    const std::vector<std::uint8_t> indices = draw(change, palette, care.run);
    encoder.encode(indices.data(), indices.size());
    return m_write(bytes + encoder.finish());
}

bool GifWriter::finish()
{
    return m_first && m_write(QByteArray(";"));
}

QRect GifWriter::changedRect(const QImage &picture, int noise) const
{
    if (m_stored.isNull())
        return {QPoint(), m_size};
    int left = m_size.width(), right = -1, top = -1, bottom = -1;
    for (int y = 0; y < m_size.height(); ++y) {
        const auto *stored = reinterpret_cast<const QRgb *>(m_stored.constScanLine(y));
        const auto *wanted = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        if (std::equal(stored, stored + m_size.width(), wanted))
            continue;
        int first = 0;
        while (first < m_size.width() && !isChanged(stored[first], wanted[first], noise))
            ++first;
        if (first == m_size.width())
            continue;
        int last = m_size.width() - 1;
        while (!isChanged(stored[last], wanted[last], noise))
            --last;
        left = std::min(left, first);
        right = std::max(right, last);
        top = top < 0 ? y : top;
        bottom = y;
    }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

GifWriter::Change GifWriter::changeTo(const QImage &picture, int noise)
{
    Change change{changedRect(picture, noise), {}, {}};
    const bool isFirst = m_stored.isNull();
    if (isFirst)
        m_stored = m_shown = QImage(m_size, QImage::Format_RGB32);
    change.isNew.resize(std::size_t(change.rect.width()) * std::size_t(change.rect.height()));
    change.colors.resize(change.isNew.size());
    std::size_t at = 0;
    std::size_t count = 0;
    for (int y = change.rect.top(); y <= change.rect.bottom(); ++y) {
        auto *stored = reinterpret_cast<QRgb *>(m_stored.scanLine(y));
        const auto *wanted = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = change.rect.left(); x <= change.rect.right(); ++x, ++at) {
            if (!isFirst && !isChanged(stored[x], wanted[x], noise))
                continue;
            change.isNew[at] = 1;
            change.colors[count++] = wanted[x];
            stored[x] = wanted[x];
        }
    }
    change.colors.resize(count);
    return change;
}

bool GifWriter::serves(const GifPalette &palette, const Change &change, int most) const
{
    if (change.colors.size() > kSmall)
        return false;
    std::size_t error = 0;
    for (const QRgb color : change.colors)
        error += std::size_t(apart(palette.colors()[std::size_t(palette.indexOf(color))], color));
    return error <= change.colors.size() * std::size_t(most);
}

// What needn't be new goes on with the colour before it where it shows that already: longer runs make
// scrolling pages 6% smaller.
std::vector<std::uint8_t> GifWriter::draw(const Change &change, const GifPalette &palette, int run)
{
    std::vector<std::uint8_t> indices(change.isNew.size(), kTransparent);
    std::size_t at = 0;
    std::size_t next = 0;
    for (int y = change.rect.top(); y <= change.rect.bottom(); ++y) {
        auto *shown = reinterpret_cast<QRgb *>(m_shown.scanLine(y));
        int last = -1; // colour of the pixel before
        bool goesOn = false;
        for (int x = change.rect.left(); x <= change.rect.right(); ++x, ++at) {
            if (change.isNew[at]) {
                const QRgb wanted = change.colors[next++];
                if (last < 0 || apart(palette.colors()[std::size_t(last)], wanted) > run)
                    last = palette.indexOf(wanted);
                shown[x] = palette.colors()[std::size_t(last)];
                goesOn = true;
            } else {
                goesOn = goesOn && shown[x] == palette.colors()[std::size_t(last)];
            }
            if (goesOn)
                indices[at] = std::uint8_t(last + 1);
        }
    }
    return indices;
}
