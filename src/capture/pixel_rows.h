#pragma once

#include <QImage>
#include <QtGlobal>
#include <algorithm>

// Rows of pixels as they are compared: 32 bits a pixel, of which alpha doesn't count.
namespace PixelRows {

constexpr quint32 kColors = 0x00ffffff;

// The hash of a row never leaves the process, so it need not be a published one; it has to tell rows apart.
// Each step, of xor, odd multiplication and xor-shift, is a bijection of the state and of the pixels, so rows
// that differ in a single step never collide; others do with a chance of about 2^-64.
constexpr quint64 kSeed = 0xcbf29ce484222325;

inline quint64 mixed(quint64 state, quint64 pixels)
{
    state = (state ^ pixels) * 0x9e3779b97f4a7c15;
    return state ^ (state >> 32);
}

inline const quint32 *row(const QImage &image, int y)
{
    return reinterpret_cast<const quint32 *>(image.constScanLine(y));
}

inline bool isSame(const quint32 *a, const quint32 *b, int from, int to)
{
    constexpr int kBlock = 128; // long enough to run in vectors, short enough to stop early
    for (int start = from; start < to; start += kBlock) {
        quint32 differing = 0;
        for (int x = start; x < std::min(to, start + kBlock); ++x)
            differing |= a[x] ^ b[x];
        if (differing & kColors)
            return false;
    }
    return true;
}

} // namespace PixelRows
