#pragma once

#include "platform/linux/wayland/kwin/HeldModifiers.h"

#include <QObject>

#include <chrono>
#include <memory>

namespace quillmender::wayland {

class KeyboardWatch;
class Toplevels;

/// The modifiers where a compositor tells of them nobody but the window that has the keyboard. What
/// a window of ours heard when it let go of the keyboard is believed for a moment. Where that says
/// nothing, a window without anything in it takes the keyboard for as long as one of them is down,
/// and lets go of it again.
class FocusedModifiers : public QObject, public kwin::HeldModifiers {
    Q_OBJECT

  public:
    /// How long after it what was heard last is believed.
    static constexpr std::chrono::milliseconds freshness{500};

    /// The windows tell when the keyboard is back where it was. Both outlive the object.
    FocusedModifiers(const KeyboardWatch &keyboard, const Toplevels &toplevels);

    /// Completes when the keyboard is back with the window that had it, or does not come back.
    QCoro::Task<std::optional<QString>> waitUntilUp() override;

  private:
    QCoro::Task<std::optional<QString>> listen();

    const KeyboardWatch &keyboard_;
    const Toplevels &toplevels_;
};

} // namespace quillmender::wayland
