#include "platform/session/make_platform.h"

#include "platform/cameras.h"
#include "platform/desktop/atspi_elements.h"
#include "platform/desktop/bus_activation.h"
#include "platform/desktop/desktop_command_keys.h"
#include "platform/desktop/desktop_login_item.h"
#include "platform/desktop/desktop_opener.h"
#include "platform/desktop/desktop_parts_probe.h"
#include "platform/desktop/desktop_paths.h"
#include "platform/desktop/desktop_permissions.h"
#include "platform/desktop/desktop_secrets.h"
#include "platform/desktop/desktop_shortcut_holders.h"
#include "platform/desktop/desktop_sounds.h"
#include "platform/desktop/desktop_trash.h"
#include "platform/desktop/portal_appearance.h"
#include "platform/desktop/qt_pasteboard.h"
#include "platform/face_engine.h"
#include "platform/movies.h"
#include "platform/network/network_http.h"
#include "platform/null/null_desktop.h"
#include "platform/null/null_input.h"
#include "platform/null/null_screens.h"
#include "platform/screen_casts.h"
#include "platform/session/media_loader.h"
#include "platform/session/recognition_loader.h"
#include "platform/session/session_kind.h"
#include "platform/sound_output.h"
#include "platform/sound_sources.h"
#include "platform/speech_engine.h"
#include "platform/text_engine.h"
#include "platform/wayland/plasma_hot_keys.h"
#include "platform/wayland/wayland_pasteboard.h"
#include "platform/wayland/wayland_pointer_control.h"
#include "platform/wayland/wayland_screen_films.h"
#include "platform/wayland/wayland_screen_pictures.h"
#include "platform/wayland/wayland_screens.h"
#include "platform/wayland/wayland_windows.h"
#include "platform/wayland/wayland_workspace.h"
#include "platform/wayland_session.h"
#include "platform/x11/x11_clipboard_manager.h"
#include "platform/x11/x11_hot_keys.h"
#include "platform/x11/x11_input_monitor.h"
#include "platform/x11/x11_pointer_control.h"
#include "platform/x11/x11_press_pictures.h"
#include "platform/x11/x11_screen_films.h"
#include "platform/x11/x11_screen_pictures.h"
#include "platform/x11/x11_screens.h"
#include "platform/x11/x11_workspace.h"

namespace {

void addX11(Platform &platform)
{
    platform.screens = std::make_unique<X11Screens>();
    platform.pictures = std::make_unique<X11ScreenPictures>();
    platform.films = std::make_unique<X11ScreenFilms>();
    platform.pointer = std::make_unique<X11PointerControl>(*platform.screens);
    platform.presses = std::make_unique<X11PressPictures>();
    platform.elements = std::make_unique<AtspiElements>();
    platform.hotKeys = std::make_unique<X11HotKeys>();
    platform.inputMonitors = std::make_unique<X11InputMonitors>();
    platform.workspace =
        std::make_unique<X11Workspace>(X11Workspace::Opener{&DesktopOpener::open, &DesktopOpener::reveal});
    platform.pasteboard = std::make_unique<QtPasteboard>(&hasX11ClipboardManager);
}

void addNoScreen(Platform &platform)
{
    const QString reason = whyNoScreen();
    platform.screens = std::make_unique<NullScreens>();
    platform.pictures = std::make_unique<NullScreenPictures>(reason);
    platform.films = std::make_unique<NullScreenFilms>(reason);
    platform.pointer = std::make_unique<NullPointerControl>(reason);
    platform.presses = std::make_unique<NullPressPictures>(reason);
    platform.elements = std::make_unique<NullAccessibleElements>();
    platform.hotKeys = std::make_unique<NullHotKeys>(reason);
    platform.inputMonitors = std::make_unique<NullInputMonitors>(reason);
}

// What no compositor tells or does says so where it is asked for.
void addWayland(Platform &platform)
{
    const bool isPlasma = qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("KDE");
    const std::shared_ptr<WaylandWindows> windows = waylandWindows();
    platform.screens = std::make_unique<WaylandScreens>(windows);
    platform.pictures = std::make_unique<WaylandScreenPictures>(windows);
    platform.films = std::make_unique<WaylandScreenFilms>(makeScreenCasts(), platform.paths->config());
    platform.pointer = std::make_unique<WaylandPointerControl>(*platform.screens);
    platform.presses = std::make_unique<NullPressPictures>(whyNoWaylandInput());
    platform.elements = std::make_unique<NullAccessibleElements>();
    if (isPlasma)
        platform.hotKeys = std::make_unique<PlasmaHotKeys>();
    else
        platform.hotKeys = std::make_unique<NullHotKeys>(whyNoWaylandShortcuts());
    platform.inputMonitors = std::make_unique<NullInputMonitors>(whyNoWaylandInput());
    platform.workspace = std::make_unique<WaylandWorkspace>(
        windows, WaylandWorkspace::Opener{&DesktopOpener::open, &DesktopOpener::reveal});
    platform.pasteboard = isPlasma ? std::make_unique<WaylandPasteboard>() : WaylandPasteboard::open();
    if (!platform.pasteboard)
        platform.pasteboard = std::make_unique<QtPasteboard>();
}

void addNothing(Platform &platform)
{
    addNoScreen(platform);
    platform.workspace = std::make_unique<NullWorkspace>(whyNoScreen());
    platform.pasteboard = std::make_unique<NullPasteboard>();
}

void addDesktop(Platform &platform, bool hasScreen)
{
    platform.paths = std::make_unique<DesktopPaths>();
    platform.trash = std::make_unique<DesktopTrash>();
    platform.secrets = std::make_unique<DesktopSecrets>(platform.paths->config());
    platform.loginItem = std::make_unique<DesktopLoginItem>();
    platform.sounds = std::make_unique<DesktopSounds>();
    platform.permissions = std::make_unique<DesktopPermissions>(hasScreen);
    platform.activation = std::make_unique<BusActivation>();
    platform.appearance = std::make_unique<PortalAppearance>();
    platform.parts = std::make_unique<DesktopPartsProbe>();
    platform.shortcutHolders = std::make_unique<DesktopShortcutHolders>();
    platform.commandKeys = std::make_unique<DesktopCommandKeys>();
}

} // namespace

Platform makePlatform()
{
    Platform platform;
    const SessionKind kind = sessionKind();
    addDesktop(platform, kind != SessionKind::None);
    switch (kind) {
    case SessionKind::X11:
        addX11(platform);
        break;
    case SessionKind::Wayland:
        addWayland(platform);
        break;
    case SessionKind::None:
        addNothing(platform);
        break;
    }
    platform.soundSources = makeSoundSources();
    platform.soundOutput = makeSoundOutput();
    platform.cameras = makeCameras();
    platform.movies = makeMovies();
    platform.speech = makeSpeechEngine();
    platform.text = makeTextEngine();
    platform.faces = makeFaceEngine();
    platform.http = std::make_unique<NetworkHttp>();
    return platform;
}
