#pragma once

#include <QByteArray>
#include <QImage>
#include <optional>

// Reads the PNGs that pictures of screens are, several times as fast as the general decoder. Both give
// nothing for what isn't read this way (interlaced, palettes, other depths than 8 bits, very large) and for
// damaged bytes: the general decoder has the last word on both.

// RGB32 or ARGB32_Premultiplied.
std::optional<QImage> readPng(const QByteArray &bytes);

// A PNG made smaller while it is read: blocks of equal pixels are averaged row by row, so that no picture of
// the full size comes to be. The result's longer edge is at least twice `longestEdge` unless the picture's
// own is shorter, which leaves a smooth last step to the caller; RGB32 or ARGB32_Premultiplied.
std::optional<QImage> readReducedPng(const QByteArray &bytes, int longestEdge);
