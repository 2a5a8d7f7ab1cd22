#include "ui/progress_line.h"

#include "ui/theme.h"

#include <QPainter>

ProgressLine::ProgressLine(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressLine::set(int done, int total)
{
    m_share = total > 0 ? qBound(0.0, double(done) / total, 1.0) : 0;
    update();
}

void ProgressLine::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.track);
    const QRectF line(0, (height() - 4) / 2.0, width(), 4);
    painter.drawRoundedRect(line, 2, 2);
    if (m_share <= 0)
        return;
    painter.setBrush(theme.accent);
    painter.drawRoundedRect(QRectF(line.left(), line.top(), qMax(4.0, line.width() * m_share), 4), 2, 2);
}
