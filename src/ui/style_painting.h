#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QStyle>

// What the drawing of the toolkit's controls is made of.
namespace StylePainting {

// Smooth painting, with the painter as it was afterwards.
class Saved {
public:
    explicit Saved(QPainter *painter) : m_painter(painter)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
    }
    ~Saved() { m_painter->restore(); }
    Saved(const Saved &) = delete;
    Saved &operator=(const Saved &) = delete;

private:
    QPainter *m_painter;
};

// With an edge one pixel wide, where it isn't transparent.
void fillRounded(QPainter *painter, const QRectF &rect, qreal radius, const QColor &fill,
                 const QColor &edge = Qt::transparent);
void drawCheckMark(QPainter *painter, const QRectF &rect, const QColor &color);
bool isOn(const QStyleOption *option, QStyle::StateFlag flag);

} // namespace StylePainting
