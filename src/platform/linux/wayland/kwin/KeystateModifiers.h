#pragma once

#include "platform/linux/wayland/kwin/HeldModifiers.h"

#include <memory>

namespace quillmender::wayland {
class WaylandConnection;
}

namespace quillmender::kwin {

/// The modifiers as org_kde_kwin_keystate (version 5) tells of them, whoever has the keyboard.
/// Listens only while somebody waits, so that the user's typing wakes nobody.
class KeystateModifiers : public HeldModifiers {
  public:
    /// Null when the compositor does not offer it to this program, or too old a version.
    static std::unique_ptr<KeystateModifiers> create(wayland::WaylandConnection &connection);

    QCoro::Task<std::optional<QString>> waitUntilUp() override;

  private:
    explicit KeystateModifiers(wayland::WaylandConnection &connection) : connection_(connection) {}

    wayland::WaylandConnection &connection_;
};

} // namespace quillmender::kwin
