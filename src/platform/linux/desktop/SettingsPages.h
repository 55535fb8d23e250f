#pragma once

#include "platform/Workspace.h"

#include <QString>
#include <QStringList>

namespace quillmender {

enum class DesktopPage {
    loginItems,    ///< which programs start with the session
    accessibility, ///< what assistive programs may do
};

/// The pages of the desktop's own settings program. Which desktop this is comes from
/// `XDG_CURRENT_DESKTOP`, which program shows the page from what is installed.
namespace settingsPages {

/// The program, by its absolute path, and its arguments; empty when the desktop has no such page.
/// The login items of a desktop without one are the folder of autostart files in its file manager.
QStringList command(DesktopPage page);

/// Starts that program, detached. False when there is none or it cannot be started.
bool open(DesktopPage page);

/// The same for a page that the program names.
bool open(SettingsPage page);

} // namespace settingsPages

} // namespace quillmender
