#pragma once

#include <QPointF>
#include <QString>

class CommandContext;

// Which application's window a picture shows, for the Library. Empty when it can't be told.
namespace WindowOwner {

QString of(CommandContext &context, quint32 window);
// Of the front-most ordinary window at a point of the desktop.
QString at(CommandContext &context, const QPointF &point);

} // namespace WindowOwner
