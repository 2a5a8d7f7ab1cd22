#include "library/ui/picture_pane.h"

#include "ui/symbol.h"
#include "ui/theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

PicturePane::PicturePane(QWidget *parent) : QWidget(parent)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void PicturePane::setPicture(const QImage &picture)
{
    m_picture = picture;
    updateGeometry();
    update();
}

void PicturePane::setSymbol(const QString &symbol)
{
    m_symbol = symbol;
    update();
}

int PicturePane::heightForWidth(int width) const
{
    if (m_picture.isNull())
        return qMin(width * 5 / 8, m_tallest);
    return qBound(64, width * m_picture.height() / m_picture.width(), m_tallest);
}

void PicturePane::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF place = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QRectF frame(QPointF(), m_picture.isNull()
                                ? place.size()
                                : QSizeF(m_picture.size()).scaled(place.size(), Qt::KeepAspectRatio));
    frame.moveCenter(place.center());
    QPainterPath shape;
    shape.addRoundedRect(frame, Theme::Radius::control, Theme::Radius::control);
    if (m_picture.isNull()) {
        painter.fillPath(shape, theme.window);
    } else {
        painter.setClipPath(shape);
        painter.drawImage(frame, m_picture);
        painter.setClipping(false);
    }
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawPath(shape);
    if (m_symbol.isEmpty())
        return;
    QRectF symbol(0, 0, 40, 40);
    symbol.moveCenter(frame.center());
    if (!m_picture.isNull()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::material(true));
        painter.drawEllipse(symbol);
        symbol.adjust(10, 10, -10, -10);
    }
    drawSymbol(painter, symbol, m_symbol, m_picture.isNull() ? theme.disabled : Theme::onMaterial());
}

void PicturePane::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}
