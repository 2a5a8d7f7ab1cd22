// From the wish to the painted window, in milliseconds: the capture panel (made, and open for the second time), and
// each page of the settings with the window around it. Run it in a desktop: tests/desktop/test-desktop run …
#include "base/clock.h"
#include "base/notice.h"
#include "fakes/fake_desktop_parts.h"
#include "fakes/fake_platform.h"
#include "library/library.h"
#include "settings/app_settings.h"
#include "settings/capture_preset_store.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "shell/capture_panel.h"
#include "shell/menu_bar_panel.h"
#include "shell/settings_view.h"
#include "ui/appearance.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

namespace {

// Counts the paintings of the windows themselves.
class Paints : public QObject {
public:
    Paints() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        isPainted = isPainted || (event->type() == QEvent::Paint && watched->isWidgetType() &&
                                  static_cast<QWidget *>(watched)->isWindow());
        return false;
    }
    bool isPainted = false;
};

double untilPainted(Paints &paints, const std::function<void()> &open)
{
    paints.isPainted = false;
    QElapsedTimer timer;
    timer.start();
    open();
    while (!paints.isPainted)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return timer.nsecsElapsed() / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Appearance appearance(application);
    QTemporaryDir folder;
    FakePlatform fakes(folder.path());
    FakeDesktopParts parts;
    FakeShortcutHolders holders;
    Clock clock;
    NoticeBoard notices;
    Defaults defaults{{}};
    AppSettings prefs{defaults, fakes.secrets, fakes.loginItem, fakes.paths, notices};
    CaptureSettings settings{defaults};
    CapturePresetStore presets{defaults, settings};
    Library library{prefs, fakes.trash, clock};
    library.ensureDirectory();
    QImage picture(1920, 1080, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    for (int i = 0; i < 6; ++i)
        picture.save(library.folder() + QStringLiteral("/%1.png").arg(i));
    Paints paints;

    std::unique_ptr<MenuBarPanel> panel;
    std::printf("panel, first time   %.1f\n", untilPainted(paints, [&] {
                    panel = std::make_unique<MenuBarPanel>(
                        std::make_unique<CapturePanel>(CapturePanel::Parts{settings, presets, library,
                                                                           fakes.pasteboard, fakes.workspace,
                                                                           notices},
                                                       CapturePanelActions{}),
                        fakes.inputMonitors, fakes.workspace);
                    panel->showAt({400, 10, 24, 24});
                }));
    for (int i = 0; i < 3; ++i) {
        panel->dismiss(QStringLiteral("bench"));
        QApplication::processEvents();
        std::printf("panel, again        %.1f\n", untilPainted(paints, [&] { panel->showAt({400, 10, 24, 24}); }));
    }
    panel->dismiss(QStringLiteral("bench"));
    for (const char *tab : {"general", "shortcuts", "presets", "recording", "ai", "help"}) {
        prefs.setSettingsTab(QLatin1String(tab));
        std::unique_ptr<SettingsView> view;
        const double taken = untilPainted(paints, [&] {
            view = std::make_unique<SettingsView>(SettingsParts{
                prefs, settings, presets, library, fakes.paths, fakes.permissions, parts, holders,
                fakes.inputMonitors, fakes.sounds, fakes.workspace, notices});
            view->setFixedSize(620, 540);
            view->show();
        });
        QElapsedTimer search;
        search.start();
        view->search(QStringLiteral("record"));
        std::printf("settings, %-10s %.1f, first search %.1f\n", tab, taken, search.nsecsElapsed() / 1e6);
    }
    return 0;
}
