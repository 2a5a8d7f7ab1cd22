#pragma once

#include "platform/media/av.h"

#include <QImage>
#include <QSize>

// The colour space that a frame is to be read in, with the usual guess for those that don't tell.
int colorSpaceOf(const AVFrame &frame);

// Turns decoded frames into pictures of one size.
class PictureMaker {
public:
    // `size` is that before turning; `turns` are quarters clockwise.
    PictureMaker(QSize size, int turns) : m_size(size), m_turns(turns) {}
    // Format_RGB32; null when it can't be made.
    QImage make(const AVFrame &frame);

private:
    QSize m_size;
    int m_turns;
    AvScaler m_scaler;
};
