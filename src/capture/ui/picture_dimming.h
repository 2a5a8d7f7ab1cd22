#pragma once

#include <QImage>

// The picture under black at alpha 0.38. RGB32 in and out.
QImage dimmed(const QImage &picture);
