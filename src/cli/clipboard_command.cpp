#include "cli/command.h"
#include "library/clipboard_owner.h"
#include "platform/pasteboard.h"
#include "platform/platform.h"

#include <CLI/CLI.hpp>
#include <QClipboard>
#include <QGuiApplication>

namespace {

void own(CommandContext &context, const QString &file)
{
    const auto flavors = ClipboardOwner::take(file);
    if (!flavors)
        return context.fail(flavors.error(), file);
    context.platform().pasteboard->setFlavors(*flavors);
    QObject owner;
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &owner, [] {
        if (!QGuiApplication::clipboard()->ownsClipboard())
            QCoreApplication::quit();
    });
    ClipboardOwner::tellReady();
    QCoreApplication::exec();
}

} // namespace

void addClipboardCommand(CLI::App &app, CommandContext &context)
{
    const auto file = std::make_shared<std::string>();
    CLI::App *command =
        app.add_subcommand(ClipboardOwner::kCommand)->group(""); // started by the program alone
    command->add_option("FILE", *file)->required();
    setBody(command, context, Needs::Display, [&context, file] { own(context, absolutePath(*file)); });
}
