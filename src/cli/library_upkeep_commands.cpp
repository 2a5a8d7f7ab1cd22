#include "cli/choice.h"
#include "cli/command.h"
#include "cli/library_files.h"
#include "cli/terminal_progress.h"
#include "cli/texts.h"
#include "library/auto_delete.h"
#include "library/batch/duplicates.h"
#include "library/library.h"
#include "library/library_versions.h"
#include "platform/paths.h"
#include "platform/platform.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace {

// Prints a result once the change behind it is in the files.
void printStored(CommandContext &context, const QString &text)
{
    if (const auto stored = context.library().catalog().flush())
        CommandContext::print(text);
    else
        context.fail(stored.error());
}

void addFavorite(CLI::App &group, CommandContext &context)
{
    struct Arguments {
        std::string file;
        int state = 0;
    };
    enum class State { Off, On };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command =
        group.add_subcommand("favorite", help(CliTexts::tr("Star a file of the Library, or take its star")));
    command->add_option("FILE", arguments->file)->required();
    command->add_option("STATE", arguments->state, "on or off")
        ->required()
        ->transform(oneOf<State>({{"on", State::On}, {"off", State::Off}}));
    setBody(command, context, Needs::Core, [&context, arguments] {
        const auto path = existingPath(context, arguments->file);
        if (!path)
            return;
        context.library().catalog().setFavorite(*path, static_cast<State>(arguments->state) == State::On);
        printStored(context, *path);
    });
}

// The collection's id, or a failure told to the user.
std::optional<QUuid> existingCollection(CommandContext &context, const std::string &word)
{
    const QString text = QString::fromStdString(word);
    const auto &collections = context.library().catalog().meta().collections;
    const auto found =
        std::find_if(collections.begin(), collections.end(), [&](const LibraryCollection &entry) {
            return entry.id.toString(QUuid::WithoutBraces).compare(text, Qt::CaseInsensitive) == 0;
        });
    if (found != collections.end())
        return found->id;
    context.fail(
        {Error::Kind::NotFound, CliTexts::tr("There is no collection with the id %1.").arg(text), {}});
    return std::nullopt;
}

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

void listCollections(CommandContext &context)
{
    QJsonArray array;
    for (const LibraryCollection &collection : context.library().catalog().meta().collections) {
        array.append(QJsonObject{{QStringLiteral("id"), idText(collection.id)},
                                 {QStringLiteral("name"), collection.name},
                                 {QStringLiteral("items"), QJsonArray::fromStringList(collection.items)}});
    }
    CommandContext::print(QJsonDocument(array));
}

// One of the commands that name a collection and files; prints the collection's id.
void addFilesCommand(CLI::App *collection, CommandContext &context, const char *name,
                     const std::string &about,
                     std::function<void(Library &, const QStringList &, const QUuid &)> change)
{
    struct Arguments {
        std::string id;
        std::vector<std::string> files;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = collection->add_subcommand(name, about);
    command->add_option("ID", arguments->id)->required();
    command->add_option("FILE", arguments->files)->required();
    setBody(command, context, Needs::Core, [&context, arguments, change = std::move(change)] {
        const auto id = existingCollection(context, arguments->id);
        if (!id)
            return;
        QStringList paths;
        for (const std::string &file : arguments->files) {
            const auto path = existingPath(context, file);
            if (!path)
                return;
            paths.append(*path);
        }
        change(context.library(), paths, *id);
        printStored(context, idText(*id));
    });
}

std::optional<QString> collectionName(CommandContext &context, const std::string &word)
{
    const QString name = QString::fromStdString(word).trimmed();
    if (!name.isEmpty())
        return name;
    context.wrongCall(CliTexts::tr("A collection needs a name."));
    return std::nullopt;
}

void addCollection(CLI::App &group, CommandContext &context)
{
    CLI::App *collection =
        group.add_subcommand("collection", help(CliTexts::tr("Collections of the Library's files")));
    collection->require_subcommand(1);

    CLI::App *list =
        collection->add_subcommand("list", help(CliTexts::tr("One JSON array with id, name and items")));
    setBody(list, context, Needs::Core, [&context] { listCollections(context); });

    const auto created = std::make_shared<std::string>();
    CLI::App *create =
        collection->add_subcommand("create", help(CliTexts::tr("Make a collection; prints its id")));
    create->add_option("NAME", *created)->required();
    setBody(create, context, Needs::Core, [&context, created] {
        if (const auto name = collectionName(context, *created))
            printStored(context, idText(context.library().catalog().createCollection(*name)));
    });

    struct Renaming {
        std::string id;
        std::string name;
    };
    const auto renaming = std::make_shared<Renaming>();
    CLI::App *rename =
        collection->add_subcommand("rename", help(CliTexts::tr("Give a collection another name")));
    rename->add_option("ID", renaming->id)->required();
    rename->add_option("NAME", renaming->name)->required();
    setBody(rename, context, Needs::Core, [&context, renaming] {
        const auto name = collectionName(context, renaming->name);
        const auto id = name ? existingCollection(context, renaming->id) : std::nullopt;
        if (!id)
            return;
        context.library().catalog().renameCollection(*id, *name);
        printStored(context, idText(*id));
    });

    const auto removed = std::make_shared<std::string>();
    CLI::App *remove =
        collection->add_subcommand("delete", help(CliTexts::tr("Delete a collection; its files stay")));
    remove->add_option("ID", *removed)->required();
    setBody(remove, context, Needs::Core, [&context, removed] {
        const auto id = existingCollection(context, *removed);
        if (!id)
            return;
        context.library().catalog().deleteCollection(*id);
        printStored(context, idText(*id));
    });

    addFilesCommand(collection, context, "add", help(CliTexts::tr("Put files into a collection")),
                    [](Library &library, const QStringList &paths, const QUuid &id) {
                        library.catalog().add(paths, id);
                    });
    addFilesCommand(collection, context, "remove",
                    help(CliTexts::tr("Take files out of a collection; they stay in the Library")),
                    [](Library &library, const QStringList &paths, const QUuid &id) {
                        library.catalog().removeFrom(paths, id);
                    });
}

QString stampOf(const LibraryVersion &version)
{
    return QFileInfo(version.folder).fileName();
}

void addVersions(CLI::App &group, CommandContext &context)
{
    const auto file = std::make_shared<std::string>();
    CLI::App *command = group.add_subcommand(
        "versions", help(CliTexts::tr("The earlier states of a file: one JSON array, newest first")));
    command->add_option("FILE", *file)->required();
    setBody(command, context, Needs::Core, [&context, file] {
        const auto path = existingPath(context, *file);
        if (!path)
            return;
        QJsonArray array;
        for (const LibraryVersion &version : FileHistory(context.library(), *path).versions()) {
            array.append(
                QJsonObject{{QStringLiteral("stamp"), stampOf(version)},
                            {QStringLiteral("date"), version.date.toUTC().toString(Qt::ISODateWithMs)}});
        }
        CommandContext::print(QJsonDocument(array));
        if (array.isEmpty())
            context.status = ExitStatus::NothingFound;
    });
}

void addRestore(CLI::App &group, CommandContext &context)
{
    struct Arguments {
        std::string file;
        std::string stamp;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = group.add_subcommand(
        "restore",
        help(CliTexts::tr("Go back to an earlier state; the present one becomes the newest version")));
    command->add_option("FILE", arguments->file)->required();
    command->add_option("STAMP", arguments->stamp, "As `library versions` names it")->required();
    setBody(command, context, Needs::Core, [&context, arguments] {
        const auto path = existingPath(context, arguments->file);
        if (!path)
            return;
        const QString stamp = QString::fromStdString(arguments->stamp);
        const FileHistory history(context.library(), *path);
        const auto versions = history.versions();
        const auto found = std::find_if(versions.begin(), versions.end(), [&](const LibraryVersion &version) {
            return stampOf(version) == stamp;
        });
        const QString name = QFileInfo(*path).fileName();
        if (found == versions.end())
            return context.fail(
                {Error::Kind::NotFound, CliTexts::tr("%1 has no version %2.").arg(name, stamp), {}});
        if (!history.restore(*found, QDateTime::currentDateTime()))
            return context.fail(
                {Error::Kind::Failed, CliTexts::tr("%1 could not be restored.").arg(name), {}});
        CommandContext::print(*path);
    });
}

void addDuplicates(CLI::App &group, CommandContext &context)
{
    CLI::App *command = group.add_subcommand(
        "duplicates",
        help(CliTexts::tr(
            "Groups of look-alike images, each newest first: one JSON array of arrays of paths")));
    setBody(command, context, Needs::Core, [&context] {
        auto groups =
            Duplicates::scan(context.library().items(), Duplicates::cacheFile(*context.platform().paths),
                             TerminalProgress(CliTexts::tr("Comparing")));
        if (!groups)
            return context.fail(groups.error());
        Duplicates::sortNewestFirst(*groups);
        QJsonArray array;
        for (const QStringList &paths : *groups)
            array.append(QJsonArray::fromStringList(paths));
        CommandContext::print(QJsonDocument(array));
        if (array.isEmpty())
            context.status = ExitStatus::NothingFound;
    });
}

void addAutoDelete(CLI::App &group, CommandContext &context)
{
    const auto days = std::make_shared<int>(0);
    CLI::App *command = group.add_subcommand(
        "autodelete",
        help(CliTexts::tr(
            "Move captures to the Trash that are older than so many days; favorites and what is in a "
            "collection stay. Prints their number")));
    command->add_option("DAYS", *days)->required()->check(CLI::Range(1, 36500));
    setBody(command, context, Needs::Core, [&context, days] {
        CommandContext::print(
            QString::number(autoDelete(context.library(), *days, QDateTime::currentDateTime())));
    });
}

} // namespace

void addLibraryUpkeepCommands(CLI::App &library, CommandContext &context)
{
    addFavorite(library, context);
    addCollection(library, context);
    addVersions(library, context);
    addRestore(library, context);
    addDuplicates(library, context);
    addAutoDelete(library, context);
}
