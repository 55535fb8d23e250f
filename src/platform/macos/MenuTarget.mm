#include "platform/macos/MenuTarget.h"

@implementation QuillmenderMenuTarget

- (instancetype)initWithItems:(const QList<quillmender::StatusMenuItem> &)items {
    self = [super init];
    if (self != nil)
        items_ = new QList<quillmender::StatusMenuItem>(items);
    return self;
}

- (void)dealloc {
    delete items_;
    [super dealloc];
}

- (void)performItem:(NSMenuItem *)sender {
    // A copy, since the handler may put another menu in the place of this one.
    const auto handler = items_->value([sender tag]).handler;
    if (handler)
        handler();
}

@end
