#pragma once

#include <QByteArray>
#include <optional>

// What a picture's file tells of itself before it is decoded.
namespace ImageHeader {

enum class Format { Png, Jpeg, Gif, Bmp, Tiff, Webp, Heic };

// By the first 16 bytes alone, whatever the file is called; nothing for foreign ones.
std::optional<Format> formatOf(const QByteArray &head);

// Whether the end of the file is missing. Decoders fill the rest of such a picture with grey and call it
// done; where they tell by themselves, this doesn't.
bool isCutOff(const QByteArray &bytes, Format format);

} // namespace ImageHeader
