#include "platform/wayland/kwin_windows.h"

#include "platform/wayland/kwin_pictures.h"
#include "platform/workspace.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutexLocker>
#include <cerrno>
#include <sys/eventfd.h>
#include <zlib.h>

namespace {

// Its names of things changed with its sixth version.
const QString kFind = QStringLiteral(R"(
var all = workspace.stackingOrder || workspace.clientList();
var active = workspace.activeWindow || workspace.activeClient;
function find(handle) { for (var i = 0; i < all.length; i++) if (String(all[i].internalId) == handle) return all[i]; }
)");
const QString kList = kFind + QStringLiteral(R"(
var told = [];
function rect(r) { return [r.x, r.y, r.width, r.height]; }
for (var i = 0; i < all.length; i++) {
    var w = all[i];
    var elsewhere = w.desktops && w.desktops.length > 0 && w.desktops.indexOf(workspace.currentDesktop) < 0;
    if (w.minimized || w.deleted || (typeof w.desktop == 'number' && w.desktop > 0 && w.desktop != workspace.currentDesktop) ||
        (typeof workspace.currentDesktop != 'number' && elsewhere))
        continue;
    told.push({handle: String(w.internalId), pid: w.pid, owner: String(w.resourceClass), title: String(w.caption),
               frame: rect(w.frameGeometry), content: rect(w.clientGeometry || w.frameGeometry),
               ordinary: w.normalWindow || w.dialog, active: w == active, fills: w.fullScreen});
}
return told;
)");

// Their titles tell the place. One that is given the keyboard hands it on to the program that had it last.
const QString kFloats = QStringLiteral(R"(
var last = workspace.activeWindow || workspace.activeClient, seen = [];
if (last && String(last.caption) == '%3') last = null;
function placeOf(w) {
    return w && w.pid == %1 ? /^%2 (-?\d+),(-?\d+)/.exec(w.caption) : null;
}
(workspace.windowAdded || workspace.clientAdded).connect(function (w) {
    var place = placeOf(w);
    if (!place) return;
    var g = w.frameGeometry;
    w.frameGeometry = {x: Number(place[1]), y: Number(place[2]), width: g.width, height: g.height};
    w.keepAbove = true; w.skipTaskbar = true; w.skipPager = true; w.skipSwitcher = true; w.onAllDesktops = true;
});
(workspace.windowActivated || workspace.clientActivated).connect(function (w) {
    if (w && !placeOf(w) && String(w.caption) != '%3') last = w;
    if (!placeOf(w) || seen.indexOf(String(w.internalId)) >= 0) return;
    seen.push(String(w.internalId)); // a click on it later is meant
    if (!last || last.deleted) return;
    if ('activeWindow' in workspace) workspace.activeWindow = last; else workspace.activeClient = last;
});
)");

quint32 idOf(const QString &handle)
{
    const QByteArray bytes = handle.toUtf8();
    return quint32(crc32(0, reinterpret_cast<const Bytef *>(bytes.constData()), uInt(bytes.size()))) &
           0x7fffffff;
}

QRectF rectOf(const QJsonValue &value)
{
    const QJsonArray rect = value.toArray();
    return {rect.at(0).toDouble(), rect.at(1).toDouble(), rect.at(2).toDouble(), rect.at(3).toDouble()};
}

QString asScript(const QJsonArray &array)
{
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

class KWinVeil : public WaylandVeil {
public:
    KWinVeil(KWinScript &script, const QStringList &handles) : m_script(script)
    {
        const auto before = script.run(
            kFind + QStringLiteral("return %1.map(function (h) { var w = find(h); if (!w) return [h, 1]; "
                                   "var was = w.opacity; w.opacity = 0; return [h, was]; });")
                        .arg(asScript(QJsonArray::fromStringList(handles))));
        m_before = before.value_or(QJsonValue()).toArray();
    }
    ~KWinVeil() override
    {
        m_script.run(kFind + QStringLiteral("%1.forEach(function (was) { var w = find(was[0]); "
                                            "if (w) w.opacity = was[1]; });")
                                 .arg(asScript(m_before)));
    }

private:
    KWinScript &m_script;
    QJsonArray m_before;
};

} // namespace

QList<WaylandWindow> KWinWindows::list() const
{
    const QJsonArray told = m_script.run(kList).value_or(QJsonValue()).toArray();
    QList<WaylandWindow> windows;
    QHash<quint32, QString> handles;
    for (auto each = told.end(); each != told.begin();) { // back to front there
        const QJsonObject object = QJsonValue(*--each).toObject();
        const QString handle = object.value(QLatin1String("handle")).toString();
        WaylandWindow window;
        window.listed.id = idOf(handle);
        window.listed.pid = object.value(QLatin1String("pid")).toInteger();
        window.listed.layer = object.value(QLatin1String("ordinary")).toBool() ? 0 : 1;
        window.listed.frame = rectOf(object.value(QLatin1String("frame")));
        window.listed.owner = object.value(QLatin1String("owner")).toString();
        window.listed.title = object.value(QLatin1String("title")).toString();
        window.content = rectOf(object.value(QLatin1String("content"))).toRect();
        window.hasFocus = object.value(QLatin1String("active")).toBool();
        window.fillsScreen = object.value(QLatin1String("fills")).toBool();
        handles[window.listed.id] = handle;
        windows.append(window);
    }
    const QMutexLocker lock(&m_mutex);
    m_handles = handles;
    return windows;
}

QString KWinWindows::handle(quint32 id) const
{
    const QMutexLocker lock(&m_mutex);
    return m_handles.value(id);
}

void KWinWindows::expectFloat(const QString &, const QRect &)
{
    if (!m_placesFloats)
        m_placesFloats =
            m_script.keep(kFloats.arg(QCoreApplication::applicationPid())
                              .arg(QLatin1String(kFloatTitle), QLatin1String(kScreenCoverTitle)));
}

void KWinWindows::activate(quint32 id)
{
    m_script.run(kFind +
                 QStringLiteral("var w = find('%1'); if (!w) return; if ('activeWindow' in workspace) "
                                "workspace.activeWindow = w; else workspace.activeClient = w;")
                     .arg(handle(id)));
}

std::unique_ptr<WaylandVeil> KWinWindows::hide(const QList<quint32> &ids)
{
    QStringList handles;
    for (const quint32 id : ids)
        handles.append(handle(id));
    return std::make_unique<KWinVeil>(m_script, handles);
}

bool KWinWindows::drain(int file)
{
    eventfd_t count = 0;
    return eventfd_read(file, &count) == 0 || errno == EAGAIN;
}

std::optional<Result<QImage>> KWinWindows::picture(quint32 id, Pointer pointer, WindowPart part)
{
    return KWinPictures::window(handle(id), pointer, part);
}
