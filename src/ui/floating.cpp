#include "ui/floating.h"

#include "platform/workspace.h"
#include "ui/theme.h"

#include <QBitmap>
#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QPen>
#include <QtGui/private/qtx11extras_p.h>

namespace {

Floating::Placer &placer()
{
    static Floating::Placer placer;
    return placer;
}

// Hears of windows before they are shown.
class Announcer : public QObject {
public:
    explicit Announcer(QWidget *window) : QObject(window) { window->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = static_cast<QWidget *>(watched);
        const bool isFree = window->isWindow() && window->windowType() != Qt::ToolTip;
        if (event->type() == QEvent::Show && !event->spontaneous() && isFree && placer()) {
            const QRect frame = window->geometry();
            const QString title =
                QStringLiteral("%1 %2,%3").arg(QLatin1String(kFloatTitle)).arg(frame.x()).arg(frame.y());
            window->setWindowTitle(title);
            placer()(title, frame);
        }
        return false;
    }
};

} // namespace

namespace Floating {

void setPlacer(Placer chosen)
{
    placer() = std::move(chosen);
}

void announce(QWidget *window)
{
    if (placer())
        new Announcer(window);
}

bool isComposited()
{
    return !QX11Info::isPlatformX11() || QX11Info::isCompositingManagerRunning();
}

void prepare(QWidget *panel)
{
    // Past the window manager, which would list the panel among the user's windows.
    panel->setWindowFlags(Qt::Tool | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint |
                          Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus |
                          Qt::NoDropShadowWindowHint);
    panel->setAttribute(Qt::WA_ShowWithoutActivating);
    panel->setAttribute(Qt::WA_TranslucentBackground, isComposited());
    announce(panel);
}

void applyShape(QWidget *panel, qreal radius)
{
    if (panel->testAttribute(Qt::WA_TranslucentBackground))
        return;
    QBitmap mask(panel->size());
    mask.fill(Qt::color0);
    QPainter painter(&mask);
    painter.setBrush(Qt::color1);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(mask.rect(), radius, radius);
    painter.end();
    panel->setMask(mask);
}

void paintMaterial(QWidget *panel, qreal radius)
{
    QPainter painter(panel);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Theme::material(panel->testAttribute(Qt::WA_TranslucentBackground)));
    painter.setPen(QPen(Theme::materialEdge(), 1));
    painter.drawRoundedRect(QRectF(panel->rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

void useDarkPalette(QWidget *panel)
{
    panel->setPalette(Theme::palette(Theme::dark()));
}

} // namespace Floating
