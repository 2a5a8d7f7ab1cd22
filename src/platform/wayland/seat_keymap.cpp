#include "platform/wayland/seat_keymap.h"

#include "platform/wayland/wayland_connection.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

namespace {

struct Told {
    bool isOver = false;
    QByteArray keymap;
};

const wl_keyboard_listener kKeyboard = [] {
    wl_keyboard_listener all{};
    all.keymap = [](void *data, wl_keyboard *, uint32_t format, int32_t file, uint32_t size) {
        auto &told = *static_cast<Told *>(data);
        told.isOver = true;
        void *text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (text != MAP_FAILED && format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
            told.keymap = QByteArray(static_cast<const char *>(text), qsizetype(size));
        if (text != MAP_FAILED)
            munmap(text, size);
        close(file);
    };
    all.enter = [](void *, wl_keyboard *, uint32_t, wl_surface *, wl_array *) {};
    all.leave = [](void *, wl_keyboard *, uint32_t, wl_surface *) {};
    all.key = [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t) {};
    all.modifiers = [](void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t) {};
    all.repeat_info = [](void *, wl_keyboard *, int32_t, int32_t) {};
    return all;
}();

const wl_seat_listener kSeat{
    .capabilities =
        [](void *data, wl_seat *seat, uint32_t able) {
            if ((able & WL_SEAT_CAPABILITY_KEYBOARD) != 0)
                wl_keyboard_add_listener(wl_seat_get_keyboard(seat), &kKeyboard, data);
            else
                static_cast<Told *>(data)->isOver = true;
        },
    .name = [](void *, wl_seat *, const char *) {},
};

QByteArray keymapOfSeat()
{
    Told told;
    const auto connection = WaylandConnection::open();
    if (!connection)
        return {};
    auto *seat = (*connection)->bind<wl_seat>(wl_seat_interface, 4);
    if (!seat)
        return {};
    wl_seat_add_listener(seat, &kSeat, &told);
    (*connection)->waitFor([&told] { return told.isOver; });
    return told.keymap; // the connection's end ends what was bound on it
}

} // namespace

char32_t shiftedSign(char32_t sign)
{
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref);
    const QByteArray text = keymapOfSeat();
    const std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap(
        text.isEmpty() ? nullptr
                       : xkb_keymap_new_from_string(context.get(), text.constData(),
                                                    XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS),
        &xkb_keymap_unref);
    if (!keymap)
        return 0;
    const auto signAt = [&](xkb_keycode_t key, xkb_level_index_t level) -> char32_t {
        const xkb_keysym_t *symbols = nullptr;
        const int count = xkb_keymap_key_get_syms_by_level(keymap.get(), key, 0, level, &symbols);
        return count == 1 ? xkb_keysym_to_utf32(symbols[0]) : 0;
    };
    for (auto key = xkb_keymap_min_keycode(keymap.get()); key <= xkb_keymap_max_keycode(keymap.get());
         ++key) {
        if (signAt(key, 0) == sign)
            return signAt(key, 1);
    }
    return 0;
}
