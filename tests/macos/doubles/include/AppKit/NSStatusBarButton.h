#pragma once

#include <AppKit/NSButton.h>

@interface NSStatusBarButton : NSButton
@end
