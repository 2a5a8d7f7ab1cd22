#pragma once

#include "platform/input_monitor.h"

// Raw events of XInput 2.1 and later, which come while other clients hold the pointer or the keyboard too.
class X11InputMonitors : public InputMonitors {
public:
    Result<std::unique_ptr<InputMonitor>> listen(InputEvents events,
                                                 const std::function<void(InputMonitor &)> &connect) override;
};
