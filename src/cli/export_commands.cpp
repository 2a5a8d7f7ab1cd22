#include "base/read_file.h"
#include "cli/choice.h"
#include "cli/command.h"
#include "cli/library_files.h"
#include "cli/pictures.h"
#include "cli/terminal_progress.h"
#include "cli/texts.h"
#include "document/image_files.h"
#include "library/batch/combiner.h"
#include "library/batch/exporter.h"
#include "library/batch/guide_renderer.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QFileInfo>

namespace {

void addExport(CLI::App &app, CommandContext &context)
{
    struct Arguments {
        std::vector<std::string> files;
        std::string folder;
        int format = static_cast<int>(ExportFormat::Original);
        int longest = 0;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = app.add_subcommand(
        "export", help(CliTexts::tr("Copy files into a folder, converted and scaled if asked")));
    command
        ->add_option("FILE", arguments->files,
                     help(CliTexts::tr("Images and films; films are copied as they are")))
        ->required();
    command
        ->add_option("--to", arguments->folder,
                     help(CliTexts::tr("The folder; it is made if it isn't there")))
        ->type_name("DIR")
        ->required();
    command->add_option("--format", arguments->format, "png, jpg, heic or original")
        ->type_name("FORMAT")
        ->transform(oneOf<ExportFormat>({{"png", ExportFormat::Png},
                                         {"jpg", ExportFormat::Jpg},
                                         {"heic", ExportFormat::Heic},
                                         {"original", ExportFormat::Original}}));
    command
        ->add_option("--max", arguments->longest,
                     help(CliTexts::tr("The most pixels of the longer edge; nothing is enlarged")))
        ->type_name("N")
        ->check(CLI::PositiveNumber);
    setBody(command, context, Needs::Core, [&context, arguments] {
        const QString folder = absolutePath(arguments->folder);
        if (!QDir().mkpath(folder))
            return context.fail(
                {Error::Kind::Failed, CliTexts::tr("The folder %1 could not be made.").arg(folder), {}});
        const auto outcome = Exporter::exportFiles(
            pathsOf(context, arguments->files), folder, static_cast<ExportFormat>(arguments->format),
            arguments->longest > 0 ? std::optional(arguments->longest) : std::nullopt,
            TerminalProgress(CliTexts::tr("Exporting")));
        for (const QString &path : outcome.paths)
            CommandContext::print(path);
        for (const Error &failure : outcome.failures)
            context.fail(failure);
        if (outcome.wasCancelled)
            context.fail(cancelled().error());
    });
}

void addPdf(CLI::App &app, CommandContext &context)
{
    enum class Captions { None, Names };
    struct Arguments {
        std::vector<std::string> images;
        std::string output;
        std::string title;
        int captions = static_cast<int>(Captions::None);
        int page = static_cast<int>(Exporter::PageSize::Fit);
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command =
        app.add_subcommand("pdf", help(CliTexts::tr("Make a PDF with a page for each image")));
    command->add_option("IMAGE", arguments->images)->required();
    command->add_option("--output", arguments->output)->type_name("FILE")->required();
    command->add_option("--title", arguments->title, help(CliTexts::tr("Stands on the first page")));
    command->add_option("--captions", arguments->captions, "none or names")
        ->type_name("WHICH")
        ->transform(oneOf<Captions>({{"none", Captions::None}, {"names", Captions::Names}}));
    command->add_option("--page", arguments->page, "fit, letter or a4")
        ->type_name("SIZE")
        ->transform(oneOf<Exporter::PageSize>({{"fit", Exporter::PageSize::Fit},
                                               {"letter", Exporter::PageSize::Letter},
                                               {"a4", Exporter::PageSize::A4}}));
    setBody(command, context, Needs::Fonts, [&context, arguments] {
        QList<Exporter::PdfPage> pages;
        for (const QString &path : pathsOf(context, arguments->images)) {
            const bool isNamed = static_cast<Captions>(arguments->captions) == Captions::Names;
            pages.append(
                Exporter::pageOfFile(path, isNamed ? QFileInfo(path).completeBaseName() : QString()));
        }
        const QString output = absolutePath(arguments->output);
        const auto written = Exporter::pdf(pages, QString::fromStdString(arguments->title),
                                           static_cast<Exporter::PageSize>(arguments->page), output,
                                           TerminalProgress(CliTexts::tr("Writing pages")));
        if (written)
            CommandContext::print(output);
        else
            context.fail(written.error());
    });
}

// All of the pictures, or the failure that the user was told.
std::optional<QList<QImage>> readAll(CommandContext &context, const std::vector<std::string> &words)
{
    QList<QImage> images;
    for (const QString &path : pathsOf(context, words)) {
        auto image = ImageFiles::read(path);
        if (!image) {
            context.fail(image.error(), path);
            return std::nullopt;
        }
        images.append(*std::move(image));
    }
    return images;
}

void writeResult(CommandContext &context, const std::optional<QImage> &image, const std::string &word)
{
    if (!image)
        return context.fail({Error::Kind::Failed,
                             CliTexts::tr("The picture would be too large or too small to be made."),
                             {}});
    if (const auto output = Pictures::write(context, *image, word))
        CommandContext::print(*output);
}

void addCombine(CLI::App &app, CommandContext &context)
{
    enum class Background { White, Dark, Transparent };
    struct Arguments {
        std::vector<std::string> images;
        int layout = static_cast<int>(Combiner::Layout::Horizontal);
        double spacing = 40;
        int background = static_cast<int>(Background::White);
        std::string output;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = app.add_subcommand("combine", help(CliTexts::tr("Make one picture of several")));
    command->add_option("IMAGE", arguments->images)->required();
    command->add_option("--layout", arguments->layout, "horizontal, vertical or grid")
        ->type_name("LAYOUT")
        ->required()
        ->transform(oneOf<Combiner::Layout>({{"horizontal", Combiner::Layout::Horizontal},
                                             {"vertical", Combiner::Layout::Vertical},
                                             {"grid", Combiner::Layout::Grid}}));
    command
        ->add_option("--spacing", arguments->spacing,
                     help(CliTexts::tr("Pixels between and around the pictures")))
        ->type_name("N")
        ->check(CLI::Range(0.0, 2000.0));
    command->add_option("--background", arguments->background, "white, dark or transparent")
        ->type_name("COLOR")
        ->transform(oneOf<Background>({{"white", Background::White},
                                       {"dark", Background::Dark},
                                       {"transparent", Background::Transparent}}));
    Pictures::addOutput(command, arguments->output, help(CliTexts::tr("Its extension says the format")))
        ->required();
    setBody(command, context, Needs::Fonts, [&context, arguments] {
        const auto images = readAll(context, arguments->images);
        if (!images)
            return;
        std::optional<QColor> background;
        switch (static_cast<Background>(arguments->background)) {
        case Background::White:
            background = Combiner::white();
            break;
        case Background::Dark:
            background = Combiner::dark();
            break;
        case Background::Transparent:
            break;
        }
        writeResult(context,
                    Combiner::combine(*images, static_cast<Combiner::Layout>(arguments->layout),
                                      arguments->spacing, background),
                    arguments->output);
    });
}

// One caption a line, in the order of the pictures; missing ones are empty.
Result<QStringList> captionsIn(const std::string &word)
{
    if (word.empty())
        return QStringList();
    constexpr qint64 kMostBytes = 4 << 20;
    const auto bytes = ReadFile::whole(absolutePath(word), kMostBytes);
    if (!bytes)
        return std::unexpected(bytes.error());
    QStringList captions = QString::fromUtf8(*bytes).split(QLatin1Char('\n'));
    for (QString &caption : captions)
        caption = caption.trimmed();
    return captions;
}

void addGuideImage(CLI::App &app, CommandContext &context)
{
    struct Arguments {
        std::vector<std::string> images;
        std::string title;
        std::string captions;
        std::string output;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command =
        app.add_subcommand("guide-image", help(CliTexts::tr("Make the tall picture of a numbered guide")));
    command->add_option("IMAGE", arguments->images, help(CliTexts::tr("The steps, in order")))->required();
    command->add_option("--title", arguments->title, help(CliTexts::tr("Stands in a band at the top")));
    command
        ->add_option("--captions", arguments->captions,
                     help(CliTexts::tr("A text file with a caption a line")))
        ->type_name("FILE");
    Pictures::addOutput(command, arguments->output, help(CliTexts::tr("Its extension says the format")))
        ->required();
    setBody(command, context, Needs::Fonts, [&context, arguments] {
        const auto captions = captionsIn(arguments->captions);
        if (!captions)
            return context.fail(captions.error());
        const auto images = readAll(context, arguments->images);
        if (!images)
            return;
        QList<GuideRenderer::Step> steps;
        for (qsizetype i = 0; i < images->size(); ++i)
            steps.append({images->at(i), captions->value(i)});
        writeResult(context, GuideRenderer::render(QString::fromStdString(arguments->title), steps),
                    arguments->output);
    });
}

} // namespace

void addExportCommands(CLI::App &app, CommandContext &context)
{
    addExport(app, context);
    addPdf(app, context);
    addCombine(app, context);
    addGuideImage(app, context);
}
