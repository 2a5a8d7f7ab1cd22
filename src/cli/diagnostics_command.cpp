#include "base/clock.h"
#include "cli/command.h"
#include "cli/texts.h"
#include "diagnostics/diagnostics.h"
#include "library/library.h"
#include "platform/permissions.h"
#include "platform/platform.h"
#include "platform/screens.h"
#include "settings/app_settings.h"

#include <CLI/CLI.hpp>

void addDiagnosticsCommand(CLI::App &app, CommandContext &context)
{
    CLI::App *command = app.add_subcommand(
        "diagnostics",
        help(CliTexts::tr(
            "Put the logs and a summary of the system into one file, to be sent with a report")));
    setBody(command, context, Needs::Core, [&context] {
        const Platform &platform = context.platform();
        const Diagnostics diagnostics({*platform.paths, *platform.screens, *platform.permissions,
                                       context.settings(), context.library()});
        const auto made = waitFor(diagnostics.makeBundle(Clock().now()));
        if (!made)
            return context.fail(made.error());
        CommandContext::print(*made);
    });
}
