#pragma once

#include "base/result.h"

#include <QFuture>
#include <QImage>
#include <QList>
#include <QRectF>

// Finding faces in pictures, on this machine. Boxes are fractions of the image, origin at the lower left.
class FaceEngine {
public:
    virtual ~FaceEngine() = default;
    virtual QFuture<Result<QList<QRectF>>> detect(const QImage &image) = 0;
};
