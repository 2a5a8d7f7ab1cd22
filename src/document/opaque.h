#pragma once

#include <QImage>

// The picture without transparency, as RGB32: laid on white, or on black when most of what shows is bright,
// so that what can be seen of it on some ground can be seen here. An opaque picture is itself.
QImage opaque(const QImage &image);
