#pragma once

#include <Foundation/Foundation.h>

@class NSMenu;
@class NSStatusBarButton;

@interface NSStatusItem : NSObject
@property(readonly, strong) NSStatusBarButton *button;
@property(strong) NSMenu *menu;
@end
