#include "cli/command.h"

#include "base/clock.h"
#include "base/file_name.h"
#include "base/log.h"
#include "base/notice.h"
#include "base/translations.h"
#include "cli/texts.h"
#include "library/library.h"
#include "platform/login_item.h"
#include "platform/paths.h"
#include "platform/platform.h"
#include "platform/secrets.h"
#include "platform/session/make_platform.h"
#include "platform/session/session_kind.h"
#include "platform/trash.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "settings/defaults.h"
#include "settings/migration.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <cstdio>
#include <filesystem>

struct CommandContext::Parts {
    int argc;
    char **argv;
    std::unique_ptr<QCoreApplication> application;
    std::unique_ptr<Platform> platform;
    Clock clock;
    NoticeBoard notices;
    std::unique_ptr<Defaults> defaults;
    std::unique_ptr<AppSettings> settings;
    std::unique_ptr<CaptureSettings> captureSettings;
    std::unique_ptr<Library> library;
};

CommandContext::CommandContext(int argc, char **argv) : m_parts(std::make_unique<Parts>())
{
    m_parts->argc = argc;
    m_parts->argv = argv;
}

CommandContext::~CommandContext()
{
    Log::flush();
}

// The toolkit's own remarks would mix with the one sentence that a command says about its failure.
static void keepQuiet(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg || qEnvironmentVariableIsSet("LUMENPOST_VERBOSE"))
        std::fprintf(stderr, "%s\n", qUtf8Printable(qFormatLogMessage(type, context, message)));
}

void CommandContext::speakUsersLanguage()
{
    if (!speaksEnglish()) {
        m_parts->application = std::make_unique<QCoreApplication>(m_parts->argc, m_parts->argv);
        installTranslations();
    }
}

void CommandContext::startApplication(Needs needs)
{
    qInstallMessageHandler(keepQuiet);
    m_parts->application.reset(); // the one that spoke the help
    QCoreApplication::setApplicationName(QStringLiteral("lumenpost"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LUMENPOST_VERSION));
    switch (needs) {
    case Needs::Core:
        m_parts->application = std::make_unique<QCoreApplication>(m_parts->argc, m_parts->argv);
        break;
    case Needs::Fonts:
        qputenv("QT_QPA_PLATFORM", "offscreen");
        [[fallthrough]];
    case Needs::Display:
        matchToolkit();
        m_parts->application = std::make_unique<QGuiApplication>(m_parts->argc, m_parts->argv);
        break;
    }
    installTranslations();
}

Platform &CommandContext::platform()
{
    if (!m_parts->platform) {
        m_parts->platform = std::make_unique<Platform>(makePlatform());
        Log::setDirectory(m_parts->platform->paths->state());
    }
    return *m_parts->platform;
}

AppSettings &CommandContext::settings()
{
    if (!m_parts->settings) {
        Platform &machine = platform();
        m_parts->defaults =
            std::make_unique<Defaults>(machine.paths->config() + QStringLiteral("/defaults.json"));
        // A command may be what a user of the earlier program calls first.
        if (Migration::isDue(*m_parts->defaults, *machine.paths))
            Migration::runIfNeeded(*m_parts->defaults, *machine.secrets, *machine.paths)
                .key.waitForFinished();
        m_parts->settings = std::make_unique<AppSettings>(
            *m_parts->defaults, *machine.secrets, *machine.loginItem, *machine.paths, m_parts->notices);
        if (!libraryFolder.isEmpty())
            m_parts->settings->overrideSaveFolder(libraryFolder);
    }
    return *m_parts->settings;
}

CaptureSettings &CommandContext::captureSettings()
{
    if (!m_parts->captureSettings) {
        settings();
        m_parts->captureSettings = std::make_unique<CaptureSettings>(*m_parts->defaults);
    }
    return *m_parts->captureSettings;
}

Library &CommandContext::library()
{
    if (!m_parts->library)
        m_parts->library = std::make_unique<Library>(settings(), *platform().trash, m_parts->clock);
    return *m_parts->library;
}

NoticeBoard &CommandContext::notices()
{
    return m_parts->notices;
}

void CommandContext::print(const QString &line)
{
    const QByteArray bytes = FileName::toBytes(line) + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
}

void CommandContext::print(const QJsonDocument &document)
{
    print(QString::fromUtf8(document.toJson(QJsonDocument::Compact)));
}

// Windows tell a file by its name; on a terminal the folder is no matter of course.
static QString withWholePath(QString sentence, const QString &path)
{
    const QString name = QFileInfo(path).fileName();
    const qsizetype at = name.isEmpty() || sentence.contains(path) ? -1 : sentence.indexOf(name);
    return path.startsWith('/') && at >= 0 ? sentence.replace(at, name.size(), path) : sentence;
}

void CommandContext::fail(const Error &error, const QString &path)
{
    warn(error.kind == Error::Kind::Cancelled
             ? CliTexts::tr("It was given up before it was done.")
             : withWholePath(withWholePath(error.message, path), error.detail));
    status = ExitStatus::Failed;
}

void CommandContext::wrongCall(const QString &sentence)
{
    warn(sentence);
    status = ExitStatus::WrongCall;
}

void CommandContext::warn(const QString &sentence)
{
    std::fflush(stdout);
    const QByteArray bytes = "lumenpost: " + FileName::toBytes(sentence) + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

QString absolutePath(const std::string &word)
{
    // Joined as bytes: the toolkit's own functions lose those that are no UTF-8.
    const std::filesystem::path path = std::filesystem::absolute(word);
    return FileName::fromBytes(QByteArray::fromStdString(path.lexically_normal().string()));
}

void setBody(CLI::App *command, CommandContext &context, Needs needs, std::function<void()> body)
{
    command->callback([&context, needs, body = std::move(body)] {
        context.startApplication(needs);
        body();
    });
}
