#include "platform/linux/x11/keys/ChordKeys.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/keys/X11Keymap.h"

#include <xcb/xtest.h>

#include <utility>

namespace quillmender::x11 {

ChordKeys::ChordKeys(X11Connection &connection, X11Keymap &keymap)
    : connection_(&connection),
      keymap_(keymap) {}

ChordKeys::~ChordKeys() {
    release();
}

bool ChordKeys::hold(xkb_keysym_t modifier) {
    if (!connection_)
        return false;
    const auto position = keymap_.find(modifier);
    if (!position || keymap_.hasStickyKeys())
        return false;
    send(XCB_KEY_PRESS, position->key);
    modifier_ = position->key;
    return true;
}

bool ChordKeys::canPress(xkb_keysym_t modifier, xkb_keysym_t key) {
    return connection_ && keymap_.find(modifier) && keymap_.find(key);
}

void ChordKeys::press(xkb_keysym_t modifier, xkb_keysym_t key) {
    const auto modifierPosition = keymap_.find(modifier);
    const auto position = keymap_.find(key);
    if (!modifierPosition || !position)
        return;
    key_ = position->key;
    if (position->group) {
        groupBefore_ = keymap_.activeGroup();
        keymap_.lockGroup(*position->group);
    }
    if (keymap_.hasStickyKeys()) {
        // Two keys at a time would switch the user's sticky keys off, and a modifier that is locked
        // would be unlocked by its key.
        locksBefore_ = keymap_.lockedModifiers();
        keymap_.lockModifiers(static_cast<quint8>(keymap_.modifierOf(modifier)));
    } else if (!modifier_) {
        send(XCB_KEY_PRESS, modifierPosition->key);
        modifier_ = modifierPosition->key;
    }
    send(XCB_KEY_PRESS, *key_);
}

void ChordKeys::release() {
    if (!connection_ || (!modifier_ && !key_))
        return;
    if (const auto key = std::exchange(key_, std::nullopt))
        send(XCB_KEY_RELEASE, *key);
    if (const auto locks = std::exchange(locksBefore_, std::nullopt))
        keymap_.lockModifiers(*locks);
    if (const auto modifier = std::exchange(modifier_, std::nullopt))
        send(XCB_KEY_RELEASE, *modifier);
    if (const auto group = std::exchange(groupBefore_, std::nullopt))
        keymap_.lockGroup(*group);
    xcb_flush(connection_->xcb());
}

void ChordKeys::retire() {
    release();
    connection_.clear();
}

void ChordKeys::tap(xkb_keysym_t key) {
    const auto position = keymap_.find(key);
    if (!position)
        return;
    send(XCB_KEY_PRESS, position->key);
    send(XCB_KEY_RELEASE, position->key);
}

void ChordKeys::send(quint8 type, xcb_keycode_t key) {
    xcb_test_fake_input(connection_->xcb(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
}

} // namespace quillmender::x11
