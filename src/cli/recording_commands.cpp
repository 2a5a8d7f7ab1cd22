#include "cli/command.h"
#include "cli/interrupts.h"
#include "cli/rectangle.h"
#include "cli/texts.h"

#include "base/async.h"
#include "base/atomic_file.h"
#include "platform/paths.h"
#include "platform/permissions.h"
#include "platform/platform.h"
#include "platform/screens.h"
#include "recording/captions.h"
#include "recording/external_speech.h"
#include "recording/movie_export.h"
#include "recording/recording_place.h"
#include "recording/recording_recovery.h"
#include "recording/screen_recorder.h"
#include "settings/app_settings.h"

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QFileInfo>
#include <cstdio>
#include <unistd.h>

namespace {

struct RecordCall {
    std::string region;
    double seconds = 0; // 0: until an interrupt
    bool systemAudio = false;
    bool microphone = false;
    bool cursor = false;
    std::string output;
};

struct Place {
    Screen screen;
    QRectF rect; // in points from the screen's top left
};

std::optional<Place> placeOf(CommandContext &context, const RecordCall &call)
{
    const QList<Screen> screens = context.platform().screens->screens();
    if (screens.isEmpty()) {
        context.fail({Error::Kind::Unavailable, CliTexts::tr("There is no display to record."), {}});
        return std::nullopt;
    }
    if (call.region.empty()) {
        const auto primary = std::ranges::find(screens, true, &Screen::isPrimary);
        const Screen &screen = primary == screens.end() ? screens.first() : *primary;
        return Place{screen, QRectF(QPointF(), screen.frame().size())};
    }
    const QRectF region = *parseRectangle(call.region);
    const Screen &screen = *screenAt(screens, region.center());
    if (!region.intersects(screen.frame())) {
        context.fail({Error::Kind::NotFound, CliTexts::tr("No display shows anything of that region."), {}});
        context.status = ExitStatus::NothingFound;
        return std::nullopt;
    }
    return Place{screen, region.translated(-screen.frame().topLeft())};
}

void tellRecovered(CommandContext &context)
{
    const auto outcome = RecordingRecovery::run(RecordingPlace::notesIn(context.platform().paths->state()),
                                                *context.platform().movies);
    for (const QString &film : outcome.films)
        CommandContext::warn(CliTexts::tr("A recording that broke off is kept as %1.").arg(film));
}

void record(CommandContext &context, const RecordCall &call)
{
    Platform &platform = context.platform();
    const auto place = placeOf(context, call);
    if (!place)
        return;
    tellRecovered(context);
    ScreenRecorder recorder({*platform.films, *platform.soundSources, *platform.movies, *platform.permissions,
                             context.library(), RecordingPlace::notesIn(platform.paths->state())});
    if (!call.output.empty())
        recorder.setTarget(absolutePath(call.output));
    CaptureOptions options;
    options.cursor = call.cursor;
    options.systemAudio = call.systemAudio;
    options.microphone = call.microphone;

    const Interrupts interrupts([&recorder] { recorder.stop(); });
    QObject::connect(&recorder, &ScreenRecorder::stateChanged, &recorder, [&](ScreenRecorder::State state) {
        if (state != ScreenRecorder::State::Recording)
            return;
        for (const Error &refused : recorder.refusedSounds())
            CommandContext::warn(
                CliTexts::tr("There is a sound missing in the film: %1").arg(refused.message));
        if (call.seconds > 0) {
            // The film began a moment ago, with its first frame.
            const double left = call.seconds - recorder.elapsed();
            QTimer::singleShot(std::max(int(left * 1000), 0), Qt::PreciseTimer, &recorder,
                               &ScreenRecorder::stop);
        }
    });
    recorder.start(place->screen, place->rect, options,
                   [&](const std::optional<QString> &path, const std::optional<Error> &error) {
                       if (error)
                           context.fail(*error);
                       if (path)
                           CommandContext::print(*path);
                       QCoreApplication::quit();
                   });
    QCoreApplication::exec();
}

void addRecord(CLI::App &app, CommandContext &context)
{
    const auto call = std::make_shared<RecordCall>();
    CLI::App *command = app.add_subcommand(
        "record",
        help(CliTexts::tr("Record the screen or a region until an interrupt, or for some seconds")));
    command->add_option("REGION", call->region, help(CliTexts::tr("X,Y,WxH in points from the top left")))
        ->check(isRectangle);
    command->add_option("--seconds", call->seconds, help(CliTexts::tr("Stop after so many seconds")))
        ->type_name("N")
        ->check(CLI::Range(0.1, 86400.0));
    command->add_flag("--system-audio", call->systemAudio, help(CliTexts::tr("Also record what is played")));
    command->add_flag("--microphone", call->microphone, help(CliTexts::tr("Also record the microphone")));
    command->add_flag("--cursor", call->cursor, help(CliTexts::tr("Include the pointer")));
    command
        ->add_option("--output", call->output,
                     help(CliTexts::tr("Write this .mov file instead of a new one in the Library")))
        ->type_name("FILE")
        ->check([](const std::string &file) {
            return QString::fromStdString(file).endsWith(QLatin1String(".mov"), Qt::CaseInsensitive)
                       ? std::string()
                       : "\"" + file + "\" must end in .mov: the commands mp4 and gif make other films of it";
        });
    setBody(command, context, Needs::Core, [&context, call] { record(context, *call); });
}

struct ExportCall {
    std::string movie;
    std::string output;
    double from = 0;
    double to = -1; // below 0: the film's end
};

using ExportWork = std::function<Result<void>(Movies &, const QString &, const QString &, const MoviePart &,
                                              WorkProgress &)>;

// Runs the work and tells its progress on a terminal. An interrupt ends it, with the old file still there.
Result<void> waitWithProgress(const std::function<Result<void>(WorkProgress &)> &work)
{
    const auto progress = std::make_shared<WorkProgress>();
    const Interrupts interrupts([progress] { progress->isCancelled = true; });
    Result<void> outcome;
    QObject owner;
    const bool isSeen = isatty(STDERR_FILENO) != 0;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, &owner,
                     [progress] { std::fprintf(stderr, "\r%3d %%", int(progress->done * 100)); });
    if (isSeen)
        ticks.start(200);
    whenDone(runInBackground([work, progress] { return work(*progress); }), &owner, [&](Result<void> result) {
        outcome = std::move(result);
        QCoreApplication::quit();
    });
    QCoreApplication::exec();
    if (isSeen)
        std::fputs("\r      \r", stderr);
    return outcome;
}

void exportMovie(CommandContext &context, const ExportCall &call, const ExportWork &work)
{
    Movies &movies = *context.platform().movies;
    const QString movie = absolutePath(call.movie);
    const QString target = absolutePath(call.output);
    const QFileInfo existing(target);
    if (existing.exists() && existing.canonicalFilePath() == QFileInfo(movie).canonicalFilePath())
        return context.wrongCall(CliTexts::tr("The film itself can't be the file that is written."));
    const MoviePart part{call.from, call.to < 0 ? std::nullopt : std::optional(call.to)};
    const Result<void> made =
        waitWithProgress([&](WorkProgress &progress) { return work(movies, movie, target, part, progress); });
    if (!made && made.error().kind == Error::Kind::Invalid)
        return context.wrongCall(made.error().message);
    if (!made)
        return context.fail(made.error());
    CommandContext::print(target);
}

void addExport(CLI::App &app, CommandContext &context, const char *name, const std::string &description,
               const std::string &fileDescription, const ExportWork &work)
{
    const auto call = std::make_shared<ExportCall>();
    CLI::App *command = app.add_subcommand(name, description);
    command->add_option("MOVIE", call->movie, help(CliTexts::tr("The film")))->required();
    command->add_option("--output", call->output, fileDescription)->type_name("FILE")->required();
    command->add_option("--from", call->from, help(CliTexts::tr("Leave out what comes before this second")))
        ->type_name("S")
        ->check(CLI::NonNegativeNumber);
    command->add_option("--to", call->to, help(CliTexts::tr("Leave out what comes after this second")))
        ->type_name("S")
        ->check(CLI::NonNegativeNumber);
    setBody(command, context, Needs::Core, [&context, call, work] { exportMovie(context, *call, work); });
}

void captions(CommandContext &context, const std::string &movieWord, const std::string &output)
{
    Platform &platform = context.platform();
    const QString movie = absolutePath(movieWord);
    Movies &movies = *platform.movies;
    ExternalSpeech external(ExternalSpeech::choiceIn(context.settings().defaults()));
    SpeechEngine &speech = external.isChosen() ? static_cast<SpeechEngine &>(external) : *platform.speech;
    QList<CaptionCue> cues;
    const Result<void> made = waitWithProgress([&](WorkProgress &progress) -> Result<void> {
        auto found = Captions::captions(movies, speech, movie, progress);
        if (!found)
            return std::unexpected(found.error());
        cues = *found;
        return {};
    });
    if (!made) {
        context.fail(made.error());
        if (made.error() == captionError(CaptionError::NoSpeech))
            context.status = ExitStatus::NothingFound;
        return;
    }
    const QString text = Captions::srt(cues);
    if (output.empty())
        return CommandContext::print(text.chopped(1)); // it brings its last line feed
    const QString target = absolutePath(output);
    if (const auto written = AtomicFile::write(target, text.toUtf8()); !written)
        return context.fail(written.error());
    CommandContext::print(target);
}

void addCaptions(CLI::App &app, CommandContext &context)
{
    const auto movie = std::make_shared<std::string>();
    const auto output = std::make_shared<std::string>();
    CLI::App *command =
        app.add_subcommand("captions", help(CliTexts::tr("Turn what is spoken in a film into subtitles")));
    command->add_option("MOVIE", *movie, help(CliTexts::tr("The film")))->required();
    command
        ->add_option("--output", *output, help(CliTexts::tr("Write this SubRip file instead of printing it")))
        ->type_name("FILE.srt");
    setBody(command, context, Needs::Core, [&context, movie, output] { captions(context, *movie, *output); });
}

} // namespace

void addRecordingCommands(CLI::App &app, CommandContext &context)
{
    addRecord(app, context);
    addExport(app, context, "gif", help(CliTexts::tr("Make an animated GIF of a film, of a minute at most")),
              help(CliTexts::tr("The GIF to write")), &GifExport::run);
    addExport(app, context, "mp4", help(CliTexts::tr("Make an MP4 of a film or a part of it")),
              help(CliTexts::tr("The MP4 to write")), &MovieExport::mp4);
    addCaptions(app, context);
}
