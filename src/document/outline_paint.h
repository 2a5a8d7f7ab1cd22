#pragma once

#include "document/soft_shadow.h"

#include <QColor>
#include <QList>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>

class QPainter;

// How outlines become paint: filled and stroked, with the shadow that most objects cast. An outline may reach
// anywhere: beyond what can be seen it costs nothing.
namespace OutlinePaint {

extern const SoftShadow commonShadow;
enum class Shadow { Common, None };

QPen roundPen(const QColor &color, double width);

void fill(QPainter &painter, const QPainterPath &path, const QColor &color);
// `pen` is a round one.
void stroke(QPainter &painter, const QPainterPath &path, const QPen &pen, Shadow shadow = Shadow::Common);
// Lines that may cross themselves at will.
void strokeLines(QPainter &painter, const QList<QPolygonF> &lines, const QColor &color, double width,
                 Shadow shadow = Shadow::Common);
// A straight line of dashes, the first at `start`.
void strokeDashes(QPainter &painter, const QPointF &start, const QPointF &end, const QColor &color,
                  double width);

} // namespace OutlinePaint
