#include "document/png_decoder.h"

#include <memory>
#include <spng.h>

namespace {

using Context = std::unique_ptr<spng_ctx, void (*)(spng_ctx *)>;

// Of one chunk, and of all that are kept: profiles and texts, which aren't looked at.
constexpr size_t kMostOfAChunk = 64'000'000;

Context contextFor(const QByteArray &bytes)
{
    Context context(spng_ctx_new(0), spng_ctx_free);
    if (context) {
        spng_set_crc_action(context.get(), SPNG_CRC_ERROR, SPNG_CRC_DISCARD);
        spng_set_chunk_limits(context.get(), kMostOfAChunk, kMostOfAChunk);
        spng_set_png_buffer(context.get(), bytes.constData(), static_cast<size_t>(bytes.size()));
    }
    return context;
}

PngDecoder::Failure failureOf(int code)
{
    if (code == SPNG_IO_EOF)
        return PngDecoder::Failure::CutOff;
    return code == SPNG_EMEM ? PngDecoder::Failure::NoMemory : PngDecoder::Failure::Damaged;
}

int decodeInto(QImage &image, spng_ctx *context)
{
    spng_ihdr header{};
    if (const int code = spng_get_ihdr(context, &header))
        return code;
    spng_trns transparency{};
    const bool isTransparent = (header.color_type & 4) != 0 || spng_get_trns(context, &transparency) == 0;
    image = QImage(static_cast<int>(header.width), static_cast<int>(header.height),
                   isTransparent ? QImage::Format_RGBA8888 : QImage::Format_RGBX8888);
    if (image.isNull())
        return SPNG_EMEM;
    if (const int code = spng_decode_image(context, image.bits(), static_cast<size_t>(image.sizeInBytes()),
                                           SPNG_FMT_RGBA8, SPNG_DECODE_TRNS))
        return code;
    return spng_decode_chunks(context); // to the end, which may be missing
}

} // namespace

std::optional<QSize> PngDecoder::pixelSize(const QByteArray &head)
{
    const Context context = contextFor(head);
    spng_ihdr header{};
    if (!context || spng_get_ihdr(context.get(), &header) != 0)
        return {};
    return QSize(static_cast<int>(header.width), static_cast<int>(header.height));
}

QImage PngDecoder::decode(const QByteArray &bytes, Failure *failure)
{
    const Context context = contextFor(bytes);
    QImage image;
    if (const int code = context ? decodeInto(image, context.get()) : SPNG_EMEM) {
        *failure = failureOf(code);
        return {};
    }
    // In place: a second copy of a large picture may not fit.
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return image;
}
