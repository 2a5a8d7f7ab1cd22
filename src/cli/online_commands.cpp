#include "cli/choice.h"
#include "cli/command.h"
#include "cli/pictures.h"
#include "cli/texts.h"

#include "platform/platform.h"
#include "services/claude_client.h"
#include "services/uploader.h"

#include <CLI/CLI.hpp>

namespace {

template <typename T>
void report(CommandContext &context, QFuture<Result<T>> future,
            const std::function<QString(const T &)> &words)
{
    const Result<T> result = waitFor(std::move(future));
    if (!result)
        return context.fail(result.error());
    const QString line = words(*result);
    if (line.isEmpty()) {
        CommandContext::warn(CliTexts::tr("The reply holds no text."));
        context.status = ExitStatus::NothingFound;
        return;
    }
    CommandContext::print(line);
}

void describe(CommandContext &context, const std::string &file, ClaudeClient::Action action)
{
    const auto image = Pictures::read(context, file);
    if (!image)
        return;
    ClaudeClient client(*context.platform().http, context.settings());
    report<QString>(context, client.run(action, *image), [](const QString &text) { return text; });
}

void upload(CommandContext &context, const std::string &file)
{
    const auto image = Pictures::read(context, file);
    if (!image)
        return;
    Uploader uploader(*context.platform().http, context.settings());
    report<QUrl>(context, uploader.imgur(*image),
                 [](const QUrl &url) { return url.toString(QUrl::FullyEncoded); });
}

} // namespace

void addOnlineCommands(CLI::App &app, CommandContext &context)
{
    struct Words {
        std::string file;
        ClaudeClient::Action action = ClaudeClient::Action::Describe;
    };
    const auto words = std::make_shared<Words>();

    CLI::App *asking = app.add_subcommand(
        "describe", help(CliTexts::tr("Ask the AI service about a picture, with your own key")));
    asking->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    asking
        ->add_option(
            "--action", words->action,
            help(CliTexts::tr("What to ask for: describe (if not given), steps, altText, name or caption")))
        ->transform(oneOf<ClaudeClient::Action>({{"describe", ClaudeClient::Action::Describe},
                                                 {"steps", ClaudeClient::Action::Steps},
                                                 {"altText", ClaudeClient::Action::AltText},
                                                 {"name", ClaudeClient::Action::Name},
                                                 {"caption", ClaudeClient::Action::Caption}}));
    setBody(asking, context, Needs::Core,
            [&context, words] { describe(context, words->file, words->action); });

    CLI::App *sending =
        app.add_subcommand("upload", help(CliTexts::tr("Upload a picture and print its public link")));
    sending->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    setBody(sending, context, Needs::Core, [&context, words] { upload(context, words->file); });
}
