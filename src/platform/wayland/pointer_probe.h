#pragma once

#include <QPointF>
#include <optional>

class WaylandConnection;
class WaylandOutputs;

// Where the pointer is, in global points. No program may ask that; but a surface of its own that the pointer
// is on is told. So one that can't be seen lies over each screen for a moment. Nothing where the compositor
// lets no surface lie there, or where there is no pointer.
std::optional<QPointF> probePointer(WaylandConnection &connection, const WaylandOutputs &outputs);
