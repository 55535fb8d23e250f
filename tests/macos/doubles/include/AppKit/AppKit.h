#pragma once

// A double of the framework: what the program uses of it, with its real names, selectors and
// values.

#include <AppKit/NSAppearance.h>
#include <AppKit/NSApplication.h>
#include <AppKit/NSBitmapImageRep.h>
#include <AppKit/NSButton.h>
#include <AppKit/NSColor.h>
#include <AppKit/NSColorSpace.h>
#include <AppKit/NSEvent.h>
#include <AppKit/NSFontDescriptor.h>
#include <AppKit/NSGraphics.h>
#include <AppKit/NSGraphicsContext.h>
#include <AppKit/NSImage.h>
#include <AppKit/NSMenu.h>
#include <AppKit/NSMenuItem.h>
#include <AppKit/NSPanel.h>
#include <AppKit/NSPasteboard.h>
#include <AppKit/NSPasteboardItem.h>
#include <AppKit/NSRunningApplication.h>
#include <AppKit/NSStatusBar.h>
#include <AppKit/NSStatusBarButton.h>
#include <AppKit/NSStatusItem.h>
#include <AppKit/NSView.h>
#include <AppKit/NSWindow.h>
#include <AppKit/NSWorkspace.h>
#include <Foundation/Foundation.h>
