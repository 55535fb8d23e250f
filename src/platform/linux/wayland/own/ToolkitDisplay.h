#pragma once

struct wl_display;

namespace quillmender::wayland {

/// The toolkit's own connection to the compositor: only there is told of the keyboard what concerns
/// the toolkit's windows. Null where the toolkit speaks something else, or keeps it to itself.
wl_display *toolkitDisplay();

} // namespace quillmender::wayland
