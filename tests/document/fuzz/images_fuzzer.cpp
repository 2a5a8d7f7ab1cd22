// Reads bytes as a picture's file, as opening, importing and pasting do: its header first, then its pixels.
//
//     cmake --preset fuzz && cmake --build build/fuzz --target fuzz_images
//     build/fuzz/fuzz/fuzz_images -max_len=20000 -rss_limit_mb=3000 CORPUS tests/document/fuzz/image_seeds

#include "document/image_files.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto told = ImageFiles::pixelSizeOf(bytes);
    // Large ones take long and find nothing that small ones don't.
    constexpr qint64 kMostPixels = 1'000'000;
    if (told && qint64(told->width()) * told->height() > kMostPixels)
        return 0;
    const auto image = ImageFiles::decode(bytes);
    const bool isWhole =
        image && !image->isNull() &&
        (image->format() == QImage::Format_RGB32 || image->format() == QImage::Format_ARGB32_Premultiplied);
    if (image ? !isWhole : !image.error().message.endsWith('.'))
        std::abort();
    return 0;
}
