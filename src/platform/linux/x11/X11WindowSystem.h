#pragma once

#include "platform/linux/WindowSystemServices.h"

namespace quillmender::x11 {

/// The services of an X server. A service that this server cannot give is null, and among the
/// missing ones. Without a server, or without XFixes, everything is missing.
WindowSystemServices makeWindowSystem(std::function<QIcon()> windowIcon);

} // namespace quillmender::x11
