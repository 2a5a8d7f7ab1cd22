#pragma once

#include "platform/press_pictures.h"

#include <atomic>
#include <memory>

class OwnWindowTrails;

// Presses as the pointer's device tells them (raw events of XInput 2.1 and later), on a thread and a
// connection of their own, so that neither a busy program nor a busy event loop of ours delays a picture.
class X11PressPictures : public PressPictures {
    Q_OBJECT
public:
    X11PressPictures();
    ~X11PressPictures() override;
    Result<void> start() override;
    void stop() override;
    void setWantsPictures(bool wanted) override { m_wantsPictures = wanted; }

private:
    class Watch;

    std::unique_ptr<OwnWindowTrails> m_trails;
    std::atomic<bool> m_wantsPictures{true};
    std::unique_ptr<Watch> m_watch;
};
