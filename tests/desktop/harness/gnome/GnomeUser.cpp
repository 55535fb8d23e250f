#include "desktop/harness/gnome/GnomeUser.h"

#include <QRect>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace quillmender::harness {

GnomeUser::GnomeUser(const QDBusConnection &bus, QSize screen, const QString &layouts)
    : KeymapUser(layouts),
      control_(bus),
      eyes_(bus),
      screen_(screen) {
    // The shell makes the keyboard when its first key is pressed and the mouse when it first moves;
    // a program that has to hear of them first misses what they do meanwhile.
    press(XKB_KEY_Shift_L);
    release(XKB_KEY_Shift_L);
    movePointer(QRect(QPoint(), screen).center());
}

void GnomeUser::movePointer(QPoint position) {
    // Places are known only to who has a stream of the picture. So it goes to a corner first: the
    // lower one, since the upper one opens the overview.
    constexpr double furtherThanAnyScreen = 20000;
    const auto move = [this](double x, double y) {
        control_.call(QStringLiteral("NotifyPointerMotionRelative"), {x, y});
    };
    move(-furtherThanAnyScreen, furtherThanAnyScreen);
    move(position.x(), position.y() - (screen_.height() - 1));
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
