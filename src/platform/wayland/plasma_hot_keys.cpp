#include "platform/wayland/plasma_hot_keys.h"

#include "platform/modifier_keys.h"
#include "platform/texts.h"
#include "platform/wayland/seat_keymap.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QKeySequence>
#include <algorithm>

namespace {

constexpr int kPatience = 1000; // milliseconds
constexpr uint kInUse = 2;      // the program runs
constexpr uint kAsTold = 4;     // what was set at an earlier start doesn't count
const QString kService = QStringLiteral("org.kde.kglobalaccel");
const QString kComponent = QStringLiteral("com.oakfenrow.lumenpost");

struct KeyRow {
    int keyCode;
    int key;
};

constexpr KeyRow kKeys[] = {
    {0, Qt::Key_A},
    {11, Qt::Key_B},
    {8, Qt::Key_C},
    {2, Qt::Key_D},
    {14, Qt::Key_E},
    {3, Qt::Key_F},
    {5, Qt::Key_G},
    {4, Qt::Key_H},
    {34, Qt::Key_I},
    {38, Qt::Key_J},
    {40, Qt::Key_K},
    {37, Qt::Key_L},
    {46, Qt::Key_M},
    {45, Qt::Key_N},
    {31, Qt::Key_O},
    {35, Qt::Key_P},
    {12, Qt::Key_Q},
    {15, Qt::Key_R},
    {1, Qt::Key_S},
    {17, Qt::Key_T},
    {32, Qt::Key_U},
    {9, Qt::Key_V},
    {13, Qt::Key_W},
    {7, Qt::Key_X},
    {16, Qt::Key_Y},
    {6, Qt::Key_Z},
    {29, Qt::Key_0},
    {18, Qt::Key_1},
    {19, Qt::Key_2},
    {20, Qt::Key_3},
    {21, Qt::Key_4},
    {23, Qt::Key_5},
    {22, Qt::Key_6},
    {26, Qt::Key_7},
    {28, Qt::Key_8},
    {25, Qt::Key_9},
    {49, Qt::Key_Space},
    {36, Qt::Key_Return},
    {48, Qt::Key_Tab},
    {53, Qt::Key_Escape},
    {51, Qt::Key_Backspace},
    {123, Qt::Key_Left},
    {124, Qt::Key_Right},
    {126, Qt::Key_Up},
    {125, Qt::Key_Down},
    {27, Qt::Key_Minus},
    {24, Qt::Key_Equal},
    {33, Qt::Key_BracketLeft},
    {30, Qt::Key_BracketRight},
    {41, Qt::Key_Semicolon},
    {39, Qt::Key_Apostrophe},
    {43, Qt::Key_Comma},
    {47, Qt::Key_Period},
    {44, Qt::Key_Slash},
    {42, Qt::Key_Backslash},
    {50, Qt::Key_QuoteLeft},
    {122, Qt::Key_F1},
    {120, Qt::Key_F2},
    {99, Qt::Key_F3},
    {118, Qt::Key_F4},
    {96, Qt::Key_F5},
    {97, Qt::Key_F6},
    {98, Qt::Key_F7},
    {100, Qt::Key_F8},
    {101, Qt::Key_F9},
    {109, Qt::Key_F10},
    {103, Qt::Key_F11},
    {111, Qt::Key_F12},
    {105, Qt::Key_Print},
};

QDBusMessage call(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kService, QStringLiteral("/kglobalaccel"),
                                                          QStringLiteral("org.kde.KGlobalAccel"), method);
    message.setArguments(arguments);
    return message;
}

// All that the desktop may take the combination for: with Shift, a digit or sign comes as the one above it on
// its key, and Shift is used up.
QList<int> asPressed(int key)
{
    QList<int> all{key};
    const int plain = key & ~int(Qt::KeyboardModifierMask);
    const bool isSign = plain > ' ' && plain <= '~' && (plain < 'A' || plain > 'Z');
    if (isSign && (key & Qt::ShiftModifier) != 0) {
        const char32_t shifted = shiftedSign(char32_t(plain));
        if (shifted > ' ' && shifted != char32_t(plain))
            all.append((key & int(Qt::KeyboardModifierMask) & ~int(Qt::ShiftModifier)) |
                       int(QChar::toUpper(shifted)));
    }
    return all;
}

std::unexpected<Error> taken()
{
    return fail(Error::Kind::Unavailable, PlatformTexts::tr("Another program has taken this shortcut."));
}

} // namespace

PlasmaHotKeys::PlasmaHotKeys()
    : m_keeper(std::make_unique<QDBusServiceWatcher>(kService, QDBusConnection::sessionBus(),
                                                     QDBusServiceWatcher::WatchForRegistration))
{
    connect(m_keeper.get(), &QDBusServiceWatcher::serviceRegistered, this, &PlasmaHotKeys::takeAgain);
}

PlasmaHotKeys::~PlasmaHotKeys()
{
    unregisterAll();
}

// The same at each start, so that one that a killed program left behind is taken over.
QString PlasmaHotKeys::actionOf(int key)
{
    return QStringLiteral("key-%1").arg(key, 0, 16);
}

QStringList PlasmaHotKeys::wholeNameOf(int key)
{
    return {kComponent, actionOf(key), QStringLiteral("Lumenpost"),
            QKeySequence(key).toString(QKeySequence::NativeText)};
}

Result<void> PlasmaHotKeys::registerKey(quint32 id, int keyCode, int modifiers)
{
    const auto *row = std::ranges::find(kKeys, keyCode, &KeyRow::keyCode);
    if (row == std::end(kKeys))
        return fail(Error::Kind::Unavailable, PlatformTexts::tr("This keyboard has no such key."));
    const int key = row->key | int(keyboardModifiers(modifiers).toInt());
    if (std::ranges::find(m_registered, key, &Registered::key) != m_registered.end())
        return taken();
    if (const auto done = take(key); !done)
        return done;
    m_registered.append({id, key});
    return {};
}

Result<void> PlasmaHotKeys::take(int key)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (m_isSilent)
        return fail(Error::Kind::Unavailable, PlatformTexts::tr("The desktop doesn't answer."));
    bus.send(call(QStringLiteral("doRegister"), {wholeNameOf(key)}));
    const QDBusReply<QList<int>> set =
        bus.call(call(QStringLiteral("setShortcut"),
                      {wholeNameOf(key), QVariant::fromValue(asPressed(key)), kInUse | kAsTold}),
                 QDBus::Block, kPatience);
    if (!set.isValid()) {
        m_isSilent = true;
        return fail(Error::Kind::Unavailable, PlatformTexts::tr("The desktop doesn't answer."),
                    set.error().message());
    }
    if (!set.value().contains(key)) {
        bus.send(call(QStringLiteral("unregister"), {kComponent, actionOf(key)}));
        return taken();
    }
    listen();
    return {};
}

void PlasmaHotKeys::listen()
{
    if (m_isListening)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusReply<QDBusObjectPath> place =
        bus.call(call(QStringLiteral("getComponent"), {kComponent}), QDBus::Block, kPatience);
    m_isListening =
        place.isValid() &&
        bus.connect(kService, place.value().path(), QStringLiteral("org.kde.kglobalaccel.Component"),
                    QStringLiteral("globalShortcutPressed"), this, SLOT(tell(QString, QString, qlonglong)));
}

void PlasmaHotKeys::takeAgain()
{
    m_isSilent = false;
    const QList<Registered> before = std::exchange(m_registered, {});
    for (const Registered &each : before) {
        if (take(each.key))
            m_registered.append(each);
    }
}

void PlasmaHotKeys::unregisterAll()
{
    m_isSilent = false;
    for (const Registered &each : std::exchange(m_registered, {}))
        QDBusConnection::sessionBus().send(
            call(QStringLiteral("unregister"), {kComponent, actionOf(each.key)}));
}

void PlasmaHotKeys::tell(const QString &, const QString &action, qlonglong)
{
    const auto found =
        std::ranges::find(m_registered, action, [](const Registered &each) { return actionOf(each.key); });
    if (found != m_registered.end())
        Q_EMIT pressed(found->id);
}
