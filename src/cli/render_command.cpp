#include "cli/command.h"
#include "cli/pictures.h"
#include "cli/texts.h"

#include "document/editor_document.h"
#include "document/image_files.h"
#include "document/project_file.h"

#include <CLI/CLI.hpp>

namespace {

struct Call {
    std::string subject; // a project's directory, or a picture when `project` names a file
    std::string project;
    std::string output;
    bool flattened = false;
};

Result<ProjectFile::Contents> contents(const Call &call)
{
    const QString subject = absolutePath(call.subject);
    if (call.project.empty())
        return ProjectFile::read(subject);
    auto base = ImageFiles::read(subject);
    if (!base)
        return std::unexpected(base.error());
    auto project = ProjectFile::readDescription(absolutePath(call.project));
    if (!project)
        return std::unexpected(project.error());
    return ProjectFile::Contents{*std::move(base), *std::move(project)};
}

void render(CommandContext &context, const Call &call)
{
    const auto read = contents(call);
    if (!read)
        return context.fail(read.error(), absolutePath(call.subject));
    const QList<Annotation> objects = read->project.objects();
    if (const QString unshown = ProjectFile::unshownPictures(objects); !unshown.isEmpty())
        CommandContext::warn(unshown);
    const EditorDocument document({read->base, objects, read->project.effects(), {}});
    const QImage picture = call.flattened ? document.flattened() : document.exported();
    if (const auto path = Pictures::write(context, picture, call.output))
        CommandContext::print(*path);
}

} // namespace

void addRenderCommand(CLI::App &app, CommandContext &context)
{
    const auto call = std::make_shared<Call>();
    CLI::App *command =
        app.add_subcommand("render", help(CliTexts::tr("Draw a project's objects and effects")));
    command
        ->add_option(
            "subject", call->subject,
            help(CliTexts::tr("The project's directory; or, with --project, the picture under the objects")))
        ->type_name("PROJECT_DIR|IMAGE")
        ->required();
    command
        ->add_option("--project", call->project,
                     help(CliTexts::tr("The description of objects and effects (project.json)")))
        ->type_name("FILE");
    Pictures::addOutput(command, call->output,
                        help(CliTexts::tr("Where the picture goes; its extension says the format")))
        ->required();
    command->add_flag("--flattened", call->flattened,
                      help(CliTexts::tr("Leave out border, shadow, corners and backdrop")));
    setBody(command, context, Needs::Fonts, [&context, call] { render(context, *call); });
}
