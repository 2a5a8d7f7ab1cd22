#pragma once

#include "platform/pointer_control.h"
#include "platform/screens.h"

#include <QElapsedTimer>
#include <memory>

class WaylandConnection;
class WaylandOutputs;

// The pointer of a compositor that lets programs play one. Main thread.
class WaylandPointerControl : public PointerControl {
public:
    explicit WaylandPointerControl(const Screens &screens);
    ~WaylandPointerControl() override;
    QPointF position() const override;
    bool isPositionKnown() const override { return false; }
    void warp(QPointF point) override;
    bool canScroll() const override;
    QFuture<Result<void>> wheel(int clicks) override;

private:
    struct Device;
    Device *device() const;

    const Screens &m_screens;
    mutable std::unique_ptr<Device> m_device; // from the first use on
    // Where this program put the pointer last.
    QPointF m_put;
    QElapsedTimer m_sincePut;
};
