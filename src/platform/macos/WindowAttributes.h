#pragma once

#import <AppKit/AppKit.h>

namespace quillmender {

/// The floating panel: titled and closable over its whole face, above other windows, in whichever
/// space or full-screen application is in front. The content keeps its size.
void applyPanelAttributes(NSWindow *window);

/// An ordinary window of fixed size that can be closed and miniaturised. The content keeps its
/// size.
void applyWindowAttributes(NSWindow *window);

} // namespace quillmender
