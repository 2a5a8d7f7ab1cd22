#pragma once

#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

// A desktop to try the ports of the screen on: a made-up one or a real one.
class DesktopWorld {
public:
    virtual ~DesktopWorld() = default;
    virtual Screens &screens() = 0;
    virtual ScreenPictures &pictures() = 0;
    virtual PointerControl &pointer() = 0;
    // Another program's window with pattern(seed) at `frame`, above all others; 0 when it didn't come up.
    virtual quint32 openWindow(int seed, const QRect &frame) = 0;
    // Gone when this returns.
    virtual void closeWindow(quint32 id) = 0;
};

class DesktopContract : public testing::TestWithParam<std::function<std::unique_ptr<DesktopWorld>()>> {
protected:
    const std::unique_ptr<DesktopWorld> m_world = GetParam()();
    Screens &m_screens = m_world->screens();
    ScreenPictures &m_pictures = m_world->pictures();
    PointerControl &m_pointer = m_world->pointer();
};
