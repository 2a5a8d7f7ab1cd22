#include "app/command_links.h"

#include "app/texts.h"
#include "base/log.h"
#include "base/notice.h"
#include "settings/url_command.h"

#include <QFileInfo>
#include <QHash>

namespace {

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};

} // namespace

std::optional<QString> launcherAction(const QString &action)
{
    static const QHash<QString, QString> links{
        {QStringLiteral("capture"), QStringLiteral("lumenpost://capture/region")},
        {QStringLiteral("screen"), QStringLiteral("lumenpost://capture/screen")},
        {QStringLiteral("record"), QStringLiteral("lumenpost://record")},
        {QStringLiteral("library"), QStringLiteral("lumenpost://library")},
    };
    const auto found = links.constFind(action);
    return found == links.cend() ? std::nullopt : std::optional(*found);
}

void CommandLinks::open(const QString &word)
{
    if (URLCommand::isLink(word) && !QFileInfo::exists(word))
        return handle(QUrl(word));
    const QUrl url(word);
    m_actions.openFile(url.isLocalFile() ? url.toLocalFile() : word);
}

void CommandLinks::handle(const QUrl &link)
{
    const auto command = URLCommand::parse(link);
    if (!command) {
        Log::error(QStringLiteral("Unknown link: ") + URLCommand::withoutQuery(link));
        m_notices.post(AppTexts::tr("Unknown Lumenpost link"), QStringLiteral("link"));
        return;
    }
    Log::info(QStringLiteral("Link: ") + URLCommand::withoutQuery(link));
    const auto capture = [this](CaptureMode mode) {
        switch (mode) {
        case CaptureMode::AllInOne:
            return m_actions.captureRegion();
        case CaptureMode::Screen:
            return perform(HotKeyAction::FullScreen);
        case CaptureMode::Scrolling:
            return perform(HotKeyAction::Scrolling);
        case CaptureMode::Video:
            return perform(HotKeyAction::Record);
        case CaptureMode::Steps:
            return perform(HotKeyAction::Steps);
        case CaptureMode::Text:
            return perform(HotKeyAction::GrabText);
        }
        Q_UNREACHABLE();
    };
    std::visit(Overloaded{
                   [&](const URLCommand::Capture &which) { capture(which.mode); },
                   [this](const URLCommand::Preset &preset) {
                       if (!m_actions.runPreset(preset.name))
                           m_notices.post(AppTexts::tr("No preset named “%1”").arg(preset.name),
                                          QStringLiteral("questionmark.circle"));
                   },
                   [this](const URLCommand::Open &open) { m_actions.openFile(open.file.toLocalFile()); },
                   [this](const URLCommand::CapturePanelMode &) { m_actions.captureWithCurrentMode(); },
                   [this](const URLCommand::Delayed &) { perform(HotKeyAction::Delayed); },
                   [this](const URLCommand::Record &) { perform(HotKeyAction::Record); },
                   [this](const URLCommand::Library &) { perform(HotKeyAction::Library); },
                   [this](const URLCommand::PinLast &) { perform(HotKeyAction::PinLast); },
               },
               *command);
}
