#pragma once

#include "document/annotation.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <string>

// Claims about the pixels of a picture that print what they saw.

inline std::string told(QRgb pixel)
{
    return std::to_string(qRed(pixel)) + " " + std::to_string(qGreen(pixel)) + " " +
           std::to_string(qBlue(pixel)) + " alpha " + std::to_string(qAlpha(pixel));
}

inline bool isNear(QRgb a, QRgb b, int tolerance)
{
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance && std::abs(qAlpha(a) - qAlpha(b)) <= tolerance;
}

inline testing::AssertionResult hasColor(const QImage &image, QPoint at, QRgb expected, int tolerance = 2)
{
    const QRgb seen = image.pixel(at);
    if (isNear(seen, expected, tolerance))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "(" << at.x() << ", " << at.y() << ") is " << told(seen) << ", not " << told(expected);
}

// Every pixel of `rect` is what `expected` makes of the other picture's.
inline testing::AssertionResult follows(const QImage &image, const QImage &other, const QRect &rect,
                                        const std::function<QRgb(QRgb)> &expected, int tolerance = 2)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (const auto same = hasColor(image, {x, y}, expected(other.pixel(x, y)), tolerance); !same)
                return same;
        }
    }
    return testing::AssertionSuccess();
}

inline testing::AssertionResult isUnchanged(const QImage &image, const QImage &base, const QRect &rect,
                                            int tolerance = 1)
{
    return follows(image, base, rect, [](QRgb pixel) { return pixel; }, tolerance);
}

// How much of a pixel a pure red (or blue) shape covers on neutral ground, whatever shadow lies there.
inline double shareOfRed(QRgb pixel)
{
    return (qRed(pixel) - qGreen(pixel)) / 255.0;
}
inline double shareOfBlue(QRgb pixel)
{
    return (qBlue(pixel) - qRed(pixel)) / 255.0;
}

using Share = double (*)(QRgb);

// The length covered along a row or a column, partly covered pixels counted by their share.
inline double coveredAcross(const QImage &image, Share share, int x, int fromY, int toY)
{
    double sum = 0;
    for (int y = fromY; y < toY; ++y)
        sum += share(image.pixel(x, y));
    return sum;
}
inline double coveredAlong(const QImage &image, Share share, int y, int fromX, int toX)
{
    double sum = 0;
    for (int x = fromX; x < toX; ++x)
        sum += share(image.pixel(x, y));
    return sum;
}

// A red object with an identity of its own.
inline Annotation object(ToolKind kind, QPointF start, QPointF end, double lineWidth = 6, int style = 0)
{
    Annotation a;
    a.id = QUuid::createUuid();
    a.kind = kind;
    a.start = start;
    a.end = end;
    a.color = Qt::red;
    a.lineWidth = lineWidth;
    a.style = style;
    return a;
}
