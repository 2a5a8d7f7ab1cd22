#include "app/app_delegate.h"
#include "app/quit_signals.h"
#include "cli/cli.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>

namespace {

int runDesktopProgram(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        std::fputs("lumenpost: There is no display: start Lumenpost in a desktop session, or set DISPLAY.\n",
                   stderr);
        return EXIT_FAILURE;
    }
    QCoreApplication::setApplicationName(QStringLiteral("lumenpost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LUMENPOST_VERSION));
    // No display name: it would be added to the title of every window.
    QGuiApplication::setDesktopFileName(QStringLiteral("lumenpost"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    const QuitSignals signals_;
    AppDelegate delegate(application);
    if (!delegate.launch(QCoreApplication::arguments().mid(1)))
        return EXIT_SUCCESS;
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    if (isCommandLineCall(argc, argv))
        return runCommandLine(argc, argv);
    return runDesktopProgram(argc, argv);
}
