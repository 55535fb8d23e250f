#pragma once

#include <AppKit/NSView.h>

@class NSImage;

@interface NSButton : NSView
@property(strong) NSImage *image;
@end
