#include "cli/window_owner.h"

#include "cli/command.h"
#include "platform/platform.h"
#include "platform/screens.h"

QString WindowOwner::of(CommandContext &context, quint32 id)
{
    for (const ListedWindow &window : context.platform().screens->windows()) {
        if (window.id == id)
            return window.owner;
    }
    return {};
}

QString WindowOwner::at(CommandContext &context, const QPointF &point)
{
    for (const ListedWindow &window : context.platform().screens->windows()) { // front to back
        if (window.layer == 0 && window.frame.contains(point))
            return window.owner;
    }
    return {};
}
