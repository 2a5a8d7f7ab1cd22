#include "platform/wayland/wayland_camera.h"

#include "platform/texts.h"
#include "platform/wayland/kwin_pictures.h"
#include "platform/wayland/portal_pictures.h"
#include "platform/wayland/screencopy.h"
#include "platform/wayland/wayland_outputs.h"
#include "platform/wayland_session.h"

namespace {

class ScreencopyCamera : public WaylandCamera {
public:
    ScreencopyCamera(WaylandConnection &connection, WaylandOutputs &outputs)
        : m_outputs(outputs), m_copies(connection)
    {}
    Result<QImage> take(const Screen &screen, Pointer pointer) override
    {
        const WaylandOutput *output = m_outputs.find(screen.id);
        if (!output)
            return fail(Error::Kind::NotFound, PlatformTexts::tr("That display is no longer available."));
        const auto copy = m_copies.take(*output, pointer);
        return copy ? Result<QImage>(copy->image) : std::unexpected(copy.error());
    }
    void trim() override { m_copies.trim(); }

private:
    WaylandOutputs &m_outputs;
    Screencopy m_copies;
};

// One picture of all screens, each at the sharpest of their scales.
class PortalCamera : public WaylandCamera {
public:
    explicit PortalCamera(WaylandOutputs &outputs) : m_outputs(outputs) {}
    Result<QImage> take(const Screen &screen, Pointer) override
    {
        const auto whole = PortalPictures::desktop();
        if (!whole)
            return whole;
        return PortalPictures::screenOf(*whole, m_outputs.screens(), screen);
    }

private:
    WaylandOutputs &m_outputs;
};

class KWinCamera : public WaylandCamera {
public:
    explicit KWinCamera(WaylandOutputs &outputs) : m_portal(outputs) {}
    Result<QImage> take(const Screen &screen, Pointer pointer) override
    {
        auto picture = KWinPictures::screen(screen.name, pointer);
        // Its portal shows programs that aren't installed what it refuses them here.
        if (!picture && picture.error().kind == Error::Kind::Denied && PortalPictures::isOffered())
            return m_portal.take(screen, pointer);
        return picture;
    }

private:
    PortalCamera m_portal;
};

} // namespace

Result<std::unique_ptr<WaylandCamera>> waylandCamera(WaylandConnection &connection, WaylandOutputs &outputs)
{
    if (Screencopy::isOffered(connection))
        return std::make_unique<ScreencopyCamera>(connection, outputs);
    if (KWinPictures::isOffered())
        return std::make_unique<KWinCamera>(outputs);
    if (PortalPictures::isOffered())
        return std::make_unique<PortalCamera>(outputs);
    return fail(Error::Kind::Unavailable, whyNoWaylandScreen());
}
