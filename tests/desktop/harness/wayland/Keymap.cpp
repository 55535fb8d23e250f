#include "desktop/harness/wayland/Keymap.h"

#include "desktop/harness/HarnessError.h"

#include <cstdlib>

namespace quillmender::harness {

Keymap::Keymap(const QString &layouts) : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    const QByteArray layout = layouts.toLatin1();
    xkb_rule_names names{};
    names.rules = "evdev";
    names.model = "pc105";
    names.layout = layout.constData();
    keymap_.reset(xkb_keymap_new_from_names(context_.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap_)
        throw HarnessError(QStringLiteral("no keyboard with the layout %1").arg(layouts));
    state_.reset(xkb_state_new(keymap_.get()));
}

QByteArray Keymap::text() const {
    char *text = xkb_keymap_get_as_string(keymap_.get(), XKB_KEYMAP_FORMAT_TEXT_V1);
    const QByteArray copy(text);
    std::free(text);
    return copy;
}

std::optional<Keymap::Stroke> Keymap::find(xkb_keysym_t symbol, xkb_layout_index_t layout) const {
    constexpr xkb_level_index_t levels = 4;
    const xkb_keycode_t last = xkb_keymap_max_keycode(keymap_.get());
    for (xkb_level_index_t level = 0; level < levels; ++level) {
        for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap_.get()); key <= last; ++key) {
            const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap_.get(), key);
            if (layouts == 0)
                continue;
            const xkb_keysym_t *symbols = nullptr;
            const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout % layouts,
                                                               level, &symbols);
            if (count == 1 && symbols[0] == symbol)
                return Stroke{key, level};
        }
    }
    return std::nullopt;
}

void Keymap::lockLayout(xkb_layout_index_t layout) {
    const Modifiers now = modifiers();
    xkb_state_update_mask(state_.get(), now.depressed, now.latched, now.locked, 0, 0, layout);
}

Keymap::Modifiers Keymap::modifiers() const {
    return {xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_DEPRESSED),
            xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LATCHED),
            xkb_state_serialize_mods(state_.get(), XKB_STATE_MODS_LOCKED), layout()};
}

bool Keymap::isLocked(const char *modifier) const {
    return xkb_state_mod_name_is_active(state_.get(), modifier, XKB_STATE_MODS_LOCKED) > 0;
}

xkb_layout_index_t Keymap::layout() const {
    return xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE);
}

} // namespace quillmender::harness
