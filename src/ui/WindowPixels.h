#pragma once

class QWidget;

namespace quillmender {

class OwnWindows;

/// Gives the picture of a hidden window back to the system: some megabytes, shared with the window
/// system, which the toolkit would keep. The next show paints the whole window.
void releasePixels(const QWidget &window);

/// Has the room for that picture before it is drawn. For a window with a native one.
void reservePixels(const QWidget &window, OwnWindows &ownWindows);

} // namespace quillmender
