#pragma once

#include <QString>

namespace quillmender {

/// The user's folder of programs that start with the session, as freedesktop.org's autostart
/// standard has it: `$XDG_CONFIG_HOME/autostart`. It need not exist.
QString autostartFolder();

} // namespace quillmender
