#include "cli/pictures.h"

#include "base/free_name.h"
#include "cli/command.h"
#include "cli/texts.h"
#include "document/image_files.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>

std::optional<QImage> Pictures::read(CommandContext &context, const std::string &word)
{
    const QString path = absolutePath(word);
    auto image = ImageFiles::read(path);
    if (image)
        return *std::move(image);
    context.fail(image.error(), path);
    return {};
}

CLI::Option *Pictures::addOutput(CLI::App *command, std::string &output, const std::string &description)
{
    return command->add_option("--output", output, description)
        ->type_name("FILE")
        ->check([](const std::string &word) {
            if (ImageFiles::isWritable(absolutePath(word)))
                return std::string();
            return CliTexts::tr("\"%1\" has none of the extensions png, jpg, jpeg and heic")
                .arg(QString::fromStdString(word))
                .toStdString();
        });
}

std::optional<QString> Pictures::write(CommandContext &context, const QImage &image, const std::string &word)
{
    const QString wanted = absolutePath(word);
    QString path = ImageFiles::pathThatHolds(wanted, image.size());
    if (path != wanted) {
        const QFileInfo info(path);
        path = freeFilePath(info.path(), info.completeBaseName(), info.suffix());
        CommandContext::warn(
            CliTexts::tr("%1 can't hold %2 × %3 pixels, so the picture is written as PNG.")
                .arg(wanted, QString::number(image.width()), QString::number(image.height())));
    }
    if (const auto written = ImageFiles::write(image, path); !written) {
        context.fail(written.error(), path);
        return {};
    }
    return path;
}
