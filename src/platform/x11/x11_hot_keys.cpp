#include "platform/x11/x11_hot_keys.h"

#include "platform/modifier_keys.h"
#include "platform/texts.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_key_codes.h"
#include "platform/x11/x11_menus.h"

#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <xcb/xcb.h>

namespace {

constexpr quint32 kKeysymNumLock = 0xff7f;
constexpr quint32 kKeysymAltLeft = 0xffe9;
constexpr quint32 kKeysymAltRight = 0xffea;
constexpr quint32 kKeysymMetaLeft = 0xffe7;
constexpr quint32 kKeysymSuperLeft = 0xffeb;
constexpr quint32 kKeysymSuperRight = 0xffec;

constexpr quint16 kRealModifiers = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 |
                                   XCB_MOD_MASK_2 | XCB_MOD_MASK_3 | XCB_MOD_MASK_4 | XCB_MOD_MASK_5;

} // namespace

X11HotKeys::X11HotKeys() = default;
X11HotKeys::~X11HotKeys() = default; // the server drops the grabs with the connection

Result<void> X11HotKeys::connectToServer()
{
    if (m_connection && m_connection->isBroken()) {
        m_notifier.reset();
        m_connection.reset();
        m_registered.clear();
        m_rawKeys = {};
    }
    if (m_connection)
        return {};
    auto opened = X11Connection::open({});
    if (!opened)
        return std::unexpected(opened.error());
    m_connection = std::move(*opened);
    learnKeyboard();
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection->xcb()),
                                                   QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11HotKeys::readEvents);
    return {};
}

Result<void> X11HotKeys::registerKey(quint32 id, int keyCode, int modifiers)
{
    if (auto open = connectToServer(); !open)
        return open;
    Registered key{id, keyCode, modifiers, keycodeFor(keyCode), xModifiers(modifiers)};
    if (key.keycode == 0)
        return fail(Error::Kind::Unavailable, PlatformTexts::tr("This keyboard has no such key."));
    const auto isSame = [&key](const Registered &other) {
        return other.keycode == key.keycode && other.xModifiers == key.xModifiers;
    };
    if (std::any_of(m_registered.begin(), m_registered.end(), isSame))
        return fail(Error::Kind::Unavailable, PlatformTexts::tr("Lumenpost uses this shortcut already."));
    if (auto grabbed = grab(key); !grabbed)
        return grabbed;
    m_registered.append(key);
    m_rawKeys.listen(*m_connection);
    // What arrived while we waited for the answer wakes no notifier.
    QMetaObject::invokeMethod(this, &X11HotKeys::readEvents, Qt::QueuedConnection);
    return {};
}

void X11HotKeys::unregisterAll()
{
    if (m_connection) {
        for (const Registered &key : std::as_const(m_registered))
            release(key);
        m_rawKeys.stopListening(*m_connection);
        xcb_flush(m_connection->xcb());
    }
    m_registered.clear();
}

void X11HotKeys::readEvents()
{
    if (!m_connection)
        return;
    bool isKeyboardChanged = false;
    while (const XcbOwned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection->xcb())}) {
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS:
        case XCB_KEY_RELEASE: {
            const auto *key = reinterpret_cast<const xcb_key_press_event_t *>(event.get());
            if (key->event == m_connection->root())
                handleKey((event->response_type & 0x7f) == XCB_KEY_PRESS, key->detail, key->state, key->time);
            break;
        }
        case XCB_MAPPING_NOTIFY: {
            const auto *mapping = reinterpret_cast<const xcb_mapping_notify_event_t *>(event.get());
            isKeyboardChanged = isKeyboardChanged || mapping->request != XCB_MAPPING_POINTER;
            break;
        }
        case XCB_GE_GENERIC:
            if (const auto press = m_rawKeys.read(event.get());
                press && find(press->keycode, press->modifiers) && isMenuOpen(*m_connection))
                fire(press->keycode, press->modifiers, press->time);
            break;
        default:
            break;
        }
    }
    if (m_connection->isBroken()) {
        m_notifier->setEnabled(false); // a closed socket would wake it for ever
        return;
    }
    if (isKeyboardChanged) {
        grabAgain();
        readEvents(); // what arrived meanwhile wakes no notifier
    }
}

void X11HotKeys::handleKey(bool isPress, quint8 keycode, quint16 state, quint32 time)
{
    m_rawKeys.follow(isPress, keycode);
    if (!isPress) {
        m_lastRelease = {keycode, time};
        return;
    }
    if (m_lastRelease != KeyEvent{keycode, time}) // else it repeats
        fire(keycode, state, time);
}

const X11HotKeys::Registered *X11HotKeys::find(quint8 keycode, quint16 modifiers) const
{
    const quint16 held = modifiers & kRealModifiers & quint16(~m_numLock);
    const auto found = std::find_if(m_registered.begin(), m_registered.end(), [&](const Registered &key) {
        return key.keycode == keycode && key.xModifiers == held;
    });
    return found == m_registered.end() ? nullptr : &*found;
}

void X11HotKeys::fire(quint8 keycode, quint16 modifiers, quint32 time)
{
    if (std::exchange(m_lastFired, {keycode, time}) == KeyEvent{keycode, time})
        return;
    if (const Registered *key = find(keycode, modifiers))
        Q_EMIT pressed(key->id);
}

void X11HotKeys::learnKeyboard()
{
    xcb_connection_t *xcb = m_connection->xcb();
    const xcb_setup_t *setup = xcb_get_setup(xcb);
    const auto mappingCookie = xcb_get_keyboard_mapping(xcb, setup->min_keycode,
                                                        quint8(setup->max_keycode - setup->min_keycode + 1));
    const auto modifierCookie = xcb_get_modifier_mapping(xcb);
    const XcbOwned<xcb_get_keyboard_mapping_reply_t> mapping(
        xcb_get_keyboard_mapping_reply(xcb, mappingCookie, nullptr));
    const XcbOwned<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(xcb, modifierCookie, nullptr));
    m_keysyms.clear();
    m_keysymsPerKeycode = 0;
    if (mapping) {
        const xcb_keysym_t *first = xcb_get_keyboard_mapping_keysyms(mapping.get());
        m_keysyms = QList<quint32>(first, first + xcb_get_keyboard_mapping_keysyms_length(mapping.get()));
        m_keysymsPerKeycode = mapping->keysyms_per_keycode;
    }

    // The usual places, unless the keyboard says otherwise.
    m_alt = XCB_MOD_MASK_1;
    m_super = XCB_MOD_MASK_4;
    m_numLock = 0;
    if (!modifiers)
        return;
    const auto writes = [&](quint8 keycode, std::initializer_list<quint32> keysyms) {
        for (int column = 0; column < m_keysymsPerKeycode; ++column) {
            const qsizetype at = (keycode - setup->min_keycode) * m_keysymsPerKeycode + column;
            if (at >= 0 && at < m_keysyms.size() &&
                std::ranges::find(keysyms, m_keysyms[at]) != keysyms.end())
                return true;
        }
        return false;
    };
    const xcb_keycode_t *keycodes = xcb_get_modifier_mapping_keycodes(modifiers.get());
    const int perModifier = modifiers->keycodes_per_modifier;
    std::array<quint16, 256> modifierOf{};
    for (int i = 0; i < 8 * perModifier; ++i)
        modifierOf[keycodes[i]] |= quint16(1 << i / perModifier);
    modifierOf[0] = 0; // stands for none
    m_rawKeys.setModifiers(modifierOf);
    for (int modifier = 3; modifier < 8; ++modifier) { // Mod1 to Mod5
        for (int i = 0; i < perModifier; ++i) {
            const quint8 keycode = keycodes[modifier * perModifier + i];
            if (keycode == 0)
                continue;
            const auto bit = quint16(1 << modifier);
            if (writes(keycode, {kKeysymNumLock}))
                m_numLock = bit;
            else if (writes(keycode, {kKeysymAltLeft, kKeysymAltRight, kKeysymMetaLeft}) && modifier == 3)
                m_alt = bit;
            else if (writes(keycode, {kKeysymSuperLeft, kKeysymSuperRight}))
                m_super = bit;
        }
    }
}

// The key that writes the wanted sign, best in the first layout and without the level of a third key; else
// the key in its place on a US keyboard, for layouts of another script.
quint8 X11HotKeys::keycodeFor(int keyCode) const
{
    const auto wanted = x11Key(keyCode);
    if (!wanted)
        return 0;
    const quint8 firstKeycode = xcb_get_setup(m_connection->xcb())->min_keycode;
    const qsizetype keycodes = m_keysymsPerKeycode > 0 ? m_keysyms.size() / m_keysymsPerKeycode : 0;
    for (int column = 0; column < std::min(m_keysymsPerKeycode, 4); ++column) {
        for (qsizetype key = 0; key < keycodes; ++key) {
            if (m_keysyms[key * m_keysymsPerKeycode + column] == wanted->keysym)
                return quint8(firstKeycode + key);
        }
    }
    return keycodes > 0 ? wanted->position : 0;
}

quint16 X11HotKeys::xModifiers(int modifiers) const
{
    const Qt::KeyboardModifiers held = keyboardModifiers(modifiers);
    quint16 bits = 0;
    if (held.testFlag(Qt::ShiftModifier))
        bits |= XCB_MOD_MASK_SHIFT;
    if (held.testFlag(Qt::ControlModifier))
        bits |= XCB_MOD_MASK_CONTROL;
    if (held.testFlag(Qt::AltModifier))
        bits |= m_alt;
    if (held.testFlag(Qt::MetaModifier))
        bits |= m_super;
    return bits;
}

// A grab names the exact state, so one is needed for each state of the locks.
QList<quint16> X11HotKeys::withLocks(quint16 modifiers) const
{
    QList<quint16> states{modifiers, quint16(modifiers | XCB_MOD_MASK_LOCK)};
    if (m_numLock)
        states << quint16(modifiers | m_numLock) << quint16(modifiers | m_numLock | XCB_MOD_MASK_LOCK);
    return states;
}

Result<void> X11HotKeys::grab(const Registered &key)
{
    xcb_connection_t *xcb = m_connection->xcb();
    QList<xcb_void_cookie_t> cookies;
    for (const quint16 state : withLocks(key.xModifiers)) {
        cookies.append(xcb_grab_key_checked(xcb, false, m_connection->root(), state, key.keycode,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    bool isTaken = false;
    for (const xcb_void_cookie_t cookie : std::as_const(cookies)) {
        const XcbOwned<xcb_generic_error_t> error(xcb_request_check(xcb, cookie));
        isTaken = isTaken || error;
    }
    if (!isTaken)
        return {};
    release(key);
    xcb_flush(xcb);
    return fail(Error::Kind::Unavailable, PlatformTexts::tr("Another program has taken this shortcut."));
}

void X11HotKeys::release(const Registered &key)
{
    for (const quint16 state : withLocks(key.xModifiers))
        xcb_ungrab_key(m_connection->xcb(), key.keycode, m_connection->root(), state);
}

// The keyboard has another layout now: the same shortcuts may be other keys.
void X11HotKeys::grabAgain()
{
    for (const Registered &key : std::as_const(m_registered))
        release(key);
    learnKeyboard();
    QList<Registered> kept;
    for (Registered key : std::as_const(m_registered)) {
        key.keycode = keycodeFor(key.keyCode);
        key.xModifiers = xModifiers(key.modifiers);
        if (key.keycode != 0 && grab(key))
            kept.append(key);
    }
    m_registered = kept;
}
