#include "desktop/harness/gnome/GnomeUser.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace quillmender::harness {

GnomeUser::GnomeUser(const QDBusConnection &bus, const QString &layouts)
    : KeymapUser(layouts),
      control_(bus),
      eyes_(bus) {
    // The shell makes the keyboard when its first key is pressed.
    press(XKB_KEY_Shift_L);
    release(XKB_KEY_Shift_L);
}

void GnomeUser::movePointer(QPoint position) {
    // Places are known only to who has a stream of the picture. So it goes to the corner first.
    constexpr double furtherThanAnyScreen = -20000;
    const auto move = [this](double x, double y) {
        control_.call(QStringLiteral("NotifyPointerMotionRelative"), {x, y});
    };
    move(furtherThanAnyScreen, furtherThanAnyScreen);
    move(position.x(), position.y());
}

void GnomeUser::useLayout(quint32 layout) {
    eyes_.tell(QStringLiteral("UseLayout"), layout);
    keymap().lockLayout(layout);
}

void GnomeUser::sendKey(quint32 code, bool isDown) {
    control_.call(QStringLiteral("NotifyKeyboardKeycode"), {code, isDown});
}

void GnomeUser::sendButton(quint32 code, bool isDown) {
    control_.call(QStringLiteral("NotifyPointerButton"), {static_cast<int>(code), isDown});
}

} // namespace quillmender::harness
