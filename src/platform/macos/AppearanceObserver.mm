#include "platform/macos/AppearanceObserver.h"

@implementation QuillmenderAppearanceObserver

- (instancetype)initWithListener:(std::function<void()>)listener {
    self = [super init];
    if (self == nil)
        return nil;
    listener_ = new std::function<void()>(std::move(listener));
    [[NSApplication sharedApplication] addObserver:self
                                        forKeyPath:@"effectiveAppearance"
                                           options:0
                                           context:nullptr];
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(systemColorsDidChange:)
                                                 name:NSSystemColorsDidChangeNotification
                                               object:nil];
    return self;
}

- (void)stop {
    [[NSApplication sharedApplication] removeObserver:self
                                           forKeyPath:@"effectiveAppearance"
                                              context:nullptr];
    [[NSNotificationCenter defaultCenter] removeObserver:self];
}

- (void)dealloc {
    delete listener_;
    [super dealloc];
}

- (void)observeValueForKeyPath:(NSString *)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id> *)change
                       context:(void *)context {
    (*listener_)();
}

- (void)systemColorsDidChange:(NSNotification *)notification {
    (*listener_)();
}

@end
