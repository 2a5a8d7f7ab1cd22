#include "platform/desktop/desktop_shortcut_holders.h"

#include "base/async.h"
#include "platform/texts.h"

#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QXmlStreamReader>

namespace {

constexpr int kPatience = 3000;         // milliseconds for gsettings
constexpr qint64 kLargestList = 1 << 20; // bytes

Qt::KeyboardModifier modifierNamed(const QString &word)
{
    const QString name = word.toLower();
    if (name == QLatin1String("primary") || name == QLatin1String("control") || name == QLatin1String("ctrl") ||
        name == QLatin1String("c"))
        return Qt::ControlModifier;
    if (name == QLatin1String("shift") || name == QLatin1String("s"))
        return Qt::ShiftModifier;
    if (name == QLatin1String("alt") || name == QLatin1String("mod1") || name == QLatin1String("a"))
        return Qt::AltModifier;
    if (name == QLatin1String("super") || name == QLatin1String("meta") || name == QLatin1String("mod4") ||
        name == QLatin1String("w"))
        return Qt::MetaModifier;
    return Qt::NoModifier;
}

// Names of keys as the lists write them, by ours in lower case.
QString keysymName(const QString &key)
{
    static const QHash<QString, QString> others{
        {"esc", "escape"},      {"-", "minus"},        {"=", "equal"},         {"[", "bracketleft"},
        {"]", "bracketright"},  {";", "semicolon"},    {"'", "apostrophe"},    {",", "comma"},
        {".", "period"},        {"/", "slash"},        {"\\", "backslash"},    {"`", "grave"},
        {"sysreq", "print"},    {"sys_req", "print"},
    };
    const QString name = key.toLower();
    return others.value(name, name);
}

// "C-A-d", "Meta+Shift+Print": words joined by a sign, the last one the key.
std::optional<ListedShortcut> joined(const QString &text, QChar sign, const QString &holder)
{
    QStringList words = text.split(sign);
    QString key = words.takeLast();
    if (key.isEmpty())
        return std::nullopt;
    ListedShortcut shortcut{keysymName(key), {}, holder};
    for (const QString &word : std::as_const(words)) {
        const auto modifier = modifierNamed(word);
        if (modifier == Qt::NoModifier)
            return std::nullopt;
        shortcut.modifiers |= modifier;
    }
    return shortcut;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kLargestList) : QByteArray();
}

// The user's own file, or else the one of the system.
QByteArray configured(const QString &name)
{
    return contents(QStandardPaths::locate(QStandardPaths::GenericConfigLocation, name));
}

QByteArray gsettingsOutput()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("gsettings"));
    if (program.isEmpty())
        return {};
    QByteArray output;
    for (const QString &schema :
         {QStringLiteral("org.gnome.settings-daemon.plugins.media-keys"),
          QStringLiteral("org.gnome.desktop.wm.keybindings"), QStringLiteral("org.gnome.shell.keybindings"),
          QStringLiteral("org.cinnamon.desktop.keybindings.media-keys"),
          QStringLiteral("org.mate.Marco.global-keybindings")}) {
        QProcess process;
        process.start(program, {QStringLiteral("list-recursively"), schema});
        if (process.waitForFinished(kPatience) && process.exitCode() == 0)
            output += process.readAllStandardOutput();
        else
            process.kill();
    }
    return output;
}

QString desktopThatRuns()
{
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower();
}

// Only the list of the desktop that runs tells: others may lie about from earlier days.
QList<ListedShortcut> listOf(const QString &desktop)
{
    if (desktop.contains(QLatin1String("xfce")))
        return ShortcutLists::xfce(
            configured(QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml")));
    if (desktop.contains(QLatin1String("kde")))
        return ShortcutLists::plasma(configured(QStringLiteral("kglobalshortcutsrc")));
    if (desktop.contains(QLatin1String("gnome")) || desktop.contains(QLatin1String("cinnamon")) ||
        desktop.contains(QLatin1String("mate")) || desktop.contains(QLatin1String("unity")))
        return ShortcutLists::gsettings(gsettingsOutput());
    return ShortcutLists::openbox(configured(QStringLiteral("openbox/rc.xml")));
}

} // namespace

std::optional<ListedShortcut> ShortcutLists::accelerator(const QString &text, const QString &holder)
{
    static const QRegularExpression modifier(QStringLiteral("<(\\w+)>"));
    ListedShortcut shortcut{{}, {}, holder};
    qsizetype end = 0;
    for (auto it = modifier.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        shortcut.modifiers |= modifierNamed(match.captured(1));
        end = match.capturedEnd();
    }
    shortcut.key = keysymName(text.mid(end).trimmed());
    return shortcut.key.isEmpty() ? std::nullopt : std::optional(shortcut);
}

QList<ListedShortcut> ShortcutLists::gsettings(const QByteArray &output)
{
    static const QRegularExpression line(QStringLiteral("^(\\S+) (\\S+) (.+)$"));
    static const QRegularExpression quoted(QStringLiteral("'([^']*)'"));
    QList<ListedShortcut> shortcuts;
    for (const QString &text : QString::fromUtf8(output).split(QLatin1Char('\n'))) {
        const auto match = line.match(text);
        if (!match.hasMatch())
            continue;
        const QString holder = match.captured(2).replace(QLatin1Char('-'), QLatin1Char(' '));
        for (auto it = quoted.globalMatch(match.captured(3)); it.hasNext();) {
            if (const auto shortcut = accelerator(it.next().captured(1), holder))
                shortcuts += *shortcut;
        }
    }
    return shortcuts;
}

QList<ListedShortcut> ShortcutLists::xfce(const QByteArray &xml)
{
    // A property whose name is an accelerator and whose value is what it runs; those of "default" hold until
    // "custom" has taken over.
    QHash<QString, QList<ListedShortcut>> bySet;
    QString group, set;
    QXmlStreamReader reader(xml);
    int depth = 0;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::EndElement && reader.name() == QLatin1String("property")) {
            --depth;
        } else if (token == QXmlStreamReader::StartElement && reader.name() == QLatin1String("property")) {
            const QString name = reader.attributes().value(QLatin1String("name")).toString();
            const QString value = reader.attributes().value(QLatin1String("value")).toString();
            ++depth;
            if (depth == 1)
                group = name;
            else if (depth == 2)
                set = name;
            else if (depth == 3 && !value.isEmpty() && value != QLatin1String("true")) {
                if (const auto shortcut = accelerator(name, value.section(QLatin1Char(' '), 0, 0)))
                    bySet[group + QLatin1Char('/') + set] += *shortcut;
            }
        }
    }
    QList<ListedShortcut> shortcuts;
    for (const QString &name : {QStringLiteral("commands"), QStringLiteral("xfwm4")}) {
        const auto custom = bySet.value(name + QStringLiteral("/custom"));
        shortcuts += custom.isEmpty() ? bySet.value(name + QStringLiteral("/default")) : custom;
    }
    return shortcuts;
}

QList<ListedShortcut> ShortcutLists::plasma(const QByteArray &ini)
{
    // "action=active,default,Friendly Name", several active ones parted by "\t".
    QList<ListedShortcut> shortcuts;
    QString component;
    for (QString line : QString::fromUtf8(ini).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1Char('['))) {
            component = line.mid(1, line.lastIndexOf(QLatin1Char(']')) - 1);
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (equals < 0 || component.isEmpty() || line.startsWith(QLatin1String("_k_friendly_name")))
            continue;
        const QStringList fields = line.mid(equals + 1).split(QLatin1Char(','));
        const QString holder = fields.size() > 2 && !fields[2].isEmpty() ? fields[2] : component;
        for (const QString &text : fields.constFirst().split(QStringLiteral("\\t"))) {
            if (text == QLatin1String("none"))
                continue;
            if (const auto shortcut = joined(text, QLatin1Char('+'), holder))
                shortcuts += *shortcut;
        }
    }
    return shortcuts;
}

QList<ListedShortcut> ShortcutLists::openbox(const QByteArray &xml)
{
    QList<ListedShortcut> shortcuts;
    QXmlStreamReader reader(xml);
    QString key, holder;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && reader.name() == QLatin1String("keybind")) {
            key = reader.attributes().value(QLatin1String("key")).toString();
            holder.clear();
        } else if (token == QXmlStreamReader::StartElement && !key.isEmpty()) {
            if (reader.name() == QLatin1String("action") && holder.isEmpty())
                holder = reader.attributes().value(QLatin1String("name")).toString();
            else if (reader.name() == QLatin1String("command") || reader.name() == QLatin1String("execute"))
                holder = reader.readElementText().section(QLatin1Char(' '), 0, 0);
        } else if (token == QXmlStreamReader::EndElement && reader.name() == QLatin1String("keybind")) {
            if (const auto shortcut = joined(key, QLatin1Char('-'), holder))
                shortcuts += *shortcut;
            key.clear();
        }
    }
    return shortcuts;
}

QFuture<QString> DesktopShortcutHolders::holder(const QString &key, Qt::KeyboardModifiers modifiers) const
{
    return runInBackground([wanted = keysymName(key), modifiers] {
        for (const ListedShortcut &shortcut : listOf(desktopThatRuns())) {
            if (shortcut.key == wanted && shortcut.modifiers == modifiers)
                return shortcut.holder;
        }
        return QString();
    });
}

QString DesktopShortcutHolders::howToFree() const
{
    const QString desktop = desktopThatRuns();
    if (desktop.contains(QLatin1String("gnome")) || desktop.contains(QLatin1String("unity")))
        return PlatformTexts::tr("To free it: Settings › Keyboard › View and Customize Shortcuts.");
    if (desktop.contains(QLatin1String("kde")))
        return PlatformTexts::tr("To free it: System Settings › Keyboard › Shortcuts.");
    if (desktop.contains(QLatin1String("xfce")))
        return PlatformTexts::tr("To free it: Settings › Keyboard › Application Shortcuts.");
    if (desktop.contains(QLatin1String("cinnamon")) || desktop.contains(QLatin1String("mate")))
        return PlatformTexts::tr("To free it: the desktop's settings › Keyboard Shortcuts.");
    return PlatformTexts::tr("To free it, remove it from the desktop's or the window manager's own shortcuts.");
}
