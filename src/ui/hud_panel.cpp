#include "ui/hud_panel.h"

#include "platform/screens.h"
#include "ui/floating.h"
#include "ui/theme.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QVBoxLayout>

QPointF hudPosition(const QRectF &rect, const QRectF &visible, const QSizeF &size)
{
    constexpr qreal kGap = 12;
    constexpr qreal kInset = 8;
    constexpr qreal kFromBottom = 40;

    qreal top = rect.bottom() + kGap;
    const bool fillsTheScreen = rect.top() <= visible.top() && rect.bottom() >= visible.bottom();
    if (top + size.height() > visible.bottom() - kInset)
        top = fillsTheScreen ? visible.top() - size.height()
                             : qMax(rect.top() - kGap - size.height(), visible.top() + kInset);
    if (top < visible.top())
        top = visible.bottom() - kFromBottom - size.height();

    qreal left = qMax(rect.center().x() - size.width() / 2, visible.left() + kInset);
    left = qMin(left, visible.right() - size.width() - kInset);
    return {left, top};
}

std::unique_ptr<HUDPanel> HUDPanel::make(const QRectF &rect, const QRectF &visible, QWidget *content)
{
    std::unique_ptr<HUDPanel> panel(new HUDPanel(content));
    panel->placeNear(rect, visible);
    return panel;
}

HUDPanel::HUDPanel(QWidget *content)
{
    Floating::prepare(this);
    Floating::useDarkPalette(this);
    setAccessibleName(content->accessibleName());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Theme::Space::group, Theme::Space::inside, Theme::Space::group,
                               Theme::Space::inside);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(content);
}

HUDPanel::~HUDPanel() = default;

QRectF HUDPanel::usableFrame(const Screen &screen)
{
    for (const QScreen *candidate : QGuiApplication::screens()) {
        if (candidate->geometry().topLeft() == screen.origin().toPoint())
            return candidate->availableGeometry();
    }
    return screen.frame();
}

void HUDPanel::placeNear(const QRectF &rect, const QRectF &visible)
{
    adjustSize();
    move(hudPosition(rect, visible, size()).toPoint());
}

void HUDPanel::paintEvent(QPaintEvent *)
{
    Floating::paintMaterial(this, Theme::Radius::panel);
}

void HUDPanel::mousePressEvent(QMouseEvent *event)
{
    m_grip = event->globalPosition().toPoint() - pos();
}

void HUDPanel::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        move(event->globalPosition().toPoint() - m_grip);
}

void HUDPanel::resizeEvent(QResizeEvent *)
{
    Floating::applyShape(this, Theme::Radius::panel);
}
