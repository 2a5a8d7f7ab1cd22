#include "cli/command.h"
#include "cli/library_files.h"
#include "cli/texts.h"

#include "library/library.h"
#include "library/library_filter.h"
#include "library/model/search_index.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <array>

namespace {

QJsonObject describe(Library &library, const LibraryItem &item)
{
    const QString name = QFileInfo(item.path).fileName();
    QJsonArray collections;
    for (const LibraryCollection &collection : library.catalog().meta().collections) {
        if (collection.items.contains(name))
            collections.append(collection.name);
    }
    const QString source = library.catalog().meta().sources.value(name);
    return {
        {QStringLiteral("path"), item.path},
        {QStringLiteral("date"), item.date.toUTC().toString(Qt::ISODateWithMs)},
        {QStringLiteral("bytes"), item.bytes},
        {QStringLiteral("favorite"), library.catalog().isFavorite(item.path)},
        {QStringLiteral("source"), source.isEmpty() ? QJsonValue() : QJsonValue(source)},
        {QStringLiteral("collections"), collections},
    };
}

void print(Library &library, const QList<LibraryItem> &items, bool json)
{
    QJsonArray array;
    for (const LibraryItem &item : items) {
        if (json)
            array.append(describe(library, item));
        else
            CommandContext::print(item.path);
    }
    if (json)
        CommandContext::print(QJsonDocument(array));
}

// What was printed may not be all.
void tellProblem(CommandContext &context)
{
    if (const auto problem = context.library().catalog().problem())
        context.fail(*problem);
}

void list(CommandContext &context, LibraryFilter filter, LibrarySort sort, bool json)
{
    Library &library = context.library();
    const QDateTime now = QDateTime::currentDateTime();
    QList<LibraryItem> items;
    for (const QString &path : library.items()) {
        const LibraryItem item = library.item(path);
        if (matches(library, item, filter, now))
            items.append(item);
    }
    sortItems(items, sort);
    print(library, items, json);
    tellProblem(context);
}

// The window's search, for one query alone.
void search(CommandContext &context, const QString &query, bool json)
{
    Library &library = context.library();
    const QByteArray wanted = SearchIndex::folded(SearchIndex::trimmed(query));
    QList<LibraryItem> items;
    for (const QString &path : library.items()) {
        const QFileInfo info(path);
        const std::array fields{info.completeBaseName(),
                                library.catalog().meta().sources.value(info.fileName()),
                                library.catalog().text(path).value_or(QString())};
        if (SearchIndex::holds(fields, wanted))
            items.append(library.item(path));
    }
    print(library, items, json);
    if (items.isEmpty())
        context.status = ExitStatus::NothingFound;
    tellProblem(context);
}

void addSearch(CLI::App *group, CommandContext &context)
{
    struct Arguments {
        std::string query;
        bool json = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = group->add_subcommand(
        "search", help(CliTexts::tr("Files whose name, application, text or description holds the query as "
                                    "it stands, newest first")));
    command->add_option("QUERY", arguments->query)->required();
    command->add_flag(
        "--json", arguments->json,
        help(CliTexts::tr("One JSON array with date, bytes, favorite, source and collections")));
    setBody(command, context, Needs::Core, [&context, arguments] {
        search(context, QString::fromStdString(arguments->query), arguments->json);
    });
}

void addList(CLI::App *group, CommandContext &context)
{
    struct Arguments {
        std::string filter = "all";
        std::string sort = "newest";
        bool json = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = group->add_subcommand("list", help(CliTexts::tr("List the files of the Library")));
    command->add_option("--filter", arguments->filter, "all, images, videos, favorites, today, week or month")
        ->check([](const std::string &word) {
            return libraryFilter(QString::fromStdString(word)) ? std::string()
                                                               : "there is no filter \"" + word + "\"";
        });
    command->add_option("--sort", arguments->sort, "newest, oldest, name or size")
        ->check([](const std::string &word) {
            return librarySort(QString::fromStdString(word)) ? std::string()
                                                             : "there is no order \"" + word + "\"";
        });
    command->add_flag(
        "--json", arguments->json,
        help(CliTexts::tr("One JSON array with date, bytes, favorite, source and collections")));
    setBody(command, context, Needs::Core, [&context, arguments] {
        list(context, *libraryFilter(QString::fromStdString(arguments->filter)),
             *librarySort(QString::fromStdString(arguments->sort)), arguments->json);
    });
}

void addAdd(CLI::App *group, CommandContext &context)
{
    const auto files = std::make_shared<std::vector<std::string>>();
    CLI::App *command = group->add_subcommand("add", help(CliTexts::tr("Copy files into the Library")));
    command->add_option("FILE", *files, help(CliTexts::tr("Images and films")))->required();
    setBody(command, context, Needs::Core, [&context, files] {
        for (const std::string &file : *files) {
            const auto path = context.library().importFile(absolutePath(file));
            if (path)
                CommandContext::print(*path);
            else
                context.fail(path.error(), absolutePath(file));
        }
    });
}

void addRename(CLI::App *group, CommandContext &context)
{
    struct Arguments {
        std::string file;
        std::string name;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command =
        group->add_subcommand("rename", help(CliTexts::tr("Give a file another name; its extension stays")));
    command->add_option("FILE", arguments->file)->required();
    command->add_option("NAME", arguments->name)->required();
    setBody(command, context, Needs::Core, [&context, arguments] {
        const auto path = existingPath(context, arguments->file);
        if (!path)
            return;
        const QString name = QString::fromStdString(arguments->name);
        if (const auto renamed = context.library().rename(*path, name); !renamed)
            context.fail(renamed.error());
        else if (const auto stored = context.library().catalog().flush(); !stored)
            context.fail(stored.error());
        else
            CommandContext::print(*renamed);
    });
}

void addTrash(CLI::App *group, CommandContext &context)
{
    const auto files = std::make_shared<std::vector<std::string>>();
    CLI::App *command =
        group->add_subcommand("trash", help(CliTexts::tr("Move files of the Library to the Trash")));
    command->add_option("FILE", *files)->required();
    setBody(command, context, Needs::Core, [&context, files] {
        for (const std::string &file : *files) {
            const auto path = existingPath(context, file);
            if (!path)
                continue;
            if (const auto removed = context.library().remove(*path))
                CommandContext::print(*path);
            else
                context.fail(removed.error());
        }
    });
}

} // namespace

void addLibraryCommands(CLI::App &app, CommandContext &context)
{
    CLI::App *group = app.add_subcommand("library", help(CliTexts::tr("The files of the Library")));
    group->require_subcommand(1);
    addList(group, context);
    addSearch(group, context);
    addAdd(group, context);
    addRename(group, context);
    addTrash(group, context);
    addLibraryUpkeepCommands(*group, context);
    addLibraryDataCommands(*group, context);
}
