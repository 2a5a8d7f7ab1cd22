#include "ui/style_painting.h"

#include <QStyleOption>
#include <array>

namespace StylePainting {

void fillRounded(QPainter *painter, const QRectF &rect, qreal radius, const QColor &fill, const QColor &edge)
{
    Saved saved(painter);
    const bool edged = edge.alpha() > 0;
    painter->setPen(edged ? QPen(edge, 1) : QPen(Qt::NoPen));
    painter->setBrush(fill);
    painter->drawRoundedRect(edged ? rect.adjusted(0.5, 0.5, -0.5, -0.5) : rect, radius, radius);
}

void drawCheckMark(QPainter *painter, const QRectF &rect, const QColor &color)
{
    Saved saved(painter);
    painter->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const auto at = [&](qreal x, qreal y) {
        return QPointF(rect.left() + x * rect.width(), rect.top() + y * rect.height());
    };
    const std::array mark{at(0.26, 0.53), at(0.43, 0.70), at(0.75, 0.32)};
    painter->drawPolyline(mark.data(), static_cast<int>(mark.size()));
}

bool isOn(const QStyleOption *option, QStyle::StateFlag flag)
{
    return option->state.testFlag(flag);
}

} // namespace StylePainting
