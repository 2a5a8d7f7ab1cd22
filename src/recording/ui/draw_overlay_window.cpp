#include "recording/ui/draw_overlay_window.h"

#include "ui/floating.h"
#include "ui/hud_panel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBitmap>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <utility>

namespace {

const QColor kRed(0xff, 0x3b, 0x30);

QPainterPath pathOf(const QList<QPointF> &stroke)
{
    QPainterPath path(stroke.first());
    for (const QPointF &point : stroke)
        path.lineTo(point);
    return path;
}

QPen pen(const QBrush &brush, double width)
{
    return {brush, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

// What a line within these bounds covers, with its shadow.
QRect roomOf(const QRectF &line)
{
    constexpr double kAround = Strokes::kWidth / 2 + Strokes::kShadowBlur + 1;
    return line.adjusted(-kAround, -kAround, kAround, kAround).toAlignedRect();
}

} // namespace

DrawOverlayWindow::DrawOverlayWindow(const QRectF &region)
{
    Floating::prepare(this);
    setWindowFlag(Qt::WindowDoesNotAcceptFocus, false);
    setAttribute(Qt::WA_ShowWithoutActivating, false);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setGeometry(region.toAlignedRect());
}

void DrawOverlayWindow::begin()
{
    showStrokes();
    show();
    raise();
    // The recording's panel stays within reach.
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *panel = qobject_cast<HUDPanel *>(window); panel && panel->isVisible())
            panel->raise();
    }
    activateWindow();
    setFocus();
    if (!testAttribute(Qt::WA_TranslucentBackground))
        grabMouse(Qt::CrossCursor);
}

void DrawOverlayWindow::clear()
{
    m_strokes.clear();
    showStrokes();
}

void DrawOverlayWindow::showStrokes()
{
    if (!testAttribute(Qt::WA_TranslucentBackground)) {
        QBitmap shape(size());
        shape.fill(Qt::color0);
        QPainter painter(&shape);
        painter.setPen(pen(Qt::color1, Strokes::kWidth));
        for (const QList<QPointF> &stroke : m_strokes.all())
            painter.drawPath(pathOf(stroke));
        painter.fillRect(0, 0, 1, 1, Qt::color1); // an empty shape would be none
        painter.end();
        setMask(shape);
    }
    update();
}

void DrawOverlayWindow::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (!testAttribute(Qt::WA_TranslucentBackground)) {
        painter.fillRect(rect(), kRed);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    // A soft shadow: wider and fainter outlines under the stroke.
    constexpr int kSteps = 3;
    for (const QList<QPointF> &stroke : m_strokes.all()) {
        const QPainterPath path = pathOf(stroke);
        if (!roomOf(path.boundingRect()).intersects(event->rect()))
            continue;
        for (int i = kSteps; i > 0; --i) {
            const QColor shade = QColor::fromRgbF(0, 0, 0, float(Strokes::kShadowAlpha / kSteps / 2));
            painter.strokePath(path, pen(shade, Strokes::kWidth + 2 * Strokes::kShadowBlur * i / kSteps));
        }
        painter.strokePath(path, pen(kRed, Strokes::kWidth));
    }
}

// While the pointer is held, this program's buttons still work.
bool DrawOverlayWindow::passOn(const QMouseEvent &event)
{
    if (mouseGrabber() != this)
        return false;
    QWidget *under = QApplication::widgetAt(event.globalPosition().toPoint());
    if (!under || under->window() == this)
        return false;
    if (auto *button = qobject_cast<QAbstractButton *>(under))
        button->click();
    return true;
}

void DrawOverlayWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || passOn(*event))
        return;
    m_strokes.press(event->position());
    m_last = event->position();
    showStrokes();
}

void DrawOverlayWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (!(event->buttons() & Qt::LeftButton))
        return;
    m_strokes.drag(event->position());
    if (!testAttribute(Qt::WA_TranslucentBackground))
        return showStrokes();
    update(roomOf(QRectF(std::exchange(m_last, event->position()), event->position()).normalized()));
}

void DrawOverlayWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_strokes.release();
    showStrokes();
}

void DrawOverlayWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT escaped();
    else
        QWidget::keyPressEvent(event);
}

void DrawOverlayWindow::hideEvent(QHideEvent *)
{
    if (mouseGrabber() == this)
        releaseMouse();
}
