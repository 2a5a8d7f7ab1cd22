#include "recording/ui/trim_handle.h"

#include "ui/roles.h"
#include "ui/theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace {

const QColor kYellow(0xff, 0xcc, 0x00);
const QColor kGrip(0x4d, 0x3d, 0x00);

} // namespace

TrimHandle::TrimHandle(Side side, const QString &name, QWidget *parent) : QWidget(parent), m_side(side)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::SizeHorCursor);
    setAccessibleName(name);
    Roles::set(this, QAccessible::Slider);
    setProperty("focusRadius", 3.0);
    hide();
}

QColor TrimHandle::color()
{
    return kYellow;
}

void TrimHandle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.setFillRule(Qt::WindingFill);
    shape.addRoundedRect(rect(), Theme::Radius::control, Theme::Radius::control);
    const int half = width() / 2; // square on the side of the film
    shape.addRect(QRect(m_side == Side::Left ? half : 0, 0, width() - half, height()));
    painter.fillPath(shape, kYellow);
    painter.setPen(QPen(kGrip, 2, Qt::SolidLine, Qt::RoundCap));
    const double middle = width() / 2.0;
    const double reach = height() / 6.0;
    painter.drawLine(QPointF(middle, height() / 2.0 - reach), QPointF(middle, height() / 2.0 + reach));
}

void TrimHandle::mousePressEvent(QMouseEvent *event)
{
    m_grip = (m_side == Side::Left ? width() : 0) - event->position().x();
}

void TrimHandle::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        Q_EMIT draggedTo(mapToParent(event->pos()).x() + m_grip);
}

void TrimHandle::keyPressEvent(QKeyEvent *event)
{
    const int direction = event->key() == Qt::Key_Left ? -1 : event->key() == Qt::Key_Right ? 1 : 0;
    if (direction == 0)
        return QWidget::keyPressEvent(event);
    if (event->modifiers() & Qt::ShiftModifier)
        Q_EMIT nudged(direction);
    else
        Q_EMIT stepped(direction);
}
