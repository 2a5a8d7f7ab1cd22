#include "document/image_header.h"

#include "document/heic.h"

#include <QtEndian>
#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// Whether the segments of a JPEG reach its end marker. They are walked by their lengths, as the marker
// occurs inside them too: in a thumbnail, say.
bool reachesItsEnd(const QByteArray &jpeg)
{
    const auto *data = reinterpret_cast<const uchar *>(jpeg.constData());
    const qsizetype size = jpeg.size();
    constexpr uchar kMarker = 0xff, kEnd = 0xd9, kScan = 0xda, kFirstRestart = 0xd0, kLastRestart = 0xd7;
    const auto isRestart = [](uchar code) { return code >= kFirstRestart && code <= kLastRestart; };
    bool inScan = false;
    for (qsizetype at = 2; at + 1 < size;) {
        const void *marker = std::memchr(data + at, kMarker, static_cast<size_t>(size - at - 1));
        if (!marker)
            return false;
        at = static_cast<const uchar *>(marker) - data + 1;
        const uchar code = data[at];
        if (code == kMarker) // filling
            continue;
        ++at;
        if (code == kEnd)
            return true;
        if (code == 0 || code == 1 || isRestart(code) || (inScan && code < 0xc0))
            continue;
        if (at + 2 > size)
            return false;
        at += qFromBigEndian<quint16>(data + at);
        inScan = code == kScan;
    }
    return false;
}

// Whether a TIFF's directory, which mostly stands at its end, lies within it.
bool holdsItsDirectory(const QByteArray &tiff)
{
    const auto *data = reinterpret_cast<const uchar *>(tiff.constData());
    const bool isLittle = tiff.startsWith('I');
    const auto read16 = [=](qint64 at) {
        return isLittle ? qFromLittleEndian<quint16>(data + at) : qFromBigEndian<quint16>(data + at);
    };
    if (tiff.size() < 8)
        return false;
    const qint64 at = isLittle ? qFromLittleEndian<quint32>(data + 4) : qFromBigEndian<quint32>(data + 4);
    constexpr qint64 kEntry = 12;
    return at + 2 <= tiff.size() && at + 2 + kEntry * read16(at) + 4 <= tiff.size();
}

// Whether the blocks of a GIF reach the end of its first picture.
bool holdsAPicture(const QByteArray &gif)
{
    const auto byte = [&gif](qsizetype at) {
        return at < gif.size() ? static_cast<uchar>(gif[at]) : uchar(0);
    };
    const auto tableSize = [](uchar flags) -> qsizetype { return flags & 0x80 ? 6 << (flags & 7) : 0; };
    const auto afterBlocks = [&](qsizetype at) {
        while (at < gif.size() && byte(at) != 0)
            at += 1 + byte(at);
        return at + 1;
    };
    constexpr uchar kExtension = 0x21, kPicture = 0x2c;
    qsizetype at = 13 + tableSize(byte(10));
    while (byte(at) == kExtension)
        at = afterBlocks(at + 2);
    if (byte(at) != kPicture)
        return false;
    return afterBlocks(at + 11 + tableSize(byte(at + 9))) <= gif.size();
}

// Whether the rows of a BMP that isn't compressed lie within it; of another one, whether it is as long as it
// says.
bool holdsItsRows(const QByteArray &bmp)
{
    constexpr qsizetype kHeader = 34;
    if (bmp.size() < kHeader)
        return false;
    const char *data = bmp.constData();
    const auto read32 = [data](qsizetype at) { return qFromLittleEndian<qint32>(data + at); };
    if (const qint32 compression = read32(30); compression != 0 && compression != 3)
        return qFromLittleEndian<quint32>(data + 2) <= static_cast<quint64>(bmp.size());
    const qint64 bits = read32(18) * qint64(qFromLittleEndian<quint16>(data + 28));
    const qint64 stride = (bits + 31) / 32 * 4;
    const qint64 rows = std::max<qint64>(std::abs(qint64(read32(22))), 1);
    // Divided, as the product of broken numbers fits nothing.
    return stride <= (bmp.size() - qFromLittleEndian<quint32>(data + 10)) / rows;
}

// Whether as many bytes follow as the file says it has.
bool holdsItsChunks(const QByteArray &webp)
{
    return webp.size() >= 12 && qFromLittleEndian<quint32>(webp.constData() + 4) + qint64(8) <= webp.size();
}

} // namespace

std::optional<ImageHeader::Format> ImageHeader::formatOf(const QByteArray &head)
{
    if (head.startsWith("\x89PNG\r\n\x1a\n"))
        return Format::Png;
    if (head.startsWith("\xff\xd8\xff"))
        return Format::Jpeg;
    if (head.startsWith("GIF87a") || head.startsWith("GIF89a"))
        return Format::Gif;
    if (head.startsWith("BM"))
        return Format::Bmp;
    if (head.startsWith(QByteArray("II*\0", 4)) || head.startsWith(QByteArray("MM\0*", 4)))
        return Format::Tiff;
    if (head.startsWith("RIFF") && head.mid(8, 4) == "WEBP")
        return Format::Webp;
    if (Heic::isHeic(head))
        return Format::Heic;
    return {};
}

bool ImageHeader::isCutOff(const QByteArray &bytes, Format format)
{
    switch (format) {
    case Format::Jpeg:
        return !reachesItsEnd(bytes);
    case Format::Tiff:
        return !holdsItsDirectory(bytes);
    case Format::Gif:
        return !holdsAPicture(bytes);
    case Format::Webp:
        return !holdsItsChunks(bytes);
    case Format::Bmp:
        return !holdsItsRows(bytes);
    case Format::Png:
    case Format::Heic:
        return false;
    }
    Q_UNREACHABLE();
}
