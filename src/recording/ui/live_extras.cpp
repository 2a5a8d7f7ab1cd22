#include "recording/ui/live_extras.h"

#include "base/notice.h"
#include "platform/workspace.h"
#include "recording/recording_extras.h"
#include "recording/ui/draw_overlay_window.h"
#include "recording/ui/key_badge_panel.h"
#include "recording/ui/ripple_window.h"
#include "recording/ui/texts.h"
#include "recording/ui/webcam_bubble_window.h"

LiveExtras::LiveExtras(const Ports &ports, const QRectF &region, const Wish &wish, QObject *parent)
    : QObject(parent), m_ports(ports), m_region(region)
{
    InputEvents events;
    events.setFlag(InputEvent::Clicks, wish.clicks);
    events.setFlag(InputEvent::Keys, wish.keys);
    if (events)
        listen(events);
    if (wish.webcam)
        m_webcam = std::make_unique<WebcamBubbleWindow>(ports.cameras, ports.notices, region);
}

LiveExtras::~LiveExtras()
{
    setDrawing(false);
}

void LiveExtras::listen(InputEvents events)
{
    auto monitor = m_ports.inputs.listen(events, [this](InputMonitor &listener) {
        connect(&listener, &InputMonitor::pressed, this, &LiveExtras::showRipple);
        connect(&listener, &InputMonitor::keyPressed, this, &LiveExtras::showKey);
    });
    if (monitor)
        m_monitor = std::move(*monitor);
    else if (events.testFlag(InputEvent::Keys))
        m_ports.notices.post(
            RecordingUiTexts::tr("Showing keystrokes needs Accessibility permission (Settings › "
                                 "Permissions & Help)"),
            QStringLiteral("keyboard"));
}

void LiveExtras::showRipple(const PointerPress &press)
{
    if (const auto ripple = ClickRipple::of(press))
        (new RippleWindow(*ripple, this))->play();
}

void LiveExtras::showKey(const KeyStroke &stroke)
{
    const auto label = KeyBadge::label(stroke);
    if (!label)
        return;
    if (!m_badge)
        m_badge = std::make_unique<KeyBadgePanel>();
    m_badge->showKey(*label, m_region);
}

void LiveExtras::setDrawing(bool isDrawing)
{
    if (isDrawing == this->isDrawing())
        return;
    if (!isDrawing) {
        m_drawing->hide();
        m_drawing.release()->deleteLater(); // its own key may be under way
        m_ports.workspace.restoreActiveWindow();
        return;
    }
    m_ports.workspace.rememberActiveWindow();
    m_drawing = std::make_unique<DrawOverlayWindow>(m_region);
    connect(m_drawing.get(), &DrawOverlayWindow::escaped, this, [this] {
        setDrawing(false);
        Q_EMIT drawingEnded();
    });
    m_drawing->begin();
}

void LiveExtras::clearDrawing()
{
    if (m_drawing)
        m_drawing->clear();
}
