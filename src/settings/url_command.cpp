#include "settings/url_command.h"

#include <QDir>
#include <QUrlQuery>

namespace {

using namespace URLCommand;

// The parts of the path as they were sent, without empty ones: percent signs still stand for what they encode.
QStringList pathComponents(const QUrl &url)
{
    return url.path(QUrl::FullyEncoded).split(QLatin1Char('/'), Qt::SkipEmptyParts);
}

std::optional<Command> parseCapture(const QUrl &url)
{
    const QString word = pathComponents(url).value(0, QStringLiteral("panel")).toLower();
    const std::pair<QStringList, Command> words[]{
        {{QStringLiteral("region"), QStringLiteral("window"), QStringLiteral("allinone")},
         Capture{CaptureMode::AllInOne}},
        {{QStringLiteral("screen"), QStringLiteral("fullscreen")}, Capture{CaptureMode::Screen}},
        {{QStringLiteral("scroll"), QStringLiteral("scrolling")}, Capture{CaptureMode::Scrolling}},
        {{QStringLiteral("video"), QStringLiteral("record")}, Capture{CaptureMode::Video}},
        {{QStringLiteral("text")}, Capture{CaptureMode::Text}},
        {{QStringLiteral("steps"), QStringLiteral("guide")}, Capture{CaptureMode::Steps}},
        {{QStringLiteral("delayed")}, Delayed{}},
        {{QStringLiteral("panel")}, CapturePanelMode{}},
    };
    for (const auto &[known, command] : words) {
        if (known.contains(word))
            return command;
    }
    return std::nullopt;
}

std::optional<Command> parsePreset(const QUrl &url)
{
    const QString sent = pathComponents(url).join(QLatin1Char('/'));
    if (sent.isEmpty())
        return std::nullopt;
    return Preset{QString::fromUtf8(QByteArray::fromPercentEncoding(sent.toUtf8()))};
}

std::optional<Command> parseOpen(const QUrl &url)
{
    const QString key = QStringLiteral("path");
    QString path = QUrlQuery(url).queryItemValue(key, QUrl::FullyDecoded);
    // No path holds a null character; what follows one would silently be cut off.
    if (path.isEmpty() || path.contains(QChar(u'\0')))
        return std::nullopt;
    if (path == QLatin1String("~") || path.startsWith(QLatin1String("~/")))
        path.replace(0, 1, QDir::homePath());
    return Open{QUrl::fromLocalFile(path)};
}

} // namespace

bool URLCommand::isLink(const QString &word)
{
    return word.startsWith(QLatin1String("lumenpost:"), Qt::CaseInsensitive) ||
           word.startsWith(QLatin1String("tidegrasp:"), Qt::CaseInsensitive);
}

std::optional<URLCommand::Command> URLCommand::parse(const QUrl &url)
{
    const QString scheme = url.scheme().toLower();
    if (scheme != QLatin1String("lumenpost") && scheme != QLatin1String("tidegrasp"))
        return std::nullopt;
    const QString host = url.host().toLower();
    if (host == QLatin1String("capture"))
        return parseCapture(url);
    if (host == QLatin1String("record"))
        return Record{};
    if (host == QLatin1String("library"))
        return Library{};
    if (host == QLatin1String("pin-last") || host == QLatin1String("pinlast"))
        return PinLast{};
    if (host == QLatin1String("preset"))
        return parsePreset(url);
    if (host == QLatin1String("open"))
        return parseOpen(url);
    return std::nullopt;
}

QString URLCommand::withoutQuery(const QUrl &url)
{
    return url.toString(QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveUserInfo | QUrl::FullyEncoded);
}
