#pragma once

#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOptionSlider;

// Scroll bars without arrows: a handle that lies on the content.
namespace ScrollBarLook {

constexpr int kWidth = 10;

QRect part(const QStyleOptionSlider &bar, QStyle::SubControl which);
void draw(const QStyleOptionSlider &bar, QPainter *painter);

} // namespace ScrollBarLook
