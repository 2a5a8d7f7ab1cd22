#pragma once

#include "platform/desktop_parts.h"

// Asks the buses, the runtime folder and the disk.
class DesktopPartsProbe : public DesktopParts {
public:
    QFuture<QList<DesktopPart>> look() const override;
};
