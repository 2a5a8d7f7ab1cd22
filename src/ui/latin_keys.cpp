#include "ui/latin_keys.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWindow>
#include <array>
#include <qpa/qwindowsysteminterface.h>

namespace {

// The rows of letters, by the first key's code as the display tells it.
struct Row {
    quint32 first;
    QLatin1String letters;
};
constexpr std::array kRows{Row{24, QLatin1String("QWERTYUIOP")}, Row{38, QLatin1String("ASDFGHJKL")},
                           Row{52, QLatin1String("ZXCVBNM")}};

bool isForeignLetter(int key)
{
    return key > 0xFF && key < 0x10000 && QChar(key).isLetter();
}

} // namespace

std::optional<int> LatinKeys::standIn(const QKeyEvent &event)
{
    if (!isForeignLetter(event.key()))
        return std::nullopt;
    for (const Row &row : kRows) {
        const qint64 at = qint64(event.nativeScanCode()) - row.first;
        if (at >= 0 && at < row.letters.size())
            return row.letters[at].unicode();
    }
    return std::nullopt;
}

// Windows get a key after all shortcuts have refused it.
bool LatinKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWindowType())
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (!(key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)))
        return false;
    const auto letter = standIn(*key);
    if (!letter)
        return false;
    // Without the code of the key, which would name the foreign letter again.
    if (QWindowSystemInterface::handleShortcutEvent(static_cast<QWindow *>(watched), key->timestamp(), *letter,
                                                    key->modifiers(), 0, 0, 0, {}, key->isAutoRepeat()))
        return true;
    QKeyEvent latin(QEvent::KeyPress, *letter, key->modifiers(), {}, key->isAutoRepeat());
    QCoreApplication::sendEvent(watched, &latin);
    event->setAccepted(latin.isAccepted());
    return true;
}
