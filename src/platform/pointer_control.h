#pragma once

#include "base/result.h"

#include <QFuture>
#include <QPointF>

// The pointer: where it is, to put it elsewhere, to turn its wheel.
class PointerControl {
public:
    virtual ~PointerControl() = default;
    // In global points.
    virtual QPointF position() const = 0;
    // Whether position() costs nothing; else it takes a frame, and takes the pointer from the window that it is
    // on for as long.
    virtual bool isPositionKnown() const { return true; }
    virtual void warp(QPointF point) = 0;
    // Whether this program may turn the wheel by itself.
    virtual bool canScroll() const = 0;
    // Sends wheel clicks downwards (or upwards when negative) at the pointer's place.
    virtual QFuture<Result<void>> wheel(int clicks) = 0;
};
