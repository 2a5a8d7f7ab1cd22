// Shows one window of the shell: shell_gallery panel|settings|welcome [which] [--mode WORD] [--long] [--save
// FILE]
//   which   the tab of the settings by its id, or the page of the guide by its number
//   --long  texts 1.4 times as long, as other languages have them
#include "shell/capture_panel.h"
#include "shell/menu_bar_panel.h"
#include "shell/settings_view.h"
#include "shell/shell_stage.h"
#include "shell/welcome_view.h"
#include "ui/appearance.h"
#include "ui/tips.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>
#include <QTranslator>

namespace {

// Stretches every text of the program by repeating its letters.
class LongTexts : public QTranslator {
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *source, const char *, int n) const override
    {
        QString text = QString::fromUtf8(source).replace(QStringLiteral("%n"), QString::number(n));
        const qsizetype length = text.size();
        for (qsizetype i = 0; i < length * 2 / 5; ++i)
            text += i % 6 == 5 ? QLatin1Char(' ') : QLatin1Char('e');
        return text;
    }
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCommandLineParser words;
    words.addPositionalArgument("window", "panel, settings or welcome");
    words.addPositionalArgument("which", "tab or page");
    words.addOptions({{"mode", "mode of the panel", "word"},
                      {"long", "long texts"},
                      {"save", "picture", "file"},
                      {"search", "words", "words"}});
    words.process(application);
    LongTexts longTexts;
    if (words.isSet("long"))
        QCoreApplication::installTranslator(&longTexts);
    Appearance appearance(application);
    ShellStage stage;
    auto &machine = stage.machine;
    machine.permissions.statuses.insert(Permission::Camera, PermissionStatus::Denied);
    TipCenter tips{&stage.prefs};
    for (int i = 0; i < 6; ++i)
        stage.addCapture(QStringLiteral("Capture %1.png").arg(i), {640, 400},
                         QColor::fromHsv(i * 55, 120, 220));
    if (words.isSet("mode"))
        stage.settings.setMode(captureMode(words.value("mode")).value_or(CaptureMode::AllInOne));
    if (auto preset = stage.presets.presets().constFirst(); true) {
        preset.hotkey = CapturePresetStore::suggestedHotkey(0);
        stage.presets.update(preset);
    }

    std::unique_ptr<QWidget> window;
    const QString kind = words.positionalArguments().value(0);
    const QString which = words.positionalArguments().value(1);
    if (kind == QLatin1String("settings")) {
        stage.prefs.setSettingsTab(which.isEmpty() ? QStringLiteral("general") : which);
        stage.problems.insert(stage.prefs.hotkey(HotKeyAction::Record).display(),
                              QStringLiteral("Another program has taken this shortcut."));
        SettingsParts parts = stage.settingsParts();
        parts.showWelcome = [] {};
        parts.makeDiagnostics = [] { return readyFuture(Result<QString>(QString())); };
        parts.exportData = parts.importData = [](const QString &) { return Result<void>(); };
        auto view = std::make_unique<SettingsView>(parts);
        view->setFixedSize(620, 540);
        view->search(words.value("search"));
        window = std::move(view);
    } else if (kind == QLatin1String("welcome")) {
        auto view = std::make_unique<WelcomeView>(
            WelcomeView::Parts{stage.prefs, machine.permissions, stage.holders, [] {}, [] {}});
        view->setFixedSize(560, 480);
        view->setPage(which.toInt());
        window = std::move(view);
    } else {
        auto content = std::make_unique<CapturePanel>(CapturePanel::Parts{stage.settings, stage.presets,
                                                                          stage.library, machine.pasteboard,
                                                                          machine.workspace, stage.notices},
                                                      CapturePanelActions{});
        auto panel =
            std::make_unique<MenuBarPanel>(std::move(content), machine.inputMonitors, machine.workspace);
        panel->showAt({400, 10, 24, 24});
        window = std::move(panel);
    }
    window->show();
    if (words.isSet("save"))
        QTimer::singleShot(700, window.get(), [&] {
            QImage picture = window->grab().toImage();
            if (kind == QLatin1String("panel")) { // its shadow needs something to lie on
                QImage ground(picture.size(), QImage::Format_RGB32);
                ground.setDevicePixelRatio(picture.devicePixelRatio());
                ground.fill(0x3a6ea5);
                QPainter(&ground).drawImage(0, 0, picture);
                picture = ground;
            }
            picture.save(words.value("save"));
            QCoreApplication::quit();
        });
    return QApplication::exec();
}
