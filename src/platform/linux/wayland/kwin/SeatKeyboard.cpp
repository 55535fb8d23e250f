#include "platform/linux/wayland/kwin/SeatKeyboard.h"

#include "platform/linux/wayland/WaylandConnection.h"

#include <sys/mman.h>
#include <unistd.h>

namespace quillmender::kwin {

namespace {

constexpr quint32 highestSeat = 5;
constexpr quint32 longestKeymap = 4 << 20; // a map of four layouts has 60 KB

} // namespace

struct SeatKeyboard::Events {
    static SeatKeyboard &of(void *self) { return *static_cast<SeatKeyboard *>(self); }

    static void capabilities(void *self, wl_seat *, uint32_t capabilities) {
        of(self).handleCapabilities(capabilities);
    }
    static void seatName(void *, wl_seat *, const char *) {}
    static constexpr wl_seat_listener seat{capabilities, seatName};

    static void keymap(void *self, wl_keyboard *, uint32_t format, int32_t descriptor,
                       uint32_t size) {
        of(self).readKeymap(format, descriptor, size);
    }
    static void enter(void *, wl_keyboard *, uint32_t, wl_surface *, wl_array *) {}
    static void leave(void *, wl_keyboard *, uint32_t, wl_surface *) {}
    static void key(void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t) {}
    static void modifiers(void *, wl_keyboard *, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t) {
    }
    static void repeat(void *, wl_keyboard *, int32_t, int32_t) {}
    static constexpr wl_keyboard_listener keyboard{keymap, enter, leave, key, modifiers, repeat};
};

// A seat of its own: an object of the protocol has one listener.
SeatKeyboard::SeatKeyboard(wayland::WaylandConnection &connection)
    : seat_(connection.bind<wl_seat>(wl_seat_interface, highestSeat)) {
    if (seat_)
        wl_seat_add_listener(seat_.get(), &Events::seat, this);
}

void SeatKeyboard::handleCapabilities(quint32 capabilities) {
    const bool hasKeyboard = (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0;
    if (hasKeyboard == (keyboard_ != nullptr))
        return;
    keymap_.clear();
    keyboard_.reset();
    if (!hasKeyboard)
        return;
    keyboard_.reset(wl_seat_get_keyboard(seat_.get()));
    wl_keyboard_add_listener(keyboard_.get(), &Events::keyboard, this);
}

void SeatKeyboard::readKeymap(quint32 format, int descriptor, quint32 size) {
    keymap_.clear();
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 && size > 0 && size <= longestKeymap) {
        void *const mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (mapped != MAP_FAILED) {
            const char *const text = static_cast<const char *>(mapped);
            keymap_ = QByteArray(text, static_cast<qsizetype>(strnlen(text, size)));
            munmap(mapped, size);
        }
    }
    close(descriptor);
}

} // namespace quillmender::kwin
