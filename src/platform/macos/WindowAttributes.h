#pragma once

#import <AppKit/AppKit.h>

namespace quillmender {

/// The floating panel: titled and closable over its whole face, above other windows, in whichever
/// space or full-screen application is in front. The content stays where it is.
void applyPanelAttributes(NSWindow *window);

/// An ordinary window of fixed size that can be closed and miniaturised. The content stays where it
/// is.
void applyWindowAttributes(NSWindow *window);

/// The points at the top of the content that are under the title bar.
CGFloat coveredHeight(NSWindow *window);

} // namespace quillmender
