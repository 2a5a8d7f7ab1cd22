#pragma once

#include "platform/screen_casts.h"
#include "platform/screen_films.h"
#include "platform/screens.h"
#include "platform/wayland/portal_request.h"

#include <chrono>
#include <functional>
#include <memory>

class WaylandConnection;

// A stream of one screen that the desktop has begun for this program. It ends when this is destroyed.
class CastOrigin {
public:
    virtual ~CastOrigin() = default;
    virtual CastSource source() const = 0;
    // Called once when the desktop takes it back, on a thread of its own choice: to be set before it is used.
    virtual void setEnded(std::function<void(const Error &)>) {}
};

// The ways in which desktops begin one. All wait for the answer: for a worker.
namespace CastOrigins {

bool isOfferedByKWin(const WaylandConnection &connection);
// Plasma begins streams unasked for programs that are installed.
Result<std::unique_ptr<CastOrigin>> fromKWin(const Screen &screen, Pointer pointer);
bool isOfferedByPortal();
// The portal lets the user choose the screen once; what it gives to be spared the question the next time is
// kept in the folder. Error::Kind::Denied when the user said no or chose another screen.
Result<std::unique_ptr<CastOrigin>>
fromPortal(const Screen &screen, Pointer pointer, const QString &folder,
           std::chrono::milliseconds patience = PortalRequest::kUserPatience);

} // namespace CastOrigins
