#pragma once

#include "platform/StatusItem.h"

#import <AppKit/AppKit.h>

/// The target of every item of a status menu: runs the handler whose index is the item's tag.
@interface QuillmenderMenuTarget : NSObject {
    QList<quillmender::StatusMenuItem> *items_;
}
- (instancetype)initWithItems:(const QList<quillmender::StatusMenuItem> &)items;
- (void)performItem:(NSMenuItem *)sender;
@end
