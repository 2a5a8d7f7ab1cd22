#include "cli/choice.h"
#include "cli/command.h"
#include "cli/pictures.h"
#include "cli/rectangle.h"
#include "cli/texts.h"

#include "base/file_name.h"
#include "document/pixelation.h"
#include "platform/platform.h"
#include "services/further_kinds.h"
#include "services/redacted_areas.h"
#include "services/text_recognizer.h"
#include "settings/app_settings.h"

#include <CLI/CLI.hpp>
#include <QJsonArray>
#include <QJsonObject>

namespace {

TextRecognizer recognizer(CommandContext &context)
{
    return {*context.platform().text, *context.platform().faces};
}

// Looks for what the settings say is private, without the kinds with these names.
TextRecognizer recognizerWithout(CommandContext &context, const std::vector<std::string> &names)
{
    TextRecognizer reader = recognizer(context);
    QStringList off = context.settings().privateKindsOff();
    for (const std::string &name : names)
        off.append(QString::fromStdString(name));
    reader.setFurtherKinds(SensitiveText::furtherKindsBut(off));
    return reader;
}

// Reads in the named languages alone; in all that are installed when there is none.
TextRecognizer recognizer(CommandContext &context, const std::vector<std::string> &languages)
{
    if (languages.empty())
        return recognizer(context);
    QStringList names;
    for (const std::string &language : languages)
        names.append(QString::fromStdString(language));
    return {*context.platform().text, *context.platform().faces, {names, TextLanguages::Others::Never}};
}

// Of every box that isn't told in pixels.
const QString kCoordinates = QStringLiteral(
    "[x, y, width, height] as fractions of the picture's width and height, origin at the lower left");

QJsonArray jsonOf(QSize size)
{
    return {size.width(), size.height()};
}

QJsonObject jsonOf(const QString &file, QSize size, const QList<RecognizedLine> &lines)
{
    QJsonArray list;
    for (const RecognizedLine &line : lines)
        list.append(QJsonObject{{"text", line.text}, {"box", jsonOf(line.box)}});
    return {{"file", file}, {"size", jsonOf(size)}, {"coordinates", kCoordinates}, {"lines", list}};
}

void text(CommandContext &context, const std::vector<std::string> &files, TextRecognizer reader, bool json)
{
    // Pictures share the cores, so a few are kept under way at once; not all, as each holds its pixels.
    constexpr size_t kAtOnce = 4;
    struct Reading {
        QString file;
        QSize size;
        QFuture<Result<QList<RecognizedLine>>> lines;
    };
    std::vector<Reading> underWay;
    size_t next = 0;
    QJsonArray all;
    bool found = false;
    while (next < files.size() || !underWay.empty()) {
        while (next < files.size() && underWay.size() < kAtOnce) {
            const std::string &file = files[next++];
            if (const auto image = Pictures::read(context, file))
                underWay.push_back({FileName::fromBytes(QByteArray::fromStdString(file)), image->size(),
                                    reader.lines(*image)});
        }
        if (underWay.empty())
            break;
        const auto lines = waitFor(underWay.front().lines);
        const QString file = underWay.front().file;
        const QSize size = underWay.front().size;
        underWay.erase(underWay.begin());
        if (!lines) {
            if (lines.error().kind == Error::Kind::Invalid) // the language isn't there, for any of them
                return context.wrongCall(lines.error().message);
            context.fail(lines.error());
            continue;
        }
        found |= !lines->isEmpty();
        if (json)
            all.append(jsonOf(file, size, *lines));
        else if (!lines->isEmpty())
            CommandContext::print(textOf(*lines));
    }
    if (json)
        CommandContext::print(QJsonDocument(all));
    if (!found && context.status == ExitStatus::Done)
        context.status = ExitStatus::NothingFound;
}

enum class BoxFormat { Array, Described };

void printBoxes(CommandContext &context, const Result<QList<QRectF>> &boxes, QSize size, BoxFormat format)
{
    if (!boxes) {
        context.fail(boxes.error());
        return;
    }
    QJsonArray array;
    for (const QRectF &box : *boxes)
        array.append(jsonOf(box));
    switch (format) {
    case BoxFormat::Array:
        CommandContext::print(QJsonDocument(array));
        break;
    case BoxFormat::Described:
        CommandContext::print(QJsonDocument(
            QJsonObject{{"size", jsonOf(size)}, {"coordinates", kCoordinates}, {"boxes", array}}));
        break;
    }
    if (boxes->isEmpty())
        context.status = ExitStatus::NothingFound;
}

void redact(CommandContext &context, const std::string &file, Redaction::Mode mode, TextRecognizer reader,
            const std::string &output, bool json)
{
    const auto image = Pictures::read(context, file);
    if (!image)
        return;
    const auto rects = waitFor(Redaction::find(reader, *image, mode));
    if (!rects) {
        context.fail(rects.error());
        return;
    }
    if (rects->isEmpty()) {
        // No file: one that hides nothing must not pass for one that does.
        if (json)
            CommandContext::print(QJsonDocument(QJsonObject{{"count", 0}, {"rects", QJsonArray()}}));
        CommandContext::warn(CliTexts::tr("Nothing to redact was found, so nothing was written."));
        context.status = ExitStatus::NothingFound;
        return;
    }
    const auto target = Pictures::write(context, Redaction::hidden(*image, *rects), output);
    if (!target)
        return;
    if (!json) {
        CommandContext::print(*target);
        return;
    }
    QJsonArray array;
    for (const QRectF &rect : *rects)
        array.append(jsonOf(pixelatedPixels(rect, image->size())));
    CommandContext::print(QJsonDocument(QJsonObject{{"count", array.size()}, {"rects", array}}));
}

void addBoxFormat(CLI::App *command, bool &json)
{
    command->footer(
        "Prints [[x, y, width, height], …] as fractions of the picture's width and height, origin at "
        "the lower left.");
    command->add_flag(
        "--json", json,
        help(CliTexts::tr("Print an object that tells the coordinates and the picture's size too")));
}

void addLeft(CLI::App *command, std::vector<std::string> &names)
{
    std::vector<std::string> known;
    for (const SensitiveText::FurtherKind kind : SensitiveText::allFurtherKinds())
        known.push_back(SensitiveText::nameOf(kind).toStdString());
    command
        ->add_option(
            "--leave", names,
            help(CliTexts::tr("A kind of private text to leave as it is, beside those that the settings "
                              "leave; may be given several times")))
        ->type_name("KIND")
        ->allow_extra_args(false)
        ->check(CLI::IsMember(known));
}

} // namespace

void addRecognitionCommands(CLI::App &app, CommandContext &context)
{
    struct Words {
        std::vector<std::string> files;
        std::vector<std::string> languages;
        std::vector<std::string> left;
        std::string file;
        std::string output;
        Redaction::Mode mode = Redaction::Mode::Sensitive;
        bool json = false;
        bool sensitive = false;
    };
    const auto words = std::make_shared<Words>();

    CLI::App *reading = app.add_subcommand("text", help(CliTexts::tr("Read the text in pictures")));
    reading->add_option("image", words->files, "Pictures")->required()->type_name("IMAGE");
    reading->add_flag(
        "--json", words->json,
        help(CliTexts::tr(
            "Print each file with its lines and their boxes: x, y, width and height as fractions of "
            "the picture, origin at the lower left")));
    reading
        ->add_option("--language", words->languages,
                     help(CliTexts::tr("Read in this language alone, such as de or deu; may be given several "
                                       "times. Otherwise every installed one is used where lines are in it")))
        ->type_name("LANGUAGE")
        ->allow_extra_args(false);
    setBody(reading, context, Needs::Core, [&context, words] {
        text(context, words->files, recognizer(context, words->languages), words->json);
    });

    CLI::App *boxes = app.add_subcommand("boxes", help(CliTexts::tr("Where the text in a picture stands")));
    boxes->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    boxes->add_flag("--sensitive", words->sensitive,
                    help(CliTexts::tr("Only addresses, numbers, keys and tokens")));
    addLeft(boxes, words->left);
    addBoxFormat(boxes, words->json);
    setBody(boxes, context, Needs::Core, [&context, words] {
        const auto which =
            words->sensitive ? TextRecognizer::Boxes::Sensitive : TextRecognizer::Boxes::AllText;
        if (const auto image = Pictures::read(context, words->file))
            printBoxes(context, waitFor(recognizerWithout(context, words->left).boxes(*image, which)),
                       image->size(), words->json ? BoxFormat::Described : BoxFormat::Array);
    });

    CLI::App *faces = app.add_subcommand("faces", help(CliTexts::tr("Where the faces in a picture are")));
    faces->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    addBoxFormat(faces, words->json);
    setBody(faces, context, Needs::Core, [&context, words] {
        if (const auto image = Pictures::read(context, words->file))
            printBoxes(context, waitFor(recognizer(context).faces(*image)), image->size(),
                       words->json ? BoxFormat::Described : BoxFormat::Array);
    });

    CLI::App *hiding =
        app.add_subcommand("redact", help(CliTexts::tr("Find what is private in a picture and pixelate it")));
    hiding->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    hiding->add_option("--mode", words->mode, help(CliTexts::tr("What to hide: sensitive, allText or faces")))
        ->required()
        ->transform(oneOf<Redaction::Mode>({{"sensitive", Redaction::Mode::Sensitive},
                                            {"allText", Redaction::Mode::AllText},
                                            {"faces", Redaction::Mode::Faces}}));
    addLeft(hiding, words->left);
    Pictures::addOutput(hiding, words->output, help(CliTexts::tr("Where the picture goes")))->required();
    hiding->add_flag("--json", words->json,
                     help(CliTexts::tr("Print how many places were hidden, and where in pixels")));
    setBody(hiding, context, Needs::Core, [&context, words] {
        redact(context, words->file, words->mode, recognizerWithout(context, words->left), words->output,
               words->json);
    });
}
