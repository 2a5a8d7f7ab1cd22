#include "platform/x11/x11_key_map.h"

#include "platform/texts.h"
#include "platform/x11/x11_connection.h"
#include "platform/x11/x11_key_codes.h"

#include <xcb/xcb.h>
// This C header has a member with the name of a keyword.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#pragma clang diagnostic pop
#include <xkbcommon/xkbcommon-x11.h>

namespace {

template <auto release>
struct Unref {
    template <typename T>
    void operator()(T *held) const
    {
        release(held);
    }
};
using Context = std::unique_ptr<xkb_context, Unref<xkb_context_unref>>;
using KeyMap = std::unique_ptr<xkb_keymap, Unref<xkb_keymap_unref>>;
using State = std::unique_ptr<xkb_state, Unref<xkb_state_unref>>;

constexpr quint16 kEvents =
    XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
constexpr quint16 kMapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                              XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                              XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;

class XkbKeyMap : public X11KeyMap {
public:
    XkbKeyMap(const X11Connection &connection, quint8 firstEvent)
        : m_xcb(connection.xcb()),
          m_firstEvent(firstEvent),
          m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)),
          m_device(xkb_x11_get_core_keyboard_device_id(m_xcb))
    {
        const quint16 all = kEvents;
        const xcb_xkb_select_events_details_t details{};
        xcb_xkb_select_events_aux(m_xcb, quint16(m_device), all, 0, all, kMapParts, kMapParts, &details);
        learn();
    }

    bool isComplete() const { return m_state && m_shifted; }

    bool read(const void *event) override
    {
        struct Any {
            quint8 responseType;
            quint8 xkbType;
        };
        const auto *any = static_cast<const Any *>(event);
        if ((any->responseType & 0x7f) != m_firstEvent)
            return false;
        if (any->xkbType == XCB_XKB_STATE_NOTIFY) {
            const auto *state = static_cast<const xcb_xkb_state_notify_event_t *>(event);
            xkb_state_update_mask(m_state.get(), state->baseMods, state->latchedMods, state->lockedMods,
                                  xkb_layout_index_t(state->baseGroup),
                                  xkb_layout_index_t(state->latchedGroup), state->lockedGroup);
        } else if (any->xkbType == XCB_XKB_MAP_NOTIFY || any->xkbType == XCB_XKB_NEW_KEYBOARD_NOTIFY) {
            learn();
        }
        return true;
    }

    KeyStroke stroke(quint8 keycode) const override
    {
        KeyStroke stroke;
        const auto isDown = [this](const char *modifier) {
            return xkb_state_mod_name_is_active(
                       m_state.get(), modifier,
                       xkb_state_component(XKB_STATE_MODS_DEPRESSED | XKB_STATE_MODS_LATCHED)) > 0;
        };
        stroke.modifiers.setFlag(Qt::ShiftModifier, isDown(XKB_MOD_NAME_SHIFT));
        stroke.modifiers.setFlag(Qt::ControlModifier, isDown(XKB_MOD_NAME_CTRL));
        stroke.modifiers.setFlag(Qt::AltModifier, isDown(XKB_MOD_NAME_ALT));
        stroke.modifiers.setFlag(Qt::MetaModifier, isDown(XKB_MOD_NAME_LOGO));

        const xkb_layout_index_t layout =
            xkb_state_serialize_layout(m_state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
        const xkb_mod_index_t shift = xkb_keymap_mod_get_index(m_keymap.get(), XKB_MOD_NAME_SHIFT);
        const bool isShifted = stroke.modifiers.testFlag(Qt::ShiftModifier);
        xkb_state_update_mask(m_shifted.get(), isShifted && shift != XKB_MOD_INVALID ? 1u << shift : 0, 0, 0,
                              0, 0, layout);
        stroke.keyCode = programKeyCode(baseSymbol(keycode, layout)).value_or(-1);
        char utf8[16] = {};
        xkb_state_key_get_utf8(m_shifted.get(), keycode, utf8, sizeof utf8);
        const QString written = QString::fromUtf8(utf8);
        if (!written.isEmpty() && written.front().isPrint())
            stroke.character = written;
        return stroke;
    }

private:
    void learn()
    {
        m_keymap.reset(
            xkb_x11_keymap_new_from_device(m_context.get(), m_xcb, m_device, XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (!m_keymap)
            return;
        m_state.reset(xkb_x11_state_new_from_device(m_keymap.get(), m_xcb, m_device));
        m_shifted.reset(xkb_state_new(m_keymap.get()));
    }

    quint32 baseSymbol(quint8 keycode, xkb_layout_index_t layout) const
    {
        const xkb_keysym_t *symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(m_keymap.get(), keycode, layout, 0, &symbols);
        return count > 0 ? symbols[0] : XKB_KEY_NoSymbol;
    }

    xcb_connection_t *m_xcb;
    quint8 m_firstEvent;
    Context m_context;
    int m_device;
    KeyMap m_keymap;
    State m_state;
    State m_shifted; // with no modifier but Shift
};

} // namespace

Result<std::unique_ptr<X11KeyMap>> X11KeyMap::open(const X11Connection &connection)
{
    quint8 firstEvent = 0;
    const bool isThere = xkb_x11_setup_xkb_extension(
        connection.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr);
    if (isThere) {
        auto map = std::make_unique<XkbKeyMap>(connection, firstEvent);
        if (map->isComplete())
            return map;
    }
    return fail(Error::Kind::Unavailable,
                PlatformTexts::tr("This display doesn't tell its keyboard layout."));
}
