#include "document/png_encoder.h"

#include "base/parallel.h"

#include <QThread>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <cstring>
#include <vector>
#include <zlib.h>

namespace {

enum class Filter : uchar { None = 0, Sub = 1, Up = 2 };

// Level 1 costs half of level 3 in time and about a tenth in size on pictures of a screen.
constexpr int kLevel = 1;
constexpr int kRowsToSample = 24;

using Row = std::vector<uchar>;

struct Strip {
    int from = 0;
    int to = 0; // one past its last row
    bool isLast = false;
    QByteArray deflated;
    uLong adler = 1;
    z_off_t rawBytes = 0;
};

bool isOpaque(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return true;
    if (image.format() != QImage::Format_ARGB32 && image.format() != QImage::Format_ARGB32_Premultiplied)
        return false;
    for (int y = 0; y < image.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (!std::all_of(pixels, pixels + image.width(), [](QRgb pixel) { return qAlpha(pixel) == 255; }))
            return false;
    }
    return true;
}

// RGB32 when opaque, else RGBA8888; shares the pixels where no conversion is needed.
QImage inFileChannels(const QImage &image)
{
    if (!isOpaque(image))
        return image.convertToFormat(QImage::Format_RGBA8888);
    if (image.format() == QImage::Format_ARGB32 || image.format() == QImage::Format_ARGB32_Premultiplied)
        return {image.constBits(), image.width(), image.height(), image.bytesPerLine(), QImage::Format_RGB32};
    return image.convertToFormat(QImage::Format_RGB32);
}

class Encoder {
public:
    explicit Encoder(const QImage &image)
        : m_image(inFileChannels(image)),
          m_channels(m_image.format() == QImage::Format_RGB32 ? 3 : 4),
          m_rowBytes(static_cast<size_t>(image.width()) * m_channels)
    {}

    QByteArray encode() const
    {
        std::vector<Strip> strips = cut();
        const Filter filter = bestFilter();
        inParallel(static_cast<int>(strips.size()), [&](int i) { compress(strips[i], filter); });
        return join(strips);
    }

private:
    std::vector<Strip> cut() const
    {
        // A strip shorter than this compresses noticeably worse: each starts with an empty window.
        constexpr int kMinimumRows = 64;
        const int wanted =
            std::max(1, std::min(QThread::idealThreadCount(), m_image.height() / kMinimumRows));
        std::vector<Strip> strips;
        for (int i = 0; i < wanted; ++i) {
            Strip strip;
            strip.from = static_cast<int>(qint64(m_image.height()) * i / wanted);
            strip.to = static_cast<int>(qint64(m_image.height()) * (i + 1) / wanted);
            strip.isLast = i + 1 == wanted;
            strips.push_back(strip);
        }
        return strips;
    }

    // The row's bytes in file order.
    void readRow(int y, uchar *out) const
    {
        const uchar *source = m_image.constScanLine(y);
        if (m_image.format() != QImage::Format_RGB32) {
            std::memcpy(out, source, m_rowBytes);
            return;
        }
        const auto *pixels = reinterpret_cast<const QRgb *>(source);
        for (int x = 0, width = m_image.width(); x < width; ++x) {
            const QRgb pixel = pixels[x];
            *out++ = static_cast<uchar>(pixel >> 16);
            *out++ = static_cast<uchar>(pixel >> 8);
            *out++ = static_cast<uchar>(pixel);
        }
    }

    // One filter byte and the filtered row.
    void filterRow(Filter filter, const Row &row, const Row &above, Row &out) const
    {
        out[0] = static_cast<uchar>(filter);
        uchar *target = out.data() + 1;
        switch (filter) {
        case Filter::None:
            std::memcpy(target, row.data(), m_rowBytes);
            break;
        case Filter::Sub:
            std::memcpy(target, row.data(), m_channels);
            for (size_t i = m_channels; i < m_rowBytes; ++i)
                target[i] = static_cast<uchar>(row[i] - row[i - m_channels]);
            break;
        case Filter::Up:
            for (size_t i = 0; i < m_rowBytes; ++i)
                target[i] = static_cast<uchar>(row[i] - above[i]);
            break;
        }
    }

    // Flat interfaces shrink best unfiltered, photographs with a filter: a sample of rows tells.
    Filter bestFilter() const
    {
        const int step = std::max(2, m_image.height() / kRowsToSample);
        std::array<uLong, 3> sizes{};
        Row row(m_rowBytes);
        Row above(m_rowBytes);
        Row filtered(m_rowBytes + 1);
        std::vector<uchar> packed(compressBound(static_cast<uLong>(m_rowBytes + 1)));
        for (int y = 1; y < m_image.height(); y += step) {
            readRow(y - 1, above.data());
            readRow(y, row.data());
            if (row == above)
                continue;
            for (const Filter filter : {Filter::None, Filter::Sub, Filter::Up}) {
                filterRow(filter, row, above, filtered);
                uLongf size = static_cast<uLongf>(packed.size());
                if (compress2(packed.data(), &size, filtered.data(), static_cast<uLong>(filtered.size()),
                              kLevel) == Z_OK)
                    sizes[static_cast<size_t>(filter)] += size;
            }
        }
        return static_cast<Filter>(std::min_element(sizes.begin(), sizes.end()) - sizes.begin());
    }

    void compress(Strip &strip, Filter filter) const
    {
        z_stream stream{};
        // Raw deflate: the strips share one zlib header and one checksum.
        if (deflateInit2(&stream, kLevel, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY) != Z_OK)
            return;
        const size_t rawRow = m_rowBytes + 1;
        strip.rawBytes = static_cast<z_off_t>(rawRow * (strip.to - strip.from));
        strip.deflated.resize(
            static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(strip.rawBytes)) + 16));
        stream.next_out = reinterpret_cast<Bytef *>(strip.deflated.data());
        stream.avail_out = static_cast<uInt>(strip.deflated.size());
        Row row(m_rowBytes);
        Row above(m_rowBytes, 0);
        Row filtered(rawRow);
        if (filter == Filter::Up && strip.from > 0)
            readRow(strip.from - 1, above.data());
        strip.adler = adler32(0, nullptr, 0);
        for (int y = strip.from; y < strip.to; ++y) {
            readRow(y, row.data());
            filterRow(filter, row, above, filtered);
            strip.adler = adler32(strip.adler, filtered.data(), static_cast<uInt>(rawRow));
            stream.next_in = filtered.data();
            stream.avail_in = static_cast<uInt>(rawRow);
            const bool isEnd = y + 1 == strip.to;
            deflate(&stream, isEnd ? (strip.isLast ? Z_FINISH : Z_FULL_FLUSH) : Z_NO_FLUSH);
            row.swap(above);
        }
        strip.deflated.truncate(static_cast<qsizetype>(stream.total_out));
        deflateEnd(&stream);
    }

    static void appendChunk(QByteArray &file, const char *type, const QByteArray &data)
    {
        const auto put = [&file](quint32 value) {
            const quint32 big = qToBigEndian(value);
            file.append(reinterpret_cast<const char *>(&big), 4);
        };
        put(static_cast<quint32>(data.size()));
        file.append(type, 4);
        file.append(data);
        uLong crc = crc32(0, reinterpret_cast<const Bytef *>(type), 4);
        crc = crc32_z(crc, reinterpret_cast<const Bytef *>(data.constData()),
                      static_cast<z_size_t>(data.size()));
        put(static_cast<quint32>(crc));
    }

    QByteArray join(const std::vector<Strip> &strips) const
    {
        QByteArray header(13, 0);
        qToBigEndian<quint32>(m_image.width(), header.data());
        qToBigEndian<quint32>(m_image.height(), header.data() + 4);
        header[8] = 8; // bits a channel
        header[9] = m_channels == 4 ? 6 : 2;

        qsizetype bytes = 128;
        uLong adler = 1;
        for (const Strip &strip : strips) {
            adler = adler32_combine(adler, strip.adler, strip.rawBytes);
            bytes += strip.deflated.size() + 32;
        }
        QByteArray file;
        file.reserve(bytes);
        file.append("\x89PNG\r\n\x1a\n", 8);
        appendChunk(file, "IHDR", header);
        appendChunk(file, "IDAT", QByteArray("\x78\x01", 2)); // zlib: window of 32 KiB, fastest
        for (const Strip &strip : strips)
            appendChunk(file, "IDAT", strip.deflated);
        QByteArray checksum(4, 0);
        qToBigEndian<quint32>(static_cast<quint32>(adler), checksum.data());
        appendChunk(file, "IDAT", checksum);
        appendChunk(file, "IEND", {});
        return file;
    }

    QImage m_image;
    int m_channels;
    size_t m_rowBytes;
};

} // namespace

QByteArray encodePng(const QImage &image)
{
    if (image.isNull())
        return {};
    return Encoder(image).encode();
}
