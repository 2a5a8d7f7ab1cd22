#include "platform/wayland/sway_tree.h"

#include <QFile>
#include <QJsonArray>

namespace {

QRect rectOf(const QJsonValue &value)
{
    const QJsonObject rect = value.toObject();
    return {rect.value(QLatin1String("x")).toInt(), rect.value(QLatin1String("y")).toInt(),
            rect.value(QLatin1String("width")).toInt(), rect.value(QLatin1String("height")).toInt()};
}

// Programs that came from X name themselves in another place.
QString ownerOf(const QJsonObject &node, qint64 pid)
{
    const QString name = node.value(QLatin1String("app_id")).toString();
    if (!name.isEmpty())
        return name;
    const QString className =
        node.value(QLatin1String("window_properties")).toObject().value(QLatin1String("class")).toString();
    if (!className.isEmpty())
        return className;
    QFile file(QStringLiteral("/proc/%1/comm").arg(pid));
    return pid > 0 && file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed()
                                                     : QString();
}

void addWindow(QList<SwayTree::Window> &windows, const QJsonObject &node)
{
    SwayTree::Window window;
    const QRect rect = rectOf(node.value(QLatin1String("rect")));
    const QRect inside = rectOf(node.value(QLatin1String("window_rect")));
    const QRect title = rectOf(node.value(QLatin1String("deco_rect")));
    window.listed.id = quint32(node.value(QLatin1String("id")).toInteger());
    window.listed.pid = node.value(QLatin1String("pid")).toInteger();
    window.listed.title = node.value(QLatin1String("name")).toString();
    window.listed.owner = ownerOf(node, window.listed.pid);
    // The title bar is told apart, and lies above what is told as the whole.
    window.listed.frame = rect.adjusted(0, -title.height(), 0, 0);
    window.content = inside.isEmpty() ? rect : inside.translated(rect.topLeft());
    window.hasFocus = node.value(QLatin1String("focused")).toBool();
    window.fillsScreen = node.value(QLatin1String("fullscreen_mode")).toInt() != 0;
    windows.append(window);
}

// Back to front: the windows of the plane first, then those that float over it, the last one topmost; one
// that fills its screen covers both.
void collect(QList<SwayTree::Window> &windows, const QJsonObject &node)
{
    const bool isView = node.contains(QLatin1String("pid")) && node.value(QLatin1String("visible")).toBool();
    if (isView)
        addWindow(windows, node);
    QList<QJsonObject> filling;
    for (const QLatin1String kind : {QLatin1String("nodes"), QLatin1String("floating_nodes")}) {
        for (const QJsonValue &value : node.value(kind).toArray()) {
            const QJsonObject child = value.toObject();
            if (child.value(QLatin1String("fullscreen_mode")).toInt() != 0 &&
                child.value(QLatin1String("type")) != QLatin1String("workspace"))
                filling.append(child);
            else
                collect(windows, child);
        }
    }
    for (const QJsonObject &child : std::as_const(filling))
        collect(windows, child);
}

} // namespace

QList<SwayTree::Window> SwayTree::windows(const QJsonObject &root)
{
    QList<Window> windows;
    collect(windows, root);
    std::reverse(windows.begin(), windows.end());
    return windows;
}
