#include "cli/cli.h"

#include "cli/command.h"
#include "cli/reference.h"
#include "cli/texts.h"
#include "settings/app_settings.h"

#include <CLI/CLI.hpp>
#include <QStringList>
#include <array>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::array kGroups{
    addCaptureCommands,     addScrollingCommands,  addRenderCommand,
    addRecognitionCommands, addOnlineCommands,     addLibraryCommands,
    addExportCommands,      addDiagnosticsCommand, addRecordingCommands,
};

void addCommands(CLI::App &app, CommandContext &context)
{
    for (const auto group : kGroups)
        group(app, context);
}

void describe(CLI::App &app, CommandContext &context, std::string &library)
{
    app.description(help(CliTexts::tr("Capture what is on the screen, mark it up, keep it and share it.")));
    app.set_version_flag("--version", "lumenpost " LUMENPOST_VERSION);
    app.set_help_all_flag("--help-all", help(CliTexts::tr("Show the help of every command")));
    app.add_option("--library", library,
                   help(CliTexts::tr("Use this folder as the save folder, for this call alone")))
        ->envname("LUMENPOST_LIBRARY")
        ->type_name("DIR");
    app.footer(
        "lumenpost FILE… and lumenpost LINK… open files and lumenpost:// links in the program that runs, "
        "starting it if needed; lumenpost "
        "--open-clipboard opens what was copied; lumenpost alone starts it in the tray.\n\n"
        "lumenpost capture WORD with no more words does in the program that runs what a shortcut does, for "
        "the "
        "keys that a desktop binds to commands: region, window, text, scrolling, video, steps, delayed, "
        "panel.\n\n"
        "Exit status: 0 done, 1 failed, 2 wrong words in the call, 3 done but nothing was found.");
    // For the build, which installs both.
    app.add_flag_callback(
           "--manual",
           [&app] {
               CommandContext::print(Reference::manual(app).trimmed());
               throw CLI::Success();
           },
           help(CliTexts::tr("Print the manual page")))
        ->group("");
    app.add_option_function<std::string>(
           "--completion",
           [&app](const std::string &shell) {
               const auto script = Reference::completion(app, QString::fromStdString(shell));
               if (!script)
                   throw CLI::ValidationError("--completion", "\"" + shell + "\" is not bash, zsh or fish");
               CommandContext::print(script->trimmed());
               throw CLI::Success();
           },
           help(CliTexts::tr("Print a shell's completion script")))
        ->group("");
    app.parse_complete_callback(
        [&context, &library] { context.libraryFolder = QString::fromStdString(library); });
    app.require_subcommand(1);
    app.fallthrough();
}

// One sentence, whatever the parser has to say, and where to read on.
QString sentenceOf(const CLI::ParseError &wrong, const CLI::App &app)
{
    QString command = QStringLiteral("lumenpost");
    const CLI::App *deepest = &app;
    while (!deepest->get_subcommands().empty()) {
        deepest = deepest->get_subcommands().front();
        command += QLatin1Char(' ') + QString::fromStdString(deepest->get_name());
    }
    QString what = QString::fromUtf8(wrong.what()).simplified();
    // The parser names what is missing; the user wants to know which word it didn't take.
    if (const std::vector<std::string> unknown = app.remaining(true);
        !unknown.empty() && deepest->get_require_subcommand_min() > 0)
        what = CliTexts::tr("There is no command \"%1\"").arg(QString::fromStdString(unknown.front()));
    while (what.endsWith(QLatin1Char('.')))
        what.chop(1);
    return CliTexts::tr("%1: see %2 --help.").arg(what, command);
}

} // namespace

bool isCommandLineCall(int argc, char **argv)
{
    static constexpr std::array kWords{
        "capture",      "displays", "windows", "scroll",      "stitch",     "render",    "text",
        "boxes",        "faces",    "redact",  "describe",    "upload",     "library",   "clipboard-owner",
        "export",       "pdf",      "combine", "guide-image", "record",     "gif",       "mp4",
        "diagnostics",  "captions", "--help",  "-h",          "--help-all", "--version", "--manual",
        "--completion",
    };
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--library") == 0) {
            ++i; // and its folder
            continue;
        }
        if (std::strncmp(argv[i], "--library=", 10) == 0)
            continue;
        return std::any_of(kWords.begin(), kWords.end(),
                           [&](const char *word) { return std::strcmp(word, argv[i]) == 0; });
    }
    return false;
}

int runCommandLine(int argc, char **argv)
{
    CommandContext context(argc, argv);
    CLI::App app({}, "lumenpost");
    std::string library;
    context.speakUsersLanguage();
    describe(app, context, library);
    addCommands(app, context);
    try {
        app.parse(argc, argv);
        if (std::fflush(stdout) != 0 || std::ferror(stdout))
            context.fail({Error::Kind::Failed, CliTexts::tr("The result could not be printed."), {}});
        return static_cast<int>(context.status);
    } catch (const CLI::Success &wanted) {
        return app.exit(wanted); // help and version
    } catch (const CLI::ParseError &wrong) {
        context.wrongCall(sentenceOf(wrong, app));
        return static_cast<int>(context.status);
    }
}
