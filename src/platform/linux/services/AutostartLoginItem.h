#pragma once

#include "platform/LoginItem.h"

namespace quillmender {

/// The login item as a file of the user's autostart folder, as freedesktop.org's autostart standard
/// has it: `$XDG_CONFIG_HOME/autostart/com.quillmender.Quillmender.desktop`. It counts instead of
/// an administrator's file of that name in `$XDG_CONFIG_DIRS`.
///
/// - not found: no desktop can start the program (see `installedProgram()`);
/// - requires approval: the file has `Hidden=true` or `X-GNOME-Autostart-enabled=false`, with which
///   the desktop's own tools switch a program off. Registering leaves that switch alone;
/// - enabled: there is a file whose program can be executed;
/// - not registered: anything else.
///
/// Files are replaced whole and atomically; a symbolic link is replaced, never written through.
class AutostartLoginItem : public LoginItem {
  public:
    LoginItemStatus status() override;
    std::optional<QString> registerItem() override;

    /// Where an administrator's file would count again, one that says no takes the place of ours.
    std::optional<QString> unregisterItem() override;

    /// The desktop's page of start-up programs, else the autostart folder in the file manager.
    void openSystemSettings() override;
};

} // namespace quillmender
