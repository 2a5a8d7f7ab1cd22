#include "recording/ui/key_badge_panel.h"

#include "recording/recording_extras.h"
#include "ui/floating.h"
#include "ui/theme.h"

#include <QFontMetricsF>
#include <QPainter>

KeyBadgePanel::KeyBadgePanel()
{
    Floating::prepare(this);
    setWindowFlag(Qt::WindowTransparentForInput);
    setFont(Theme::font(KeyBadge::kFontSize, QFont::DemiBold));
    m_gone.setSingleShot(true);
    m_gone.setInterval(int(KeyBadge::kShown * 1000));
    connect(&m_gone, &QTimer::timeout, this, &QWidget::hide);
}

void KeyBadgePanel::showKey(const QString &label, const QRectF &region)
{
    m_label = label;
    const QFontMetricsF metrics(font());
    setGeometry(
        KeyBadge::frame({metrics.horizontalAdvance(label), metrics.height()}, region).toAlignedRect());
    show();
    raise();
    update();
    m_gone.start();
}

void KeyBadgePanel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor ground = KeyBadge::kGround;
    if (!testAttribute(Qt::WA_TranslucentBackground))
        ground.setAlpha(255);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), KeyBadge::kRadius, KeyBadge::kRadius);
    painter.setPen(Qt::white);
    painter.drawText(rect(), Qt::AlignCenter, m_label);
}

void KeyBadgePanel::resizeEvent(QResizeEvent *)
{
    Floating::applyShape(this, KeyBadge::kRadius);
}
