#include "cli/command.h"

#include "capture/screen_capturer.h"
#include "cli/pictures.h"
#include "cli/rectangle.h"
#include "cli/texts.h"
#include "cli/window_owner.h"
#include "document/image_files.h"
#include "library/clipboard.h"
#include "library/clipboard_owner.h"
#include "library/library.h"
#include "platform/platform.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"
#include "platform/workspace.h"

#include <CLI/CLI.hpp>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QThread>

namespace {

// What the three kinds of capture share.
struct CaptureArguments {
    bool cursor = false;
    bool clipboard = false;
    double delay = 0;
    std::string output;

    Pointer pointer() const { return cursor ? Pointer::Shown : Pointer::Hidden; }
};

void addShared(CLI::App *command, CaptureArguments &arguments)
{
    command->add_flag("--cursor", arguments.cursor, help(CliTexts::tr("Include the pointer")));
    command->add_option("--delay", arguments.delay, help(CliTexts::tr("Wait this many seconds first")))
        ->type_name("S")
        ->check(CLI::Range(0.0, 3600.0));
    command->add_flag("--clipboard", arguments.clipboard,
                      help(CliTexts::tr("Also copy it to the clipboard")));
    Pictures::addOutput(command, arguments.output,
                        help(CliTexts::tr("Write this file instead of a new one in the Library")));
}

// `source` is the application that the picture shows.
void deliver(CommandContext &context, const QImage &image, const CaptureArguments &arguments,
             const QString &source)
{
    QString path;
    if (!arguments.output.empty()) {
        const auto written = Pictures::write(context, image, arguments.output);
        if (!written)
            return;
        path = *written;
    } else {
        Library &library = context.library();
        const auto saved = library.saveInBackground(image).result();
        if (!saved)
            return context.fail(saved.error());
        path = *saved;
        if (!source.isEmpty())
            library.catalog().setSource(path, source);
    }
    if (arguments.clipboard) {
        if (const auto owned = waitFor(ClipboardOwner::start(Clipboard::encoded(image))); !owned)
            context.fail(owned.error());
    }
    CommandContext::print(path);
}

// Takes the picture after the delay, of a window or of what is in front, and delivers it.
void capture(CommandContext &context, const CaptureArguments &arguments,
             const std::function<Result<QImage>(ScreenCapturer &)> &take,
             const std::optional<quint32> &window = {})
{
    if (arguments.delay > 0)
        QThread::usleep(static_cast<unsigned long>(arguments.delay * 1e6));
    ScreenCapturer capturer(*context.platform().screens, *context.platform().pictures);
    QString source;
    if (arguments.output.empty()) {
        if (window)
            source = WindowOwner::of(context, *window);
        else if (const auto application = context.platform().workspace->frontmost())
            source = application->name;
    }
    const auto image = take(capturer);
    if (!image) {
        context.fail(image.error());
        if (image.error().kind == Error::Kind::NotFound)
            context.status = ExitStatus::NothingFound;
        return;
    }
    deliver(context, *image, arguments, source);
}

Error noDisplays(CommandContext &context)
{
    return ScreenCapturer(*context.platform().screens, *context.platform().pictures).noDisplays();
}

// By its id, or counted from 0; without a number the display under the pointer.
Result<Screen> chosenScreen(CommandContext &context, const std::optional<quint32> &number)
{
    const QList<Screen> screens = context.platform().screens->screens();
    if (screens.isEmpty())
        return std::unexpected(noDisplays(context));
    if (!number) {
        if (screens.size() == 1)
            return screens.first();
        return *screenAt(screens, context.platform().pointer->position());
    }
    for (const Screen &screen : screens) {
        if (screen.id == *number)
            return screen;
    }
    if (*number < static_cast<quint32>(screens.size()))
        return screens[*number];
    return fail(Error::Kind::NotFound, CliTexts::tr("There is no display %1.").arg(*number));
}

void addScreen(CLI::App *group, CommandContext &context)
{
    struct Arguments : CaptureArguments {
        std::optional<quint32> display;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = group->add_subcommand("screen", help(CliTexts::tr("A whole display")));
    command
        ->add_option("--display", arguments->display,
                     help(CliTexts::tr("Its id, as `displays` lists it; else the one under the pointer")))
        ->type_name("N");
    addShared(command, *arguments);
    setBody(command, context, Needs::Core, [&context, arguments] {
        capture(context, *arguments, [&](ScreenCapturer &) -> Result<QImage> {
            const auto screen = chosenScreen(context, arguments->display);
            if (!screen)
                return std::unexpected(screen.error());
            return context.platform().pictures->display(*screen, arguments->pointer()).result();
        });
    });
}

void addRegion(CLI::App *group, CommandContext &context)
{
    struct Arguments : CaptureArguments {
        std::string region;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command = group->add_subcommand("region", help(CliTexts::tr("A part of the desktop")));
    command->add_option("REGION", arguments->region, "X,Y,WxH in points from the top left")
        ->required()
        ->check(isRectangle);
    addShared(command, *arguments);
    setBody(command, context, Needs::Core, [&context, arguments] {
        capture(context, *arguments, [&](ScreenCapturer &capturer) {
            return waitFor(capturer.captureArea(*parseRectangle(arguments->region), arguments->pointer()));
        });
    });
}

void addWindow(CLI::App *group, CommandContext &context)
{
    struct Arguments : CaptureArguments {
        quint32 window = 0;
        bool clientArea = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App *command =
        group->add_subcommand("window", help(CliTexts::tr("One window alone, also when it is covered")));
    command->add_option("ID", arguments->window, help(CliTexts::tr("Its id, as `windows` lists it")))
        ->required();
    command->add_flag("--client-area", arguments->clientArea,
                      help(CliTexts::tr("Without its title bar and frame")));
    addShared(command, *arguments);
    setBody(command, context, Needs::Core, [&context, arguments] {
        capture(
            context, *arguments,
            [&](ScreenCapturer &capturer) {
                const WindowPart part = arguments->clientArea ? WindowPart::ClientArea : WindowPart::Framed;
                return waitFor(capturer.captureWindow(arguments->window, arguments->pointer(), part));
            },
            arguments->window);
    });
}

QString toText(const QRectF &frame)
{
    return QStringLiteral("%1,%2,%3x%4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
}

void addDisplays(CLI::App &app, CommandContext &context)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App *command =
        app.add_subcommand("displays", help(CliTexts::tr("List the displays that can be captured")));
    command->add_flag("--json", *json, help(CliTexts::tr("One JSON array")));
    setBody(command, context, Needs::Core, [&context, json] {
        const QList<Screen> screens = context.platform().screens->screens();
        if (screens.isEmpty())
            return context.fail(noDisplays(context));
        QJsonArray array;
        for (const Screen &screen : screens) {
            array.append(QJsonObject{{QStringLiteral("id"), qint64(screen.id)},
                                     {QStringLiteral("frame"), jsonOf(screen.frame())},
                                     {QStringLiteral("scale"), screen.scale}});
            if (!*json)
                CommandContext::print(QStringLiteral("%1\t%2\t@%3x\t")
                                          .arg(screen.id)
                                          .arg(toText(screen.frame()))
                                          .arg(screen.scale) +
                                      screen.name);
        }
        if (*json)
            CommandContext::print(QJsonDocument(array));
    });
}

void addWindows(CLI::App &app, CommandContext &context)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App *command = app.add_subcommand(
        "windows", help(CliTexts::tr("List the windows that can be captured, front to back")));
    command->add_flag("--json", *json, help(CliTexts::tr("One JSON array")));
    setBody(command, context, Needs::Core, [&context, json] {
        if (context.platform().screens->screens().isEmpty())
            return context.fail(noDisplays(context));
        const ScreenCapturer capturer(*context.platform().screens, *context.platform().pictures);
        QJsonArray array;
        for (const WindowInfo &window : capturer.onScreenWindows()) {
            array.append(QJsonObject{{QStringLiteral("id"), qint64(window.id)},
                                     {QStringLiteral("frame"), jsonOf(window.frame)},
                                     {QStringLiteral("owner"), window.owner},
                                     {QStringLiteral("title"), window.title}});
            if (!*json)
                CommandContext::print(QStringLiteral("%1\t%2\t").arg(window.id).arg(toText(window.frame)) +
                                      window.owner + '\t' + window.title.simplified());
        }
        if (*json)
            CommandContext::print(QJsonDocument(array));
    });
}

} // namespace

void addCaptureCommands(CLI::App &app, CommandContext &context)
{
    CLI::App *group = app.add_subcommand("capture", help(CliTexts::tr("Take a picture of the screen")));
    group->require_subcommand(1);
    addScreen(group, context);
    addRegion(group, context);
    addWindow(group, context);
    addDisplays(app, context);
    addWindows(app, context);
    addClipboardCommand(app, context);
}
