#include "shell/shortcut_words.h"

#include "platform/modifier_keys.h"
#include "ui/shortcut_text.h"

#include <QKeyEvent>
#include <array>

namespace {

struct KeyRow {
    int keyCode; // as KeyCombo stores it
    int qtKey;
    quint32 position; // scan code on a US keyboard, as X tells it; 0 where what it writes is enough
};

constexpr quint32 kFirstDigit = 10, kLastDigit = 19; // scan codes of the keys 1 to 0

// Letters and digits are their own Qt keys.
constexpr std::array kKeys{
    KeyRow{0, 'A', 0},   KeyRow{11, 'B', 0},  KeyRow{8, 'C', 0},   KeyRow{2, 'D', 0},   KeyRow{14, 'E', 0},
    KeyRow{3, 'F', 0},   KeyRow{5, 'G', 0},   KeyRow{4, 'H', 0},   KeyRow{34, 'I', 0},  KeyRow{38, 'J', 0},
    KeyRow{40, 'K', 0},  KeyRow{37, 'L', 0},  KeyRow{46, 'M', 0},  KeyRow{45, 'N', 0},  KeyRow{31, 'O', 0},
    KeyRow{35, 'P', 0},  KeyRow{12, 'Q', 0},  KeyRow{15, 'R', 0},  KeyRow{1, 'S', 0},   KeyRow{17, 'T', 0},
    KeyRow{32, 'U', 0},  KeyRow{9, 'V', 0},   KeyRow{13, 'W', 0},  KeyRow{7, 'X', 0},   KeyRow{16, 'Y', 0},
    KeyRow{6, 'Z', 0},   KeyRow{29, '0', 19}, KeyRow{18, '1', 10}, KeyRow{19, '2', 11}, KeyRow{20, '3', 12},
    KeyRow{21, '4', 13}, KeyRow{23, '5', 14}, KeyRow{22, '6', 15}, KeyRow{26, '7', 16}, KeyRow{28, '8', 17},
    KeyRow{25, '9', 18}, KeyRow{27, '-', 20}, KeyRow{24, '=', 21}, KeyRow{33, '[', 34}, KeyRow{30, ']', 35},
    KeyRow{41, ';', 47}, KeyRow{39, '\'', 48}, KeyRow{43, ',', 59}, KeyRow{47, '.', 60}, KeyRow{44, '/', 61},
    KeyRow{42, '\\', 51}, KeyRow{50, '`', 49},
    KeyRow{49, Qt::Key_Space, 0},     KeyRow{36, Qt::Key_Return, 0},  KeyRow{36, Qt::Key_Enter, 0},
    KeyRow{48, Qt::Key_Tab, 0},       KeyRow{48, Qt::Key_Backtab, 0}, KeyRow{51, Qt::Key_Backspace, 0},
    KeyRow{123, Qt::Key_Left, 0},     KeyRow{124, Qt::Key_Right, 0},  KeyRow{126, Qt::Key_Up, 0},
    KeyRow{125, Qt::Key_Down, 0},     KeyRow{122, Qt::Key_F1, 0},     KeyRow{120, Qt::Key_F2, 0},
    KeyRow{99, Qt::Key_F3, 0},        KeyRow{118, Qt::Key_F4, 0},     KeyRow{96, Qt::Key_F5, 0},
    KeyRow{97, Qt::Key_F6, 0},        KeyRow{98, Qt::Key_F7, 0},      KeyRow{100, Qt::Key_F8, 0},
    KeyRow{101, Qt::Key_F9, 0},       KeyRow{109, Qt::Key_F10, 0},    KeyRow{103, Qt::Key_F11, 0},
    KeyRow{111, Qt::Key_F12, 0},      KeyRow{KeyCombo::kPrint, Qt::Key_Print, 0},
    KeyRow{KeyCombo::kPrint, Qt::Key_SysReq, 0},
};

} // namespace

QString keyWord(const KeyCombo &combo)
{
    return shortcutText(KeyCombo::keyName(combo.keyCode));
}

QString shortcutWords(const KeyCombo &combo)
{
    QStringList words;
    for (const ModifierKey &key : {kModifierKeys[0], kModifierKeys[3], kModifierKeys[1], kModifierKeys[2]}) {
        if (combo.carbonModifiers & key.flag)
            words += QString::fromLatin1(key.word);
    }
    const QString key = keyWord(combo);
    words += key.isEmpty() ? QStringLiteral("Key%1").arg(combo.keyCode) : key;
    return words.join(QLatin1Char('+'));
}

std::optional<KeyCombo> comboOf(const QKeyEvent &event)
{
    const int modifiers = modifierFlags(event.modifiers());
    const auto first = [modifiers](const auto &matches) -> std::optional<KeyCombo> {
        const auto *found = std::find_if(kKeys.begin(), kKeys.end(), matches);
        return found == kKeys.end() ? std::nullopt : std::optional(KeyCombo{found->keyCode, modifiers});
    };
    // The row of digits writes signs with Shift, and without it on some layouts.
    const quint32 position = event.nativeScanCode();
    if (position >= kFirstDigit && position <= kLastDigit)
        return first([position](const KeyRow &row) { return row.position == position; });
    if (const auto combo = first([&event](const KeyRow &row) { return row.qtKey == event.key(); }))
        return combo;
    return first([position](const KeyRow &row) { return row.position != 0 && row.position == position; });
}
