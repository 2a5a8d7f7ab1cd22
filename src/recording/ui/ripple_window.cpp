#include "recording/ui/ripple_window.h"

#include "ui/floating.h"
#include "ui/theme_style.h"

#include <QBitmap>
#include <QPainter>

RippleWindow::RippleWindow(const ClickRipple &ripple, QObject *owner) : m_ripple(ripple)
{
    Floating::prepare(this);
    setWindowFlag(Qt::WindowTransparentForInput);
    setGeometry(ripple.frame().toRect());
    m_reducesMotion = motionDuration(this, 1) == 0;
    m_time.setDuration(int(ClickRipple::kGone * 1000));
    m_time.setStartValue(0.0);
    m_time.setEndValue(ClickRipple::kGone);
    connect(&m_time, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { advance(value.toDouble()); });
    connect(&m_time, &QVariantAnimation::finished, this, &QObject::deleteLater);
    connect(owner, &QObject::destroyed, this, &QObject::deleteLater);
    advance(0);
}

void RippleWindow::play()
{
    show();
    m_time.start();
}

QRectF RippleWindow::ring() const
{
    const double radius = (ClickRipple::kSize / 2 - ClickRipple::kInset) * m_look.scale;
    return {QPointF(width(), height()) / 2 - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius)};
}

void RippleWindow::advance(double seconds)
{
    m_look = ClickRipple::lookAt(seconds, m_reducesMotion);
    if (!testAttribute(Qt::WA_TranslucentBackground)) {
        // Nothing is mixed: the ring alone, which gets thinner instead of fainter.
        QBitmap shape(size());
        shape.fill(Qt::color0);
        QPainter painter(&shape);
        painter.setPen(QPen(Qt::color1, std::max(ClickRipple::kStroke * m_look.opacity, 1.0)));
        painter.drawEllipse(ring());
        painter.end();
        setMask(shape);
    }
    update();
}

void RippleWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!testAttribute(Qt::WA_TranslucentBackground)) {
        painter.fillRect(rect(), m_ripple.color());
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(m_look.opacity);
    QColor fill = m_ripple.color();
    fill.setAlphaF(float(ClickRipple::kFillAlpha));
    painter.setBrush(fill);
    painter.setPen(QPen(m_ripple.color(), ClickRipple::kStroke));
    painter.drawEllipse(ring());
}
