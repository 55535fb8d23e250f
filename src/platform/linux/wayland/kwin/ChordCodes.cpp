#include "platform/linux/wayland/kwin/ChordCodes.h"

#include <linux/input-event-codes.h>
#include <memory>
#include <optional>
#include <xkbcommon/xkbcommon.h>

namespace quillmender::kwin {

namespace {

struct Unref {
    void operator()(xkb_context *context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap *keymap) const { xkb_keymap_unref(keymap); }
};
using Context = std::unique_ptr<xkb_context, Unref>;
using Keymap = std::unique_ptr<xkb_keymap, Unref>;

constexpr quint32 firstCode = 8; // by so much XKB's numbers are above the kernel's

struct Wanted {
    xkb_keysym_t symbol;
    quint32 usualCode;
};

Keymap keymapOf(const QByteArray &text) {
    const Context context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    if (!context || text.isEmpty())
        return nullptr;
    return Keymap(xkb_keymap_new_from_buffer(
        context.get(), text.constData(), static_cast<std::size_t>(text.size()),
        XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
}

bool bears(xkb_keymap *keymap, xkb_keycode_t code, xkb_layout_index_t layout, xkb_keysym_t symbol) {
    const xkb_keysym_t *symbols = nullptr;
    return xkb_keymap_key_get_syms_by_level(keymap, code, layout, 0, &symbols) == 1 &&
           *symbols == symbol;
}

std::optional<quint32> codeIn(xkb_keymap *keymap, xkb_layout_index_t layout, const Wanted &wanted) {
    // Where several keys bear it, such as a second one of a keypad, the usual one is meant.
    if (bears(keymap, wanted.usualCode + firstCode, layout, wanted.symbol))
        return wanted.usualCode;
    const xkb_keycode_t highest = xkb_keymap_max_keycode(keymap);
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap); code <= highest; ++code)
        if (bears(keymap, code, layout, wanted.symbol))
            return code - firstCode;
    return std::nullopt;
}

quint32 codeOf(xkb_keymap *keymap, xkb_layout_index_t active, const Wanted &wanted) {
    if (!keymap)
        return wanted.usualCode;
    if (const auto code = codeIn(keymap, active, wanted))
        return *code;
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts(keymap);
    for (xkb_layout_index_t layout = 0; layout < layouts; ++layout)
        if (const auto code = codeIn(keymap, layout, wanted))
            return *code;
    return wanted.usualCode;
}

} // namespace

ChordCodes codesOf(wayland::TypedKeys keys, const QByteArray &text, quint32 layout) {
    constexpr Wanted control{XKB_KEY_Control_L, KEY_LEFTCTRL};
    constexpr Wanted shift{XKB_KEY_Shift_L, KEY_LEFTSHIFT};
    constexpr Wanted c{XKB_KEY_c, KEY_C};
    constexpr Wanted v{XKB_KEY_v, KEY_V};
    constexpr Wanted insert{XKB_KEY_Insert, KEY_INSERT};
    const Keymap keymap = keymapOf(text);
    const auto code = [&](const Wanted &wanted) { return codeOf(keymap.get(), layout, wanted); };
    switch (keys) {
    case wayland::TypedKeys::controlC:
        return {code(control), code(c)};
    case wayland::TypedKeys::controlV:
        return {code(control), code(v)};
    case wayland::TypedKeys::shiftInsert:
        break;
    }
    return {code(shift), code(insert)};
}

} // namespace quillmender::kwin
