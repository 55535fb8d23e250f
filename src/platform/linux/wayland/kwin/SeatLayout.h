#pragma once

#include "platform/linux/wayland/kwin/ChordCodes.h"

#include <QCoroTask>
#include <QDBusConnection>

namespace quillmender::kwin {

class SeatKeyboard;

/// Finds the keys of a combination on the keyboard as it is at the moment. The active layout is
/// told by `org.kde.KeyboardLayouts`; who does not answer it in a quarter of a second has the first
/// one.
class SeatLayout {
  public:
    /// The keyboard outlives this object.
    SeatLayout(const SeatKeyboard &keyboard, QDBusConnection bus)
        : keyboard_(keyboard),
          bus_(std::move(bus)) {}

    /// What is asked for is complete when it is called: the object may go meanwhile.
    QCoro::Task<ChordCodes> codesOf(wayland::TypedKeys keys) const;

  private:
    const SeatKeyboard &keyboard_;
    QDBusConnection bus_;
};

} // namespace quillmender::kwin
