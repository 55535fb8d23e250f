#pragma once

#include "platform/linux/WindowSystemServices.h"

namespace quillmender::wayland {

/// The services of a Wayland compositor, each by what this one offers. A service that it cannot
/// give is null, and among the missing ones. Without a compositor everything is missing.
WindowSystemServices makeWindowSystem(const WindowSystemNeeds &needs);

} // namespace quillmender::wayland
