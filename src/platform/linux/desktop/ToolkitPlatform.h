#pragma once

namespace quillmender {

/// Has the toolkit speak to the session's own window system: in a Wayland session it would else
/// take the X server beside the compositor on some desktops, where nothing of other programs is
/// seen. What the user has chosen (`QT_QPA_PLATFORM`) stays. Before the application object.
void chooseToolkitPlatform();

/// Programs that are started later make their own choice. After the application object.
void forgetToolkitPlatform();

} // namespace quillmender
