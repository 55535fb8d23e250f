#pragma once

#include "platform/linux/WindowSystemServices.h"

namespace quillmender {

/// The services of an X server. A service that this server cannot give is null, and among the
/// missing ones. Without a server, or without XFixes, everything is missing.
WindowSystemServices x11WindowSystem(std::function<QIcon()> windowIcon);

} // namespace quillmender
