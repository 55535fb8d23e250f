#pragma once

#include <AppKit/NSWindow.h>

@interface NSPanel : NSWindow
@property(getter=isFloatingPanel) BOOL floatingPanel;
@end
