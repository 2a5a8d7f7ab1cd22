#pragma once

#include "platform/sounds.h"

#include <QThreadPool>

// Plays short sounds of its own making through the desktop's sound server, on a thread of its own. Silent
// when there is no server.
class DesktopSounds : public Sounds {
public:
    DesktopSounds();
    ~DesktopSounds() override;
    void shutter() override;
    void beep() override;
    void pop() override;

private:
    QThreadPool m_player;
};
