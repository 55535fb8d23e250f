#include "platform/linux/wayland/own/SeatKeyboard.h"

#include "platform/linux/wayland/RoundTrip.h"

#include <span>
#include <unistd.h>
#include <utility>

namespace quillmender::wayland {

namespace {

constexpr quint32 codeOfFirst = 8; ///< what X11 and the toolkit add to evdev's codes

// Caps Lock and Num Lock do not matter to a shortcut.
constexpr quint32 locks = 1U << 1 | 1U << 4;

quint32 toolkitCode(quint32 evdevCode) {
    return evdevCode + codeOfFirst;
}

} // namespace

struct SeatKeyboard::Events {
    static SeatKeyboard &of(void *self) { return *static_cast<SeatKeyboard *>(self); }

    static void capabilities(void *self, wl_seat *, uint32_t capabilities) {
        of(self).setCapabilities(capabilities);
    }
    static void name(void *, wl_seat *, const char *) {}
    static constexpr wl_seat_listener seat{capabilities, name};

    static void keymap(void *, wl_keyboard *, uint32_t, int32_t file, uint32_t) { close(file); }
    static void enter(void *self, wl_keyboard *, uint32_t, wl_surface *, wl_array *keys) {
        of(self).enter(*keys);
    }
    static void leave(void *self, wl_keyboard *, uint32_t, wl_surface *) { of(self).leave(); }
    static void key(void *self, wl_keyboard *, uint32_t, uint32_t, uint32_t code, uint32_t state) {
        of(self).setKey(toolkitCode(code), state != WL_KEYBOARD_KEY_STATE_RELEASED);
    }
    static void modifiers(void *self, wl_keyboard *, uint32_t, uint32_t depressed, uint32_t latched,
                          uint32_t locked, uint32_t group) {
        of(self).setModifiers((depressed | latched | locked) & ~locks, group);
    }
    static void repeatInfo(void *, wl_keyboard *, int32_t, int32_t) {}
    static constexpr wl_keyboard_listener keyboard{keymap, enter,     leave,
                                                   key,    modifiers, repeatInfo};
};

SeatKeyboard::SeatKeyboard(wl_display *display, Proxy<wl_seat> seat)
    : display_(display),
      seat_(std::move(seat)),
      description_(std::make_unique<RoundTrip>(display)) {
    wl_seat_add_listener(seat_.get(), &Events::seat, this);
}

SeatKeyboard::~SeatKeyboard() = default;

bool SeatKeyboard::isAwaited() const {
    return !description_->isOver();
}

void SeatKeyboard::setCapabilities(quint32 capabilities) {
    const bool isThere = capabilities & WL_SEAT_CAPABILITY_KEYBOARD;
    if (isThere && !keyboard_) {
        keyboard_.reset(wl_seat_get_keyboard(seat_.get()));
        wl_keyboard_add_listener(keyboard_.get(), &Events::keyboard, this);
        description_ = std::make_unique<RoundTrip>(display_);
    } else if (!isThere && keyboard_) {
        keyboard_.reset();
        leave();
    }
}

void SeatKeyboard::enter(const wl_array &keys) {
    downAtEntry_.clear();
    const std::span codes(static_cast<const uint32_t *>(keys.data), keys.size / sizeof(uint32_t));
    for (const uint32_t code : codes)
        downAtEntry_.insert(toolkitCode(code));
    down_ = downAtEntry_;
    modifiers_.reset();
    isHere_ = true;
    Q_EMIT entered();
}

void SeatKeyboard::setKey(quint32 code, bool isDown) {
    if (isDown) {
        down_.insert(code);
    } else {
        down_.remove(code);
        downAtEntry_.remove(code);
    }
}

void SeatKeyboard::setModifiers(quint32 mixing, quint32 layout) {
    modifiers_ = mixing;
    layout_ = layout;
    Q_EMIT modifiersTold();
}

void SeatKeyboard::leave() {
    down_.clear();
    leftAt_ = std::chrono::steady_clock::now();
    isHere_ = false;
}

} // namespace quillmender::wayland
