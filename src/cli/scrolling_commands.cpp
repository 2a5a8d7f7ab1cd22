#include "cli/command.h"

#include "base/async.h"
#include "capture/frame_stitcher.h"
#include "capture/screen_capturer.h"
#include "capture/scrolling_session.h"
#include "capture/scrolling_words.h"
#include "cli/pictures.h"
#include "cli/rectangle.h"
#include "cli/texts.h"
#include "cli/window_owner.h"
#include "document/image_files.h"
#include "library/library.h"
#include "platform/platform.h"
#include "platform/screen_pictures.h"
#include "platform/screens.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>

namespace {

QJsonArray toJson(const QList<FrameStitcher::Step> &steps)
{
    QJsonArray array;
    for (const FrameStitcher::Step &step : steps)
        array.append(
            QJsonObject{{QStringLiteral("footer"), step.footer}, {QStringLiteral("shift"), step.shift}});
    return array;
}

using Reason = ScrollingCaptureSession::Reason;

QString nameOf(Reason reason)
{
    switch (reason) {
    case Reason::Running:
    case Reason::Stopped:
    case Reason::Cancelled:
        return QStringLiteral("stopped");
    case Reason::End:
        return QStringLiteral("end");
    case Reason::Limit:
        return QStringLiteral("limit");
    case Reason::NothingMoved:
        return QStringLiteral("nothing moved");
    case Reason::LostThread:
        return QStringLiteral("lost the thread");
    case Reason::WindowGone:
        return QStringLiteral("window closed");
    }
    return {};
}

// Pairs of the first row and the row after the last, of the tall picture.
QJsonArray unsureRows(const QList<FrameStitcher::Step> &steps, int frameHeight)
{
    QJsonArray array;
    int end = frameHeight;
    for (const FrameStitcher::Step &step : steps) {
        if (!step.sure)
            array.append(QJsonArray{end - step.footer, end - step.footer + step.shift});
        end += step.shift;
    }
    return array;
}

struct StitchCall {
    std::vector<std::string> frames;
    std::string output;
    bool json = false;
};

// The next frame is decoded while the one before it is compared.
bool addFrames(CommandContext &context, FrameStitcher &stitcher, const std::vector<std::string> &files)
{
    const auto read = [&files](size_t index) {
        return runInBackground([path = absolutePath(files[index])] { return ImageFiles::read(path); });
    };
    QFuture<Result<QImage>> next = read(0);
    for (size_t i = 0; i < files.size(); ++i) {
        const Result<QImage> frame = next.takeResult();
        if (!frame) {
            context.fail(frame.error(), absolutePath(files[i]));
            return false;
        }
        if (i + 1 < files.size())
            next = read(i + 1);
        if (i > 0 && frame->size() != stitcher.frames().first().pixels().size()) {
            CommandContext::warn(CliTexts::tr("%1 is left out: it has another size than the first frame.")
                                     .arg(absolutePath(files[i])));
            continue;
        }
        stitcher.add(*frame);
    }
    return true;
}

void stitch(CommandContext &context, const StitchCall &call)
{
    FrameStitcher stitcher;
    if (!addFrames(context, stitcher, call.frames))
        return;
    const std::optional<QImage> picture = stitcher.result();
    if (!picture)
        return context.fail(
            {Error::Kind::Failed, CliTexts::tr("The whole picture doesn't fit in memory."), {}});
    const auto output = Pictures::write(context, *picture, call.output);
    if (!output)
        return;
    if (!call.json)
        return CommandContext::print(*output);
    CommandContext::print(QJsonDocument(
        QJsonObject{{QStringLiteral("accepted"), stitcher.frames().size()},
                    {QStringLiteral("steps"), toJson(stitcher.steps())},
                    {QStringLiteral("size"), QJsonArray{picture->width(), picture->height()}}}));
}

void addStitch(CLI::App &app, CommandContext &context)
{
    const auto call = std::make_shared<StitchCall>();
    CLI::App *command = app.add_subcommand(
        "stitch", help(CliTexts::tr("Join the frames of something that scrolled into one picture")));
    command
        ->add_option("FRAME", call->frames,
                     help(CliTexts::tr("Pictures of one size, in the order they were taken")))
        ->required();
    Pictures::addOutput(command, call->output, help(CliTexts::tr("The picture to write")))->required();
    command->add_flag("--json", call->json,
                      help(CliTexts::tr("Print how many frames were used, each step and the size")));
    setBody(command, context, Needs::Core, [&context, call] { stitch(context, *call); });
}

struct ScrollCall {
    std::string region;
    int maxFrames = ScrollingCaptureSession::kMostFrames;
    std::string output;
    bool json = false;
};

// What the user should know of the picture. False where there is nothing to keep.
bool tell(CommandContext &context, const ScrollCall &call, const ScrollingCaptureSession &session)
{
    if (const auto why = ScrollingWords::whyNothing(session)) {
        const bool hasScrolled = session.reason() != Reason::NothingMoved;
        context.fail({Error::Kind::Failed, *why, {}});
        if (!hasScrolled)
            context.status = ExitStatus::NothingFound;
        return !hasScrolled && !call.output.empty(); // asked for by name
    }
    for (const QString &doubt : ScrollingWords::doubts(session))
        CommandContext::warn(doubt);
    return true;
}

// `source` is the application that the picture shows.
void deliver(CommandContext &context, const ScrollCall &call, const ScrollingCaptureSession &session,
             const QImage &picture, const QString &source)
{
    int shifts = 0;
    for (const FrameStitcher::Step &step : session.steps())
        shifts += step.shift;
    const QJsonArray unsure = unsureRows(session.steps(), picture.height() - shifts);
    if (!tell(context, call, session))
        return;
    QString path;
    if (!call.output.empty()) {
        const auto written = Pictures::write(context, picture, call.output);
        if (!written)
            return;
        path = *written;
    } else {
        const auto saved = context.library().saveInBackground(picture).result();
        if (!saved)
            return context.fail(saved.error());
        path = *saved;
        if (!source.isEmpty())
            context.library().catalog().setSource(path, source);
    }
    if (!call.json)
        return CommandContext::print(path);
    CommandContext::print(QJsonDocument(QJsonObject{{QStringLiteral("path"), path},
                                                    {QStringLiteral("frames"), session.frames()},
                                                    {QStringLiteral("reason"), nameOf(session.reason())},
                                                    {QStringLiteral("unsureRows"), unsure},
                                                    {QStringLiteral("steps"), toJson(session.steps())}}));
}

void scroll(CommandContext &context, const ScrollCall &call)
{
    Platform &platform = context.platform();
    const QRectF region = *parseRectangle(call.region);
    const QList<Screen> screens = platform.screens->screens();
    const Screen *screen = screenAt(screens, region.center());
    if (!screen)
        return context.fail(captureError(CaptureError::NoDisplays));
    const QRectF visible = region.intersected(screen->frame());
    if (visible.isEmpty()) {
        context.fail({Error::Kind::NotFound, CliTexts::tr("No display shows anything of that region."), {}});
        context.status = ExitStatus::NothingFound;
        return;
    }

    ScrollingCaptureSession session(
        {*platform.screens, *platform.pictures, *platform.pointer, *platform.permissions}, *screen,
        visible.translated(-screen->frame().topLeft()));
    session.setMaxFrames(call.maxFrames);
    const QString source = WindowOwner::at(context, visible.center());
    whenDone(session.run(), &session, [&](const Result<std::optional<QImage>> &picture) {
        if (!picture)
            context.fail(picture.error());
        else if (!*picture)
            context.fail({Error::Kind::Failed, CliTexts::tr("The whole picture doesn't fit in memory."), {}});
        else
            deliver(context, call, session, **picture, source);
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
}

void addScroll(CLI::App &app, CommandContext &context)
{
    const auto call = std::make_shared<ScrollCall>();
    CLI::App *command = app.add_subcommand(
        "scroll", help(CliTexts::tr("Scroll a region to its end and join what it showed")));
    command->add_option("REGION", call->region, "X,Y,WxH in points from the top left")
        ->required()
        ->check(isRectangle);
    command->add_option("--max-frames", call->maxFrames, help(CliTexts::tr("Stop after so many frames")))
        ->type_name("N")
        ->check(CLI::Range(1, ScrollingCaptureSession::kMostFrames));
    Pictures::addOutput(command, call->output,
                        help(CliTexts::tr("Write this file instead of a new one in the Library")));
    command->add_flag("--json", call->json,
                      help(CliTexts::tr("Print the path, the number of frames, each step and why it ended")));
    setBody(command, context, Needs::Core, [&context, call] { scroll(context, *call); });
}

} // namespace

void addScrollingCommands(CLI::App &app, CommandContext &context)
{
    addScroll(app, context);
    addStitch(app, context);
}
