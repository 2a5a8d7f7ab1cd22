#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <optional>

// Reading PNG files: damage of any kind is an answer, never a message of the decoder's own.
namespace PngDecoder {

enum class Failure { CutOff, Damaged, NoMemory };

// Of the header; nothing when it is broken.
std::optional<QSize> pixelSize(const QByteArray &head);
// RGB32, or ARGB32_Premultiplied when the file has transparency. A null image when it failed.
QImage decode(const QByteArray &bytes, Failure *failure);

} // namespace PngDecoder
