#include "app/app_delegate.h"
#include "app/lost_display.h"
#include "app/quit_signals.h"
#include "app/single_instance.h"
#include "base/file_name.h"
#include "base/translations.h"
#include "cli/cli.h"
#include "platform/session/session_kind.h"
#include "settings/url_command.h"

#include <QApplication>
#include <QFile>
#include <QUrl>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <unistd.h>

namespace {

constexpr int kWrongCall = 2; // as the command line says it

// What is to be opened, with names of files as the program keeps them. What the toolkit understood is gone.
QStringList wordsOf(int argc, char **argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        std::error_code none;
        const bool isFile = std::filesystem::is_regular_file(argv[i], none);
        words.append(FileName::fromBytes(
            isFile ? QByteArray::fromStdString(std::filesystem::absolute(argv[i], none).string())
                   : QByteArray(argv[i])));
    }
    return words;
}

int runDesktopProgram(int argc, char **argv, const QStringList &words)
{
    if (SingleInstance::handOverAtOnce(words))
        return EXIT_SUCCESS;
    if (const auto reached = reachDisplay(); !reached) {
        std::fprintf(stderr, "lumenpost: %s\n", qUtf8Printable(reached.error().message));
        return EXIT_FAILURE;
    }
    matchToolkit();
    QCoreApplication::setApplicationName(QStringLiteral("lumenpost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LUMENPOST_VERSION));
    // No display name: it would be added to the title of every window.
    QGuiApplication::setDesktopFileName(QStringLiteral("com.oakfenrow.lumenpost"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    installTranslations();
    const QuitSignals signals_;
    const LostDisplay lostDisplay;
    AppDelegate delegate(application);
    const auto launched = delegate.launch(words);
    if (!launched) {
        std::fprintf(stderr, "lumenpost: %s\n", qUtf8Printable(launched.error().message));
        return EXIT_FAILURE;
    }
    if (!*launched)
        return EXIT_SUCCESS;
    return QApplication::exec();
}

// A capture that a person is to point at is the running program's matter: `lumenpost capture region` with no
// more words does what its shortcut does.
std::optional<QString> linkOfCall(int argc, char **argv)
{
    static constexpr std::array kPointedAt{"region", "window", "text",    "scrolling",
                                           "video",  "steps",  "delayed", "panel"};
    if (argc != 3 || qstrcmp(argv[1], "capture") != 0)
        return std::nullopt;
    for (const char *word : kPointedAt) {
        if (qstrcmp(argv[2], word) == 0)
            return QStringLiteral("lumenpost://capture/") + QLatin1String(word);
    }
    return std::nullopt;
}

// Everything that isn't a command must be a file or a link to open.
bool isOpenable(const char *word)
{
    // A name may be no text at all.
    if (::access(word, F_OK) == 0)
        return true;
    const QString text = QString::fromLocal8Bit(word);
    return text == QLatin1String(kOpenClipboard) || URLCommand::isLink(text) || QUrl(text).isLocalFile();
}

} // namespace

int main(int argc, char **argv)
{
    // A limit on the size of files is a failed write with a reason, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    if (const auto link = linkOfCall(argc, argv); link && SingleInstance::handOverAtOnce({*link}))
        return EXIT_SUCCESS;
    if (isCommandLineCall(argc, argv))
        return runCommandLine(argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (!isOpenable(argv[i])) {
            std::fprintf(stderr, "lumenpost: There is no command and no file %s: see lumenpost --help.\n",
                         argv[i]);
            return kWrongCall;
        }
    }
    return runDesktopProgram(argc, argv, wordsOf(argc, argv));
}
