#include "ui/shortcut_text.h"

#include "platform/modifier_keys.h"

#include <QRegularExpression>
#include <array>

namespace {

struct Named {
    QChar sign;
    const char *name;
};

// Keys that are stored as a sign.
constexpr std::array kEySigns{
    Named{u'↩', "Return"}, Named{u'⇥', "Tab"},  Named{u'⎋', "Esc"},   Named{u'⌫', "Backspace"},
    Named{u'⌦', "Delete"}, Named{u'←', "Left"}, Named{u'→', "Right"}, Named{u'↑', "Up"},
    Named{u'↓', "Down"},   Named{u'−', "-"},
};

QString keyName(const QString &key)
{
    if (key.size() == 1) {
        for (const Named &named : kEySigns) {
            if (key.front() == named.sign)
                return QString::fromLatin1(named.name);
        }
    }
    return key;
}

struct Shortcut {
    Qt::KeyboardModifiers held;
    QString key; // by its name
};

Shortcut split(const QString &stored)
{
    Shortcut shortcut;
    qsizetype at = 0;
    for (; at < stored.size(); ++at) {
        const ModifierKey *modifier = modifierOfSign(stored[at]);
        if (!modifier)
            break;
        shortcut.held |= modifier->qt;
    }
    shortcut.key = keyName(stored.mid(at));
    return shortcut;
}

} // namespace

QString shortcutText(const QString &stored)
{
    const auto [held, key] = split(stored);
    QStringList parts;
    for (const QChar sign : QStringView(u"⌃⌘⌥⇧")) { // as desktops write them
        if (const ModifierKey *modifier = modifierOfSign(sign); held.testFlag(modifier->qt))
            parts += QLatin1String(modifier->word);
    }
    if (!key.isEmpty())
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
    const auto [held, key] = split(stored);
    const QKeySequence bare(key, QKeySequence::PortableText);
    return bare.isEmpty() ? bare : QKeySequence(QKeyCombination(held, bare[0].key()));
}
