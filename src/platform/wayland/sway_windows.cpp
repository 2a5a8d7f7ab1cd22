#include "platform/wayland/sway_windows.h"

#include "platform/wayland/sway_guard.h"
#include "platform/wayland/sway_ipc.h"
#include "platform/wayland/sway_tree.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <utility>

namespace {

QByteArray about(quint32 id)
{
    return "[con_id=" + QByteArray::number(id) + "] ";
}

// How opaque a window is isn't told by older versions; but they refuse to take away more than there is. What
// it has is a sum of halves, quarters and so on, each of which is taken if it is there.
double takeOpacity(quint32 id)
{
    if (SwayIpc::run(about(id) + "opacity minus 1"))
        return 1;
    double taken = 0;
    double part = 0.5;
    for (int bit = 0; bit < 24; ++bit, part /= 2) {
        if (SwayIpc::run(about(id) + "opacity minus " + QByteArray::number(part, 'f', 24)))
            taken += part;
    }
    return taken;
}

class SwayVeil : public WaylandVeil {
public:
    explicit SwayVeil(const QList<quint32> &ids) : m_guard(commands(opaque(ids)))
    {
        for (const quint32 id : ids)
            m_opacities.append({id, takeOpacity(id)});
        if (m_opacities != opaque(ids))
            m_guard.add(commands(m_opacities));
    }
    ~SwayVeil() override { SwayIpc::run(commands(m_opacities)); }

private:
    using Opacities = QList<std::pair<quint32, double>>;

    static Opacities opaque(const QList<quint32> &ids)
    {
        Opacities all;
        for (const quint32 id : ids)
            all.append({id, 1});
        return all;
    }
    static QByteArray commands(const Opacities &opacities)
    {
        QByteArray all;
        for (const auto &[id, opacity] : opacities)
            all += about(id) + "opacity " + QByteArray::number(opacity, 'f', 8) + ';';
        return all;
    }

    SwayGuard m_guard;
    Opacities m_opacities;
};

} // namespace

QList<WaylandWindow> SwayWindows::list() const
{
    const auto tree = SwayIpc::ask(SwayIpc::Ask::Tree);
    if (!tree)
        return {};
    QList<WaylandWindow> windows;
    for (const SwayTree::Window &window : SwayTree::windows(tree->object()))
        windows.append({window.listed, window.hasFocus, window.fillsScreen, window.content});
    return windows;
}

void SwayWindows::activate(quint32 id)
{
    SwayIpc::run(about(id) + "focus");
}

// A window of the plane would move its neighbours before it fills the screen.
void SwayWindows::expectCovers(const QByteArray &title)
{
    if (m_expected == title)
        return;
    const QByteArray pid = QByteArray::number(QCoreApplication::applicationPid());
    if (SwayIpc::run("for_window [pid=" + pid + " title=\"^" + title + "$\"] floating enable"))
        m_expected = title; // the rule stays
}

// Rules stay as long as the session: one for each place that is used.
void SwayWindows::expectFloat(const QString &title, const QRect &frame)
{
    if (m_floats.contains(title))
        return;
    const QByteArray which = "[pid=" + QByteArray::number(QCoreApplication::applicationPid()) + " title=\"^" +
                             title.toUtf8() + "$\"] ";
    const QByteArray place = QByteArray::number(frame.x()) + ' ' + QByteArray::number(frame.y());
    // A rule each: what follows a comma would be done at once, with another window.
    QByteArray rules = "no_focus " + which;
    for (const QByteArray &rule : {QByteArray("floating enable"), QByteArray("border none"),
                                   QByteArray("sticky enable"), "move absolute position " + place})
        rules += ";for_window " + which + rule;
    if (SwayIpc::run(rules))
        m_floats.insert(title);
}

void SwayWindows::fillScreen(quint32 id)
{
    SwayIpc::run(about(id) + "fullscreen enable");
}

std::unique_ptr<WaylandVeil> SwayWindows::hide(const QList<quint32> &ids)
{
    return std::make_unique<SwayVeil>(ids);
}

int SwayWindows::listen()
{
    return SwayIpc::listen();
}

bool SwayWindows::drain(int file)
{
    return SwayIpc::drain(file);
}
