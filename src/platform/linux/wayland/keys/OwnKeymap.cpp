#include "platform/linux/wayland/keys/OwnKeymap.h"

#include <cstdlib>

namespace quillmender::wayland {

std::optional<OwnKeymap> OwnKeymap::make(const QByteArray &layout) {
    xkb_context *const context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    if (!context)
        return std::nullopt;
    xkb_context_set_log_level(context, XKB_LOG_LEVEL_CRITICAL);
    xkb_rule_names names{};
    // Without a name it is the one of the environment.
    if (!layout.isEmpty()) {
        names = {.rules = "evdev",
                 .model = "pc105",
                 .layout = layout.constData(),
                 .variant = "",
                 .options = ""};
    }
    xkb_keymap *const keymap =
        xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    xkb_context_unref(context);
    if (!keymap)
        return std::nullopt;
    return OwnKeymap(keymap);
}

QList<quint32> OwnKeymap::keysOf(xkb_keysym_t symbol) const {
    QList<quint32> keys;
    const xkb_layout_index_t layouts = xkb_keymap_num_layouts(keymap_.get());
    for (xkb_layout_index_t layout = 0; layout < layouts && keys.isEmpty(); ++layout) {
        for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap_.get());
             key <= xkb_keymap_max_keycode(keymap_.get()); ++key) {
            const xkb_keysym_t *symbols = nullptr;
            const int count =
                xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout, 0, &symbols);
            if (count == 1 && symbols[0] == symbol)
                keys.append(key - codeOffset);
        }
    }
    return keys;
}

quint32 OwnKeymap::modifier(const char *name) const {
    const xkb_mod_index_t index = xkb_keymap_mod_get_index(keymap_.get(), name);
    return index == XKB_MOD_INVALID ? 0 : quint32{1} << index;
}

QByteArray OwnKeymap::text() const {
    char *const text = xkb_keymap_get_as_string(keymap_.get(), XKB_KEYMAP_FORMAT_TEXT_V1);
    QByteArray bytes(text);
    std::free(text);
    bytes.append('\0');
    return bytes;
}

} // namespace quillmender::wayland
