#include "cli/command.h"
#include "cli/terminal_progress.h"
#include "cli/texts.h"
#include "library/library.h"
#include "library/library_backup.h"
#include "library/model/text_indexing.h"
#include "platform/platform.h"
#include "platform/secrets.h"
#include "services/claude_client.h"
#include "services/cloud.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>

namespace {

enum class Next { Count, PassOver, Stop };

// Goes through the files until the end, an interrupt, or what `work` says. The number that counts.
int forEachFile(const QStringList &paths, const QString &what,
                const std::function<Next(const QString &)> &work)
{
    const TerminalProgress progress(what);
    const auto total = static_cast<int>(paths.size());
    int count = 0;
    for (int done = 0; done < total && progress(done, total); ++done) {
        const Next next = work(paths[done]);
        if (next == Next::Stop)
            return count;
        count += next == Next::Count;
    }
    if (total > 0)
        progress(total, total);
    return count;
}

// A file that can't be read is told of, and tried again by the next call.
Next readFile(CommandContext &context, TextRecognizer &recognizer, const QString &path)
{
    const auto text = waitFor(TextIndexing::textOf(recognizer, path));
    if (!text) {
        CommandContext::warn(text.error().message);
        return Next::PassOver;
    }
    context.library().catalog().setIndexedText(path, *text);
    return Next::Count;
}

// What the service refuses once it refuses for all.
Next describeFile(CommandContext &context, ClaudeClient &client, const QString &path)
{
    const auto image = waitFor(TextIndexing::pictureOf(path));
    if (!image) {
        CommandContext::warn(image.error().message);
        return Next::PassOver;
    }
    const auto text = waitFor(TextIndexing::descriptionOf(client, *image));
    if (!text) {
        context.fail(text.error(), path);
        return Next::Stop;
    }
    context.library().catalog().setDescription(path, *text);
    return Next::Count;
}

void index(CommandContext &context, bool describes)
{
    Library &library = context.library();
    // Before the long reading, not after it.
    if (describes) {
        const auto key = waitFor(context.settings().apiKey(SecretsAccess::MayAsk));
        if (!key || key->isEmpty())
            return context.fail(key ? CloudError::missingAPIKey() : key.error());
    }
    TextRecognizer recognizer(*context.platform().text, *context.platform().faces);
    const int read = forEachFile(TextIndexing::withoutText(library), CliTexts::tr("Reading"),
                                 [&](const QString &path) { return readFile(context, recognizer, path); });
    int described = 0;
    if (describes) {
        ClaudeClient client(*context.platform().http, context.settings());
        described = forEachFile(TextIndexing::withoutDescription(library), CliTexts::tr("Describing"),
                                [&](const QString &path) { return describeFile(context, client, path); });
    }
    if (const auto stored = library.catalog().flush(); !stored)
        return context.fail(stored.error());
    CommandContext::print(CliTexts::tr("indexed %1").arg(read));
    if (describes)
        CommandContext::print(CliTexts::tr("described %1").arg(described));
}

void addIndex(CLI::App &group, CommandContext &context)
{
    const auto describes = std::make_shared<bool>(false);
    CLI::App *command = group.add_subcommand(
        "index",
        help(CliTexts::tr(
            "Read the text of images that have none yet, so that search finds them. Prints their number")));
    command->add_flag("--describe", *describes,
                      help(CliTexts::tr("Ask the AI service about those without a description too")));
    setBody(command, context, Needs::Core, [&context, describes] { index(context, *describes); });
}

void addBackup(CLI::App &group, CommandContext &context)
{
    CLI::App *backup =
        group.add_subcommand("backup", "Favorites, collections, sources, descriptions and texts as one file");
    backup->require_subcommand(1);
    const auto file = std::make_shared<std::string>();

    CLI::App *exporting =
        backup->add_subcommand("export", help(CliTexts::tr("Write all that is known into a file")));
    exporting->add_option("FILE", *file)->required();
    setBody(exporting, context, Needs::Core, [&context, file] {
        const QString path = absolutePath(*file);
        if (const auto written =
                LibraryBackup::exportData(context.library(), path, QDateTime::currentDateTime());
            !written)
            return context.fail(written.error(), path);
        CommandContext::print(path);
    });

    CLI::App *importing = backup->add_subcommand(
        "import", help(CliTexts::tr(
                      "Merge what a file knows; nothing that is there is overwritten. Prints what was new")));
    importing->add_option("FILE", *file)->required();
    setBody(importing, context, Needs::Core, [&context, file] {
        const QString path = absolutePath(*file);
        const auto news = LibraryBackup::importData(context.library(), path);
        if (!news)
            return context.fail(news.error(), path);
        CommandContext::print(CliTexts::tr("favorites %1").arg(news->favorites));
        CommandContext::print(CliTexts::tr("collections %1").arg(news->collections));
        CommandContext::print(CliTexts::tr("sources %1").arg(news->sources));
        CommandContext::print(CliTexts::tr("descriptions %1").arg(news->descriptions));
        CommandContext::print(CliTexts::tr("texts %1").arg(news->texts));
    });
}

} // namespace

void addLibraryDataCommands(CLI::App &library, CommandContext &context)
{
    addIndex(library, context);
    addBackup(library, context);
}
