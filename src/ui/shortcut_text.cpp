#include "ui/shortcut_text.h"

#include <QRegularExpression>
#include <array>

namespace {

struct Named {
    QChar sign;
    const char *name;
};

// Keys that are stored as a sign.
constexpr std::array keySigns{
    Named{u'↩', "Return"}, Named{u'⇥', "Tab"},  Named{u'⎋', "Esc"},   Named{u'⌫', "Backspace"},
    Named{u'⌦', "Delete"}, Named{u'←', "Left"}, Named{u'→', "Right"}, Named{u'↑', "Up"},
    Named{u'↓', "Down"},   Named{u'−', "-"},
};

bool isModifier(QChar c)
{
    return c == u'⌘' || c == u'⌃' || c == u'⌥' || c == u'⇧';
}

QString keyName(const QString &key)
{
    if (key.size() == 1) {
        for (const Named &named : keySigns) {
            if (key.front() == named.sign)
                return QString::fromLatin1(named.name);
        }
    }
    return key;
}

} // namespace

QString shortcutText(const QString &stored, ShortcutScope scope)
{
    bool super = false, control = false, alt = false, shift = false;
    qsizetype at = 0;
    for (; at < stored.size() && isModifier(stored[at]); ++at) {
        const QChar c = stored[at];
        super |= c == u'⌘' && scope == ShortcutScope::SystemWide;
        control |= c == u'⌃' || (c == u'⌘' && scope == ShortcutScope::Window);
        alt |= c == u'⌥';
        shift |= c == u'⇧';
    }
    QStringList parts;
    if (super)
        parts += "Super";
    if (control)
        parts += "Ctrl";
    if (alt)
        parts += "Alt";
    if (shift)
        parts += "Shift";
    if (const QString key = keyName(stored.mid(at)); !key.isEmpty())
        parts += key;
    return parts.join('+');
}

QString withShortcutWords(const QString &sentence)
{
    // Signs with a key behind them, signs bound to a word by a hyphen, and a lone shift sign among words.
    static const QRegularExpression shortcut(
        QStringLiteral("[⌘⌃⌥⇧]+(?:[A-Z0-9\\[\\]](?![a-z])|[↩⇥⎋⌫⌦←→↑↓−+])|[⌘⌃⌥⇧]+(?=-\\w)|⇧(?=\\s)"));
    QString result;
    qsizetype last = 0;
    for (auto it = shortcut.globalMatch(sentence); it.hasNext();) {
        const auto match = it.next();
        result += sentence.mid(last, match.capturedStart() - last) + shortcutText(match.captured());
        last = match.capturedEnd();
    }
    return result + sentence.mid(last);
}

QKeySequence shortcutSequence(const QString &stored)
{
    return QKeySequence(shortcutText(stored, ShortcutScope::Window), QKeySequence::PortableText);
}
