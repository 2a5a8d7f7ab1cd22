#include "capture/scroll_back.h"

#include "base/async.h"
#include "capture/wheel_hand.h"
#include "platform/pointer_control.h"

namespace {

constexpr int kAtOnce = 10; // clicks: a tenth of a second, after which the user is looked for

} // namespace

ScrollBack::ScrollBack(const Ports &ports, const Place &place, QObject *parent)
    : QObject(parent), m_ports(ports), m_place(place)
{}

void ScrollBack::start(int clicks, const std::function<void()> &done)
{
    m_clicks = clicks;
    m_done = done;
    m_before = m_ports.pointer.position();
    const bool isThere = !WheelHand::isAway(m_before, m_place.target);
    m_ports.pointer.warp(m_place.target);
    m_aimedAt = m_ports.pointer.position(); // as the screen's pixels round it
    if (isThere)
        turnSome();
    else
        whenDone(m_ports.pause(WheelHand::kAimPause), this, [this](const Result<void> &) { turnSome(); });
}

void ScrollBack::turnSome()
{
    const bool isFree = !WheelHand::isAway(m_ports.pointer.position(), m_aimedAt);
    if (m_isCancelled || m_clicks <= 0 || !isFree || !WheelHand::isThere(m_ports.screens, m_place.window))
        return end();
    const int some = std::min(m_clicks, kAtOnce);
    m_clicks -= some;
    whenDone(m_ports.pointer.wheel(-some), this, [this](const Result<void> &turned) {
        if (!turned)
            m_clicks = 0;
        turnSome();
    });
}

void ScrollBack::end()
{
    const bool isWhereItWasPut = !WheelHand::isAway(m_ports.pointer.position(), m_aimedAt);
    if (isWhereItWasPut && WheelHand::isAway(m_before, m_aimedAt))
        m_ports.pointer.warp(m_before);
    m_done();
}
