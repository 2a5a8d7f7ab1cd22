#pragma once

#include "base/result.h"
#include "platform/screens.h"
#include "platform/wayland/portal_request.h"

#include <QImage>

// Pictures that the desktop's portal makes; it may ask the user first. Slow: for a worker.
namespace PortalPictures {

bool isOffered();
// All screens together, with black where there is none. Error::Kind::Denied when the user said no.
Result<QImage> desktop(std::chrono::milliseconds patience = PortalRequest::kUserPatience);
// The part of it that shows one screen, in that screen's pixels.
Result<QImage> screenOf(const QImage &desktop, const QList<Screen> &screens, const Screen &screen);

} // namespace PortalPictures
