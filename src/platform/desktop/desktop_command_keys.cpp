#include "platform/desktop/desktop_command_keys.h"

#include "base/async.h"
#include "platform/texts.h"
#include "platform/wayland_session.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <array>
#include <utility>

namespace {

constexpr int kPatience = 3000; // milliseconds for gsettings
const QString kSchema = QStringLiteral("org.gnome.settings-daemon.plugins.media-keys");
const QString kList = QStringLiteral("custom-keybindings");
const QString kFolder =
    QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/lumenpost-");

bool runs(const char *desktop)
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().contains(QLatin1String(desktop));
}

// As desktops name it: letters small, signs by their names.
QString keysym(const QString &key)
{
    static const QHash<QString, QString> names{
        {"-", "minus"},     {"=", "equal"},          {"[", "bracketleft"}, {"]", "bracketright"},
        {";", "semicolon"}, {"'", "apostrophe"},     {",", "comma"},       {".", "period"},
        {"/", "slash"},     {"\\", "backslash"},     {"`", "grave"},       {"Space", "space"},
        {"Esc", "Escape"},  {"Delete", "BackSpace"}, {"SysReq", "Print"},
    };
    return key.size() == 1 && key.at(0).isLetter() ? key.toLower() : names.value(key, key);
}

// The modifiers in the desktop's words, each followed or enclosed as `word` does it.
QString modifierWords(Qt::KeyboardModifiers modifiers, const std::array<const char *, 4> &words)
{
    static constexpr std::array kOrder{Qt::MetaModifier, Qt::ControlModifier, Qt::AltModifier,
                                       Qt::ShiftModifier};
    QString all;
    for (std::size_t i = 0; i < kOrder.size(); ++i) {
        if (modifiers.testFlag(kOrder.at(i)))
            all += QLatin1String(words.at(i));
    }
    return all;
}

QString quoted(const QString &text)
{
    return QLatin1Char('\'') +
           QString(text)
               .replace(QLatin1Char('\\'), QLatin1String("\\\\"))
               .replace(QLatin1Char('\''), QLatin1String("\\'")) +
           QLatin1Char('\'');
}

Result<QString> gsettings(const QStringList &words)
{
    QProcess process;
    process.start(QStringLiteral("gsettings"), words);
    if (!process.waitForFinished(kPatience) || process.exitCode() != 0) {
        process.kill();
        process.waitForFinished();
        return fail(PlatformTexts::tr("The desktop's settings can't be changed."),
                    QString::fromUtf8(process.readAllStandardError()));
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

Result<void> setAll(const QList<CommandKey> &keys)
{
    const auto before = gsettings({QStringLiteral("get"), kSchema, kList});
    if (!before)
        return std::unexpected(before.error());
    // The user's own ones stay.
    QStringList paths;
    static const QRegularExpression path(QStringLiteral("'([^']*)'"));
    for (auto it = path.globalMatch(*before); it.hasNext();) {
        const QString each = it.next().captured(1);
        if (!each.startsWith(kFolder))
            paths.append(quoted(each));
    }
    for (const CommandKey &key : keys) {
        const QString place = kFolder + key.id + QLatin1Char('/');
        const QString schema = kSchema + QStringLiteral(".custom-keybinding:") + place;
        const QString binding =
            modifierWords(key.modifiers, {"<Super>", "<Control>", "<Alt>", "<Shift>"}) + keysym(key.key);
        for (const auto &[name, value] : {std::pair{QStringLiteral("name"), key.title},
                                          {QStringLiteral("command"), key.command},
                                          {QStringLiteral("binding"), binding}}) {
            if (const auto done = gsettings({QStringLiteral("set"), schema, name, quoted(value)}); !done)
                return std::unexpected(done.error());
        }
        paths.append(quoted(place));
    }
    // Last: what it names is there.
    const QString all = QLatin1Char('[') + paths.join(QLatin1String(", ")) + QLatin1Char(']');
    const auto done = gsettings({QStringLiteral("set"), kSchema, kList, all});
    return done ? Result<void>() : std::unexpected(done.error());
}

} // namespace

bool DesktopCommandKeys::areNeeded() const
{
    return isWaylandSession() && !runs("kde");
}

QString DesktopCommandKeys::lines(const QList<CommandKey> &keys) const
{
    if (qEnvironmentVariableIsEmpty("SWAYSOCK"))
        return {};
    QString all;
    for (const CommandKey &key : keys)
        all += QStringLiteral("bindsym %1%2 exec %3\n")
                   .arg(modifierWords(key.modifiers, {"Mod4+", "Ctrl+", "Mod1+", "Shift+"}), keysym(key.key),
                        key.command);
    return all;
}

bool DesktopCommandKeys::canSet() const
{
    return areNeeded() && runs("gnome") &&
           !QStandardPaths::findExecutable(QStringLiteral("gsettings")).isEmpty();
}

QFuture<Result<void>> DesktopCommandKeys::set(const QList<CommandKey> &keys)
{
    return runInBackground([keys] { return setAll(keys); });
}
