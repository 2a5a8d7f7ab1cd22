#include "cli/clipboard_owner.h"

#include "base/temporary_files.h"
#include "cli/command.h"
#include "cli/texts.h"
#include "document/image_files.h"
#include "library/clipboard.h"
#include "platform/pasteboard.h"
#include "platform/platform.h"

#include <CLI/CLI.hpp>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QThread>

namespace {

constexpr auto kReady = "ready";

void own(CommandContext &context, const QString &file)
{
    const auto image = ImageFiles::read(file);
    if (!image)
        return context.fail(image.error());
    QObject owner;
    whenDone(Clipboard::copy(*context.platform().pasteboard, *image, &owner), &owner,
             [&](const Result<void> &copied) {
                 if (!copied)
                     return QCoreApplication::exit(1);
                 CommandContext::print(QLatin1String(kReady));
                 std::fclose(stdout);
                 QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &owner, [] {
                     if (!QGuiApplication::clipboard()->ownsClipboard())
                         QCoreApplication::quit();
                 });
             });
    QCoreApplication::exec();
}

} // namespace

Result<void> ClipboardOwner::start(const QImage &image)
{
    const auto file = TemporaryFiles::newPath(QStringLiteral("picture.png"));
    if (!file)
        return std::unexpected(file.error());
    if (const auto written = ImageFiles::write(image, *file); !written)
        return written;
    QProcess process;
    process.setProgram(QCoreApplication::applicationFilePath());
    process.setArguments({QStringLiteral("clipboard-owner"), *file});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    const QString answer = *file + QStringLiteral(".ready");
    process.setStandardOutputFile(answer);
    if (!process.startDetached())
        return fail(CliTexts::tr("The picture could not be copied: %1.").arg(process.errorString()));
    // A caller that pastes right after this command must find the picture.
    bool isReady = false;
    for (int i = 0; i < 500 && !isReady; ++i) {
        QThread::msleep(10);
        isReady = QFile(answer).size() > 0;
    }
    if (!isReady)
        return fail(CliTexts::tr("The picture could not be copied: there is no clipboard."));
    return {};
}

void ClipboardOwner::addCommand(CLI::App &app, CommandContext &context)
{
    const auto file = std::make_shared<std::string>();
    CLI::App *command = app.add_subcommand("clipboard-owner")->group("");
    command->add_option("FILE", *file)->required();
    setBody(command, context, Needs::Display,
            [&context, file] { own(context, QString::fromStdString(*file)); });
}
