#include "cli/choice.h"
#include "cli/command.h"
#include "cli/rectangle.h"

#include "document/image_files.h"
#include "document/pixelation.h"
#include "platform/platform.h"
#include "services/redaction.h"
#include "services/text_recognizer.h"

#include <CLI/CLI.hpp>
#include <QJsonArray>
#include <QJsonObject>

namespace {

TextRecognizer recognizer(CommandContext &context)
{
    return {*context.platform().text, *context.platform().faces};
}

std::optional<QImage> readImage(CommandContext &context, const std::string &path)
{
    Result<QImage> image = ImageFiles::read(QString::fromStdString(path));
    if (!image) {
        context.fail(image.error());
        return {};
    }
    return *image;
}

QJsonObject jsonOf(const QString &file, const QList<RecognizedLine> &lines)
{
    QJsonArray list;
    for (const RecognizedLine &line : lines)
        list.append(QJsonObject{{"text", line.text}, {"box", jsonOf(line.box)}});
    return {{"file", file}, {"lines", list}};
}

void text(CommandContext &context, const std::vector<std::string> &files, bool json)
{
    TextRecognizer reader = recognizer(context);
    // Pictures share the cores, so a few are kept under way at once; not all, as each holds its pixels.
    constexpr size_t AtOnce = 4;
    struct Reading {
        QString file;
        QFuture<Result<QList<RecognizedLine>>> lines;
    };
    std::vector<Reading> underWay;
    size_t next = 0;
    QJsonArray all;
    bool found = false;
    while (next < files.size() || !underWay.empty()) {
        while (next < files.size() && underWay.size() < AtOnce) {
            const std::string &file = files[next++];
            if (const auto image = readImage(context, file))
                underWay.push_back({QString::fromStdString(file), reader.lines(*image)});
        }
        if (underWay.empty())
            break;
        const auto lines = waitFor(underWay.front().lines);
        const QString file = underWay.front().file;
        underWay.erase(underWay.begin());
        if (!lines) {
            context.fail(lines.error());
            continue;
        }
        found |= !lines->isEmpty();
        if (json)
            all.append(jsonOf(file, *lines));
        else if (!lines->isEmpty())
            CommandContext::print(textOf(*lines));
    }
    if (json)
        CommandContext::print(QJsonDocument(all));
    if (!found && context.status == ExitStatus::Done)
        context.status = ExitStatus::NothingFound;
}

void printBoxes(CommandContext &context, const Result<QList<QRectF>> &boxes)
{
    if (!boxes) {
        context.fail(boxes.error());
        return;
    }
    QJsonArray array;
    for (const QRectF &box : *boxes)
        array.append(jsonOf(box));
    CommandContext::print(QJsonDocument(array));
    if (boxes->isEmpty())
        context.status = ExitStatus::NothingFound;
}

void redact(CommandContext &context, const std::string &file, Redaction::Mode mode, const std::string &output,
            bool json)
{
    const auto image = readImage(context, file);
    if (!image)
        return;
    TextRecognizer reader = recognizer(context);
    const auto rects = waitFor(Redaction::find(reader, *image, mode));
    if (!rects) {
        context.fail(rects.error());
        return;
    }
    if (rects->isEmpty()) {
        // No file: one that hides nothing must not pass for one that does.
        if (json)
            CommandContext::print(QJsonDocument(QJsonObject{{"count", 0}, {"rects", QJsonArray()}}));
        CommandContext::warn("Nothing to redact was found, so nothing was written.");
        context.status = ExitStatus::NothingFound;
        return;
    }
    const QString target = absolutePath(output);
    if (const auto written = ImageFiles::write(Redaction::hidden(*image, *rects), target); !written) {
        context.fail(written.error());
        return;
    }
    if (!json) {
        CommandContext::print(target);
        return;
    }
    QJsonArray array;
    for (const QRectF &rect : *rects)
        array.append(jsonOf(pixelatedPixels(rect, image->size())));
    CommandContext::print(QJsonDocument(QJsonObject{{"count", array.size()}, {"rects", array}}));
}

} // namespace

void addRecognitionCommands(CLI::App &app, CommandContext &context)
{
    struct Words {
        std::vector<std::string> files;
        std::string file;
        std::string output;
        Redaction::Mode mode = Redaction::Mode::Sensitive;
        bool json = false;
        bool sensitive = false;
    };
    const auto words = std::make_shared<Words>();

    CLI::App *reading = app.add_subcommand("text", "Read the text in pictures");
    reading->add_option("image", words->files, "Pictures")->required()->type_name("IMAGE");
    reading->add_flag("--json", words->json, "Print each file with its lines and their boxes");
    setBody(reading, context, Needs::Core, [&context, words] { text(context, words->files, words->json); });

    CLI::App *boxes = app.add_subcommand("boxes", "Where the text in a picture stands");
    boxes->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    boxes->add_flag("--sensitive", words->sensitive, "Only addresses, numbers, keys and tokens");
    setBody(boxes, context, Needs::Core, [&context, words] {
        if (const auto image = readImage(context, words->file))
            printBoxes(context, waitFor(recognizer(context).boxes(
                                    *image, words->sensitive ? TextRecognizer::Boxes::Sensitive
                                                             : TextRecognizer::Boxes::AllText)));
    });

    CLI::App *faces = app.add_subcommand("faces", "Where the faces in a picture are");
    faces->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    setBody(faces, context, Needs::Core, [&context, words] {
        if (const auto image = readImage(context, words->file))
            printBoxes(context, waitFor(recognizer(context).faces(*image)));
    });

    CLI::App *hiding = app.add_subcommand("redact", "Find what is private in a picture and pixelate it");
    hiding->add_option("image", words->file, "Picture")->required()->type_name("IMAGE");
    hiding->add_option("--mode", words->mode, "What to hide: sensitive, allText or faces")
        ->required()
        ->transform(oneOf<Redaction::Mode>({{"sensitive", Redaction::Mode::Sensitive},
                                            {"allText", Redaction::Mode::AllText},
                                            {"faces", Redaction::Mode::Faces}}));
    hiding->add_option("--output", words->output, "Where the picture goes")->required()->type_name("FILE");
    hiding->add_flag("--json", words->json, "Print how many places were hidden, and where in pixels");
    setBody(hiding, context, Needs::Core,
            [&context, words] { redact(context, words->file, words->mode, words->output, words->json); });
}
