#include "recording/gif_writer.h"

#include "recording/gif_palette.h"

#include <QtEndian>
#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kTransparent = 0;  // index of the colour that leaves what was there
constexpr int kMostColors = 255; // beside it
// What differs by less in each channel is noise of the film's compression.
constexpr int kNoise = 4;

// A pixel takes the colour of the one before when that is hardly another: the squares of the channels'
// differences, added. Of a scrolling page it saves 5% and brings it nearer to the film, since noise is no
// longer copied.
constexpr int kRun = 24;

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
    explicit LzwEncoder(int depth) : m_depth(depth), m_keys(kTable), m_codes(kTable)
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
            const auto key = std::uint32_t(prefix << 8 | next) + 1;
            std::uint32_t at = key * 2654435761U >> 18;
            while (m_keys[at] != 0 && m_keys[at] != key)
                at = (at + 1) & (kTable - 1);
            if (m_keys[at] == key) {
                prefix = m_codes[at];
                continue;
            }
            put(prefix);
            if (m_next < kMostCodes) {
                m_keys[at] = key;
                m_codes[at] = std::uint16_t(m_next);
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
    static constexpr std::uint32_t kTable = 1 << 14;
    static constexpr int kMostCodes = 4096;

    void restart()
    {
        forget();
        put(1 << m_depth);
    }
    void forget()
    {
        std::ranges::fill(m_keys, 0);
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
        m_block.append(char(byte));
        if (m_block.size() == 255)
            flushBlock();
    }
    void flushBlock()
    {
        if (m_block.isEmpty())
            return;
        m_out.append(char(m_block.size()));
        m_out.append(m_block);
        m_block.clear();
    }

    int m_depth;
    int m_width = 0;
    int m_next = 0;
    std::uint32_t m_pending = 0;
    int m_bits = 0;
    std::vector<std::uint32_t> m_keys;
    std::vector<std::uint16_t> m_codes;
    QByteArray m_block;
    QByteArray m_out;
};

QByteArray header(QSize size)
{
    QByteArray bytes("GIF89a");
    put16(bytes, size.width());
    put16(bytes, size.height());
    bytes.append('\x80'); // a global table of two colours, for frames without any
    bytes.append(2, '\0');
    bytes.append(6, '\0');
    bytes.append("\x21\xff\x0bNETSCAPE2.0\x03\x01", 16);
    put16(bytes, 0); // endless
    bytes.append('\0');
    return bytes;
}

QByteArray frameHead(const QRect &rect, int hundredths, bool isTransparent)
{
    QByteArray bytes("\x21\xf9\x04", 3);
    bytes.append(char(1 << 2 | (isTransparent ? 1 : 0))); // what is there stays
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

} // namespace

GifWriter::GifWriter(QSize size, std::function<bool(const QByteArray &)> write)
    : m_size(size), m_write(std::move(write))
{}

bool GifWriter::isChanged(QRgb stored, QRgb wanted) const
{
    return stored != wanted && (std::abs(qRed(stored) - qRed(wanted)) > kNoise ||
                                std::abs(qGreen(stored) - qGreen(wanted)) > kNoise ||
                                std::abs(qBlue(stored) - qBlue(wanted)) > kNoise);
}

QRect GifWriter::changedRect(const QImage &picture) const
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
        while (first < m_size.width() && !isChanged(stored[first], wanted[first]))
            ++first;
        if (first == m_size.width())
            continue;
        int last = m_size.width() - 1;
        while (!isChanged(stored[last], wanted[last]))
            --last;
        left = std::min(left, first);
        right = std::max(right, last);
        top = top < 0 ? y : top;
        bottom = y;
    }
    return right < 0 ? QRect() : QRect(QPoint(left, top), QPoint(right, bottom));
}

bool GifWriter::add(const QImage &picture, int hundredths)
{
    if (!m_hasHeader && !m_write(header(m_size)))
        return false;
    m_hasHeader = true;
    const QRect rect = changedRect(picture);
    if (rect.isEmpty()) {
        LzwEncoder nothing(2);
        const std::uint8_t index = kTransparent;
        nothing.encode(&index, 1);
        return m_write(frameHead(QRect(0, 0, 1, 1), hundredths, true) + '\0' + nothing.finish());
    }
    const bool isFirst = m_stored.isNull();
    if (isFirst)
        m_stored = QImage(m_size, QImage::Format_RGB32);
    std::vector<QRgb> changed;
    std::vector<bool> isNew(std::size_t(rect.width()) * std::size_t(rect.height()));
    changed.reserve(isNew.size());
    std::size_t at = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const auto *stored = reinterpret_cast<const QRgb *>(m_stored.constScanLine(y));
        const auto *wanted = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        for (int x = rect.left(); x <= rect.right(); ++x, ++at) {
            isNew[at] = isFirst || isChanged(stored[x], wanted[x]);
            if (isNew[at])
                changed.push_back(wanted[x]);
        }
    }
    const GifPalette palette(changed, kMostColors);
    int depth = 2;
    while (1 << depth < int(palette.colors().size()) + 1)
        ++depth;
    QByteArray bytes = frameHead(rect, hundredths, true);
    bytes.append(char(0x80 | (depth - 1)));
    bytes.append(3, '\0'); // the transparent one
    for (const QRgb color : palette.colors())
        bytes.append(char(qRed(color))).append(char(qGreen(color))).append(char(qBlue(color)));
    bytes.append(qsizetype(3) * ((1 << depth) - 1 - int(palette.colors().size())), '\0');
    std::vector<std::uint8_t> indices(isNew.size(), kTransparent);
    at = 0;
    std::size_t next = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        auto *stored = reinterpret_cast<QRgb *>(m_stored.scanLine(y));
        int last = -1; // colour of the pixel before
        for (int x = rect.left(); x <= rect.right(); ++x, ++at) {
            if (!isNew[at])
                continue;
            const QRgb wanted = changed[next++];
            if (last < 0 || apart(palette.colors()[std::size_t(last)], wanted) > kRun)
                last = palette.indexOf(wanted);
            indices[at] = std::uint8_t(last + 1);
            stored[x] = changed[next - 1];
        }
    }
    LzwEncoder encoder(depth);
    encoder.encode(indices.data(), indices.size());
    return m_write(bytes + encoder.finish());
}

bool GifWriter::finish()
{
    return m_hasHeader && m_write(QByteArray(";"));
}
