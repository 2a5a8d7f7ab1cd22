// From the wish to the painted window, in milliseconds: the capture panel (made, and open for the second
// time), and each page of the settings with the window around it. Run it in a desktop:
// tests/desktop/test-desktop run …
#include "shell/capture_panel.h"
#include "shell/menu_bar_panel.h"
#include "shell/settings_view.h"
#include "shell/shell_stage.h"
#include "ui/appearance.h"

#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>
#include <ctime>

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

// What this thread has computed so far, in milliseconds: a busy machine doesn't change it.
double computed()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

double untilPainted(Paints &paints, const std::function<void()> &open)
{
    paints.isPainted = false;
    QElapsedTimer timer;
    timer.start();
    const double before = computed();
    open();
    while (!paints.isPainted)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    std::printf("(%.1f computed) ", computed() - before);
    return timer.nsecsElapsed() / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Appearance appearance(application);
    ShellStage stage;
    auto &machine = stage.machine;
    for (int i = 0; i < 6; ++i)
        stage.addCapture(QStringLiteral("%1.png").arg(i), {1920, 1080}, Qt::darkCyan);
    Paints paints;

    std::unique_ptr<MenuBarPanel> panel;
    const auto make = [&] {
        panel = std::make_unique<MenuBarPanel>(
            std::make_unique<CapturePanel>(CapturePanel::Parts{stage.settings, stage.presets, stage.library,
                                                               machine.pasteboard, machine.workspace,
                                                               stage.notices},
                                           CapturePanelActions{}),
            machine.inputMonitors, machine.workspace);
    };
    // As in the program, which makes it at an idle moment; with a word, without that.
    if (argc > 1 && qstrcmp(argv[1], "cold") == 0) {
        std::printf("panel, made now     %.1f\n", untilPainted(paints, [&] {
                        make();
                        panel->showAt({400, 10, 24, 24});
                    }));
    } else {
        QElapsedTimer timer;
        timer.start();
        make();
        panel->warmUp();
        std::printf("made beforehand in  %.1f\n", timer.nsecsElapsed() / 1e6);
        std::printf("panel, first time   %.1f\n",
                    untilPainted(paints, [&] { panel->showAt({400, 10, 24, 24}); }));
    }
    for (int i = 0; i < 3; ++i) {
        panel->dismiss(QStringLiteral("bench"));
        QApplication::processEvents();
        std::printf("panel, again        %.1f\n",
                    untilPainted(paints, [&] { panel->showAt({400, 10, 24, 24}); }));
    }
    panel->dismiss(QStringLiteral("bench"));
    for (const char *tab : {"general", "shortcuts", "presets", "recording", "ai", "help"}) {
        stage.prefs.setSettingsTab(QLatin1String(tab));
        std::unique_ptr<SettingsView> view;
        const double taken = untilPainted(paints, [&] {
            view = std::make_unique<SettingsView>(stage.settingsParts());
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
