#include "document/png_reader.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <libdeflate.h>
#include <memory>
#include <new>
#include <vector>

namespace {

// Sums of a block's column fit 16 bits up to here: 257 rows of 255.
constexpr int kLargestBlock = 256;
// Of unpacked rows; a screen of 8K takes 133 MB.
constexpr qint64 kMostBytes = 256 * 1048576;

enum class Channels { Grey = 1, Color = 3, ColorAndAlpha = 4 };

struct Header {
    int width = 0;
    int height = 0;
    Channels channels = Channels::Color;

    qint64 rowBytes() const { return qint64(width) * static_cast<int>(channels); }
    qint64 bytes() const { return (rowBytes() + 1) * height; } // one byte a row names its filter
};

QImage::Format workingFormat(Channels channels)
{
    return channels == Channels::ColorAndAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
}

const uchar *bytesOf(const QByteArray &bytes)
{
    return reinterpret_cast<const uchar *>(bytes.constData());
}

std::optional<Header> headerOf(const QByteArray &bytes)
{
    constexpr qsizetype kFirst = 8; // past the signature; the first chunk is the header
    if (!bytes.startsWith("\x89PNG\r\n\x1a\n") || bytes.size() < kFirst + 25 ||
        std::memcmp(bytes.constData() + kFirst + 4, "IHDR", 4) != 0)
        return std::nullopt;
    const uchar *at = bytesOf(bytes) + kFirst + 8;
    const auto width = qFromBigEndian<quint32>(at);
    const auto height = qFromBigEndian<quint32>(at + 4);
    const bool isPlain = at[8] == 8 && at[10] == 0 && at[11] == 0 && at[12] == 0;
    constexpr quint32 kLongest = 1 << 20;
    if (!isPlain || width == 0 || height == 0 || width > kLongest || height > kLongest)
        return std::nullopt;
    Header header{static_cast<int>(width), static_cast<int>(height)};
    switch (at[9]) {
    case 0:
        header.channels = Channels::Grey;
        break;
    case 2:
        header.channels = Channels::Color;
        break;
    case 6:
        header.channels = Channels::ColorAndAlpha;
        break;
    default:
        return std::nullopt;
    }
    return header.bytes() <= kMostBytes ? std::optional(header) : std::nullopt;
}

// The packed rows of all data chunks in one piece; nothing when a chunk is damaged, or when the file says of
// some colour that it is transparent.
std::optional<QByteArray> packedRows(const QByteArray &bytes)
{
    const uchar *data = bytesOf(bytes);
    QByteArray packed;
    qsizetype at = 8;
    while (at + 12 <= bytes.size()) {
        const qsizetype length = qFromBigEndian<quint32>(data + at);
        if (length > bytes.size() - at - 12)
            return std::nullopt;
        const uchar *type = data + at + 4;
        const bool isCritical = (type[0] & 0x20) == 0;
        if (isCritical && libdeflate_crc32(0, type, static_cast<size_t>(length + 4)) !=
                              qFromBigEndian<quint32>(type + 4 + length))
            return std::nullopt;
        if (std::memcmp(type, "tRNS", 4) == 0)
            return std::nullopt;
        if (std::memcmp(type, "IDAT", 4) == 0)
            packed.append(bytes.constData() + at + 8, length);
        if (std::memcmp(type, "IEND", 4) == 0)
            return packed;
        at += length + 12;
    }
    return std::nullopt;
}

std::unique_ptr<uchar[]> unpacked(const QByteArray &packed, const Header &header)
{
    const auto size = static_cast<size_t>(header.bytes());
    std::unique_ptr<uchar[]> rows(new (std::nothrow) uchar[size]);
    const std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor *)> decompressor(
        libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    if (!rows || !decompressor ||
        libdeflate_zlib_decompress(decompressor.get(), packed.constData(), static_cast<size_t>(packed.size()),
                                   rows.get(), size, nullptr) != LIBDEFLATE_SUCCESS)
        return nullptr;
    return rows;
}

int paeth(int left, int above, int aboveLeft)
{
    const int toLeft = std::abs(above - aboveLeft);
    const int toAbove = std::abs(left - aboveLeft);
    const int toAboveLeft = std::abs(left + above - 2 * aboveLeft);
    if (toLeft <= toAbove && toLeft <= toAboveLeft)
        return left;
    return toAbove <= toAboveLeft ? above : aboveLeft;
}

// The filters of the PNG specification, section 9, undone in place; `above` is the row before, undone
// already.
template <int kStep>
bool unfilter(int filter, uchar *row, const uchar *above, qsizetype length)
{
    switch (filter) {
    case 0:
        return true;
    case 1:
        for (qsizetype x = kStep; x < length; ++x)
            row[x] = static_cast<uchar>(row[x] + row[x - kStep]);
        return true;
    case 2:
        for (qsizetype x = 0; x < length; ++x)
            row[x] = static_cast<uchar>(row[x] + above[x]);
        return true;
    case 3:
        for (qsizetype x = 0; x < kStep; ++x)
            row[x] = static_cast<uchar>(row[x] + above[x] / 2);
        for (qsizetype x = kStep; x < length; ++x)
            row[x] = static_cast<uchar>(row[x] + (row[x - kStep] + above[x]) / 2);
        return true;
    case 4:
        for (qsizetype x = 0; x < kStep; ++x)
            row[x] = static_cast<uchar>(row[x] + above[x]);
        for (qsizetype x = kStep; x < length; ++x)
            row[x] = static_cast<uchar>(row[x] + paeth(row[x - kStep], above[x], above[x - kStep]));
        return true;
    default:
        return false;
    }
}

bool unfilter(Channels channels, int filter, uchar *row, const uchar *above, qsizetype length)
{
    switch (channels) {
    case Channels::Grey:
        return unfilter<1>(filter, row, above, length);
    case Channels::Color:
        return unfilter<3>(filter, row, above, length);
    case Channels::ColorAndAlpha:
        return unfilter<4>(filter, row, above, length);
    }
    Q_UNREACHABLE();
}

// Colours that show through must weigh less in an average.
void premultiply(uchar *row, int width)
{
    for (int x = 0; x < width; ++x, row += 4) {
        const int alpha = row[3];
        if (alpha == 255)
            continue;
        for (int channel = 0; channel < 3; ++channel)
            row[channel] = static_cast<uchar>((row[channel] * alpha + 127) / 255);
    }
}

// Averages blocks of `block` by `block` pixels, those at the right and lower edge of what there is.
class BlockAverage {
public:
    BlockAverage(const Header &header, int block)
        : m_header(header),
          m_block(block),
          m_columns(static_cast<size_t>(header.rowBytes())),
          m_image((header.width + block - 1) / block, (header.height + block - 1) / block,
                  workingFormat(header.channels))
    {}

    void add(const uchar *row)
    {
        quint16 *sums = m_columns.data();
        const auto length = m_columns.size();
        for (size_t x = 0; x < length; ++x)
            sums[x] = static_cast<quint16>(sums[x] + row[x]);
        ++m_rows;
        if (++m_rowsInBlock == m_block || m_rows == m_header.height)
            finishRow();
    }
    QImage image() const { return m_image; }

private:
    void finishRow()
    {
        auto *out = reinterpret_cast<QRgb *>(m_image.scanLine((m_rows - 1) / m_block));
        const int channels = static_cast<int>(m_header.channels);
        const quint16 *sums = m_columns.data();
        for (int left = 0; left < m_header.width; left += m_block, ++out) {
            const int columns = std::min(m_block, m_header.width - left);
            std::array<quint32, 4> total{};
            for (int x = 0; x < columns; ++x) {
                for (int channel = 0; channel < channels; ++channel)
                    total[static_cast<size_t>(channel)] += *sums++;
            }
            const auto count = static_cast<quint32>(columns * m_rowsInBlock);
            for (quint32 &sum : total)
                sum = (sum + count / 2) / count;
            switch (m_header.channels) {
            case Channels::Grey:
                *out = qRgb(int(total[0]), int(total[0]), int(total[0]));
                break;
            case Channels::Color:
                *out = qRgb(int(total[0]), int(total[1]), int(total[2]));
                break;
            case Channels::ColorAndAlpha:
                *out = qRgba(int(total[0]), int(total[1]), int(total[2]), int(total[3]));
                break;
            }
        }
        std::fill(m_columns.begin(), m_columns.end(), quint16(0));
        m_rowsInBlock = 0;
    }

    Header m_header;
    int m_block;
    int m_rows = 0;
    int m_rowsInBlock = 0;
    std::vector<quint16> m_columns;
    QImage m_image;
};

// Gives `take` the rows in order, unfiltered. False for damaged bytes.
bool forEachRow(const QByteArray &bytes, const Header &header, const std::function<void(uchar *row)> &take)
{
    const auto packed = packedRows(bytes);
    const auto rows = packed ? unpacked(*packed, header) : nullptr;
    if (!rows)
        return false;
    const qint64 length = header.rowBytes();
    // The filters want the row before as the file has it, zeros before the first. One that `take` changes is
    // kept aside.
    std::vector<uchar> above(static_cast<size_t>(length));
    const bool isKept = header.channels == Channels::ColorAndAlpha;
    const uchar *last = above.data();
    for (int y = 0; y < header.height; ++y) {
        uchar *row = rows.get() + y * (length + 1);
        if (!unfilter(header.channels, row[0], row + 1, last, length))
            return false;
        if (isKept)
            std::memcpy(above.data(), row + 1, static_cast<size_t>(length));
        else
            last = row + 1;
        take(row + 1);
    }
    return true;
}

void store(const uchar *row, const Header &header, QRgb *out)
{
    switch (header.channels) {
    case Channels::Grey:
        for (int x = 0; x < header.width; ++x)
            out[x] = qRgb(row[x], row[x], row[x]);
        return;
    case Channels::Color:
        for (int x = 0; x < header.width; ++x, row += 3)
            out[x] = qRgb(row[0], row[1], row[2]);
        return;
    case Channels::ColorAndAlpha:
        for (int x = 0; x < header.width; ++x, row += 4)
            out[x] = qPremultiply(qRgba(row[0], row[1], row[2], row[3]));
        return;
    }
}

} // namespace

std::optional<QImage> readPng(const QByteArray &bytes)
{
    const auto header = headerOf(bytes);
    if (!header)
        return std::nullopt;
    QImage image(header->width, header->height, workingFormat(header->channels));
    if (image.isNull())
        return std::nullopt;
    int y = 0;
    const bool isWhole = forEachRow(bytes, *header, [&](const uchar *row) {
        store(row, *header, reinterpret_cast<QRgb *>(image.scanLine(y++)));
    });
    return isWhole ? std::optional(image) : std::nullopt;
}

std::optional<QImage> readReducedPng(const QByteArray &bytes, int longestEdge)
{
    const auto header = headerOf(bytes);
    if (!header || longestEdge <= 0)
        return std::nullopt;
    const int longest = std::max(header->width, header->height);
    BlockAverage average(*header, std::clamp(longest / (2 * longestEdge), 1, kLargestBlock));
    if (average.image().isNull())
        return std::nullopt;
    const bool isWhole = forEachRow(bytes, *header, [&](uchar *row) {
        if (header->channels == Channels::ColorAndAlpha)
            premultiply(row, header->width);
        average.add(row);
    });
    return isWhole ? std::optional(average.image()) : std::nullopt;
}
