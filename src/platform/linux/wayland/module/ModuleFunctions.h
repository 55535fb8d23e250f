#pragma once

#include "platform/linux/WindowSystemServices.h"

namespace quillmender::wayland {

/// Where the module is, beside its folder's other files, and what the program finds in it by name.
/// The first function is called by the program that it was built with; the second also by an older
/// one that is still running when a newer module has taken the place of its own, and so has nothing
/// but plain types.
inline constexpr auto moduleFile = "wayland.so";

using MakeWindowSystem = void(WindowSystemServices &services, const WindowSystemNeeds &needs);
inline constexpr auto makeWindowSystemName = "quillmender_make_wayland_window_system";

using ServeClipboard = int(int argc, char *argv[]);
inline constexpr auto serveClipboardName = "quillmender_serve_clipboard";

} // namespace quillmender::wayland
