#include "platform/linux/x11/keys/X11Keymap.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/Xcb.h"

#include <algorithm>
#include <array>

// A member of one of its structs is called as a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitParts
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif
#include <xkbcommon/xkbcommon-x11.h>

namespace quillmender::x11 {

X11Keymap::X11Keymap(X11Connection &connection)
    : connection_(connection),
      context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    const int isReady = xkb_x11_setup_xkb_extension(
        connection_.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent_, nullptr);
    if (isReady == 0) {
        qCWarning(x11Log, "the X server has no XKB");
        return;
    }
    // Not the state: it changes with each modifier that the user presses.
    constexpr quint16 events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr quint16 parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                              XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                              XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts,
                          parts, nullptr);
    // A held key then repeats as presses alone, so that only its real release is one.
    constexpr quint32 repeats = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_discard_reply(connection_.xcb(),
                      xcb_xkb_per_client_flags(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD, repeats,
                                               repeats, 0, 0, 0)
                          .sequence);
    connect(&connection_, &X11Connection::eventReceived, this, &X11Keymap::handleEvent);
}

X11Keymap::~X11Keymap() {
    xkb_keymap_unref(keymap_);
    xkb_context_unref(context_);
}

void X11Keymap::handleEvent(const xcb_generic_event_t *event) {
    const quint8 type = eventType(event);
    // The second byte of XKB's events says which one it is.
    const bool isXkbChange =
        firstEvent_ != 0 && type == firstEvent_ &&
        (event->pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event->pad0 == XCB_XKB_MAP_NOTIFY);
    if (!isXkbChange && type != XCB_MAPPING_NOTIFY)
        return;
    if (isStale_)
        return;
    // They come in bursts; one look at the keyboard is enough for all.
    isStale_ = true;
    QMetaObject::invokeMethod(this, &X11Keymap::changed, Qt::QueuedConnection);
}

void X11Keymap::load() {
    if (!isStale_)
        return;
    isStale_ = false;
    xkb_keymap_unref(keymap_);
    const qint32 device = xkb_x11_get_core_keyboard_device_id(connection_.xcb());
    keymap_ = firstEvent_ == 0 ? nullptr
                               : xkb_x11_keymap_new_from_device(context_, connection_.xcb(), device,
                                                                XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (keymap_ == nullptr)
        qCWarning(x11Log, "the keyboard map cannot be read");

    modifierMap_.clear();
    const auto reply = replyTo(connection_.xcb(), xcb_get_modifier_mapping_reply,
                               xcb_get_modifier_mapping(connection_.xcb()));
    if (!reply)
        return;
    const xcb_keycode_t *const keys = xcb_get_modifier_mapping_keycodes(reply.get());
    const qsizetype perModifier = reply->keycodes_per_modifier;
    for (qsizetype modifier = 0; modifier < 8; ++modifier) {
        QList<xcb_keycode_t> row(keys + modifier * perModifier,
                                 keys + (modifier + 1) * perModifier);
        row.removeAll(0);
        modifierMap_.append(row);
    }
}

bool X11Keymap::types(xcb_keycode_t key, quint32 group, xkb_keysym_t symbol) const {
    const xkb_keysym_t *symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap_, key, group, 0, &symbols);
    return count == 1 && symbols[0] == symbol;
}

std::optional<KeyPosition> X11Keymap::find(xkb_keysym_t symbol) {
    load();
    if (keymap_ == nullptr)
        return std::nullopt;
    const quint8 active = activeGroup();
    std::optional<KeyPosition> best;
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap_), 255);
    for (xkb_keycode_t each = xkb_keymap_min_keycode(keymap_); each <= last; ++each) {
        const auto key = static_cast<xcb_keycode_t>(each);
        const quint32 groups = xkb_keymap_num_layouts_for_key(keymap_, key);
        if (groups == 0)
            continue;
        // A key with fewer groups than the keyboard wraps around.
        if (types(key, active % groups, symbol))
            return KeyPosition{key, std::nullopt};
        for (quint32 group = 0; group < groups; ++group) {
            const bool isBetter = !best || group < *best->group;
            if (isBetter && types(key, group, symbol))
                best = KeyPosition{key, static_cast<quint8>(group)};
        }
    }
    return best;
}

QList<xcb_keycode_t> X11Keymap::keysOf(xkb_keysym_t symbol) {
    load();
    QList<xcb_keycode_t> keys;
    if (keymap_ == nullptr)
        return keys;
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap_), 255);
    for (xkb_keycode_t each = xkb_keymap_min_keycode(keymap_); each <= last; ++each) {
        const auto key = static_cast<xcb_keycode_t>(each);
        const quint32 groups = xkb_keymap_num_layouts_for_key(keymap_, key);
        for (quint32 group = 0; group < groups; ++group) {
            if (types(key, group, symbol)) {
                keys.append(key);
                break;
            }
        }
    }
    return keys;
}

quint16 X11Keymap::modifierOf(xkb_keysym_t symbol) {
    const QList<xcb_keycode_t> keys = keysOf(symbol);
    for (int modifier = 0; modifier < modifierMap_.size(); ++modifier) {
        if (std::ranges::any_of(keys,
                                [&](auto key) { return modifierMap_[modifier].contains(key); }))
            return static_cast<quint16>(1U << modifier);
    }
    return 0;
}

QList<xcb_keycode_t> X11Keymap::modifierKeys() {
    load();
    QList<xcb_keycode_t> locks;
    for (const xkb_keysym_t symbol : {XKB_KEY_Caps_Lock, XKB_KEY_Shift_Lock, XKB_KEY_Num_Lock,
                                      XKB_KEY_Scroll_Lock, XKB_KEY_ISO_Level3_Lock})
        locks += keysOf(static_cast<xkb_keysym_t>(symbol));
    QList<xcb_keycode_t> keys;
    for (const QList<xcb_keycode_t> &row : modifierMap_) {
        for (const xcb_keycode_t key : row) {
            if (!locks.contains(key))
                keys.append(key);
        }
    }
    return keys;
}

quint8 X11Keymap::activeGroup() const {
    if (firstEvent_ == 0)
        return 0;
    const auto state = replyTo(connection_.xcb(), xcb_xkb_get_state_reply,
                               xcb_xkb_get_state(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    return state ? state->group : 0;
}

void X11Keymap::lockGroup(quint8 group) {
    xcb_xkb_latch_lock_state(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
}

bool X11Keymap::hasStickyKeys() const {
    if (firstEvent_ == 0)
        return false;
    const auto controls = replyTo(connection_.xcb(), xcb_xkb_get_controls_reply,
                                  xcb_xkb_get_controls(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    return controls && (controls->enabledControls & XCB_XKB_BOOL_CTRL_STICKY_KEYS) != 0;
}

quint8 X11Keymap::modifiersWithoutLamp() {
    quint16 withLamp = XCB_MOD_MASK_LOCK;
    for (const xkb_keysym_t lock : {XKB_KEY_Num_Lock, XKB_KEY_Scroll_Lock})
        withLamp |= modifierOf(lock);
    return static_cast<quint8>(~withLamp);
}

quint8 X11Keymap::lockedModifiers() {
    const auto state = replyTo(connection_.xcb(), xcb_xkb_get_state_reply,
                               xcb_xkb_get_state(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    return state ? state->lockedMods & modifiersWithoutLamp() : 0;
}

void X11Keymap::lockModifiers(quint8 modifiers) {
    xcb_xkb_latch_lock_state(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD, modifiersWithoutLamp(),
                             modifiers, 0, 0, 0, 0, 0);
}

} // namespace quillmender::x11
