#include "desktop/harness/wayland/WaylandUser.h"

#include "desktop/harness/HarnessError.h"
#include "virtual-keyboard-unstable-v1-client-protocol.h"
#include "wlr-virtual-pointer-unstable-v1-client-protocol.h"

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

namespace quillmender::harness {

WaylandUser::WaylandUser(const QString &socketPath, QSize screen, const QString &layouts)
    : KeymapUser(layouts),
      client_(socketPath),
      screen_(screen),
      keyboards_(client_.bind<zwp_virtual_keyboard_manager_v1>(
          zwp_virtual_keyboard_manager_v1_interface, 1)),
      keyboard_(zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboards_.get(),
                                                                        client_.seat())),
      pointers_(client_.bind<zwlr_virtual_pointer_manager_v1>(
          zwlr_virtual_pointer_manager_v1_interface, 1)),
      pointer_(
          zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers_.get(), client_.seat())) {
    since_.start();
    const QByteArray text = keymap().text();
    const int file = ::memfd_create("keymap", MFD_CLOEXEC);
    const auto size = static_cast<size_t>(text.size()) + 1;
    if (::write(file, text.constData(), size) != static_cast<ssize_t>(size))
        throw HarnessError(QStringLiteral("no memory for a keymap"));
    zwp_virtual_keyboard_v1_keymap(keyboard_.get(), WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
                                   static_cast<quint32>(size));
    ::close(file);
    client_.roundTrip();
}

void WaylandUser::movePointer(QPoint position) {
    zwlr_virtual_pointer_v1_motion_absolute(
        pointer_.get(), now(), static_cast<quint32>(std::max(0, position.x())),
        static_cast<quint32>(std::max(0, position.y())), static_cast<quint32>(screen_.width()),
        static_cast<quint32>(screen_.height()));
    zwlr_virtual_pointer_v1_frame(pointer_.get());
    client_.roundTrip();
}

void WaylandUser::useLayout(quint32 layout) {
    keymap().lockLayout(layout);
    const Keymap::Modifiers state = keymap().modifiers();
    zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), state.depressed, state.latched, state.locked,
                                      state.group);
    client_.roundTrip();
}

void WaylandUser::sendKey(quint32 code, bool isDown) {
    zwp_virtual_keyboard_v1_key(keyboard_.get(), now(), code, isDown ? 1 : 0);
    // What the keys do to the modifiers is for the client to say.
    const Keymap::Modifiers state = keymap().modifiers();
    zwp_virtual_keyboard_v1_modifiers(keyboard_.get(), state.depressed, state.latched, state.locked,
                                      state.group);
    client_.roundTrip();
}

void WaylandUser::sendButton(quint32 code, bool isDown) {
    zwlr_virtual_pointer_v1_button(pointer_.get(), now(), code, isDown ? 1 : 0);
    zwlr_virtual_pointer_v1_frame(pointer_.get());
    client_.roundTrip();
}

} // namespace quillmender::harness
