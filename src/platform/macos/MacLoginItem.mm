#include "platform/macos/MacLoginItem.h"

#include "platform/macos/ObjcText.h"

namespace quillmender {

namespace {

std::optional<QString> failure(BOOL succeeded, NSError *error) {
    if (succeeded)
        return std::nullopt;
    return toQString([error localizedDescription]);
}

} // namespace

MacLoginItem::MacLoginItem() {
    @autoreleasepool {
        service_ = ObjcRef<SMAppService>::retained([SMAppService mainAppService]);
    }
}

LoginItemStatus MacLoginItem::status() {
    @autoreleasepool {
        return static_cast<LoginItemStatus>([service_.get() status]);
    }
}

std::optional<QString> MacLoginItem::registerItem() {
    @autoreleasepool {
        NSError *error = nil;
        const BOOL succeeded = [service_.get() registerAndReturnError:&error];
        return failure(succeeded, error);
    }
}

std::optional<QString> MacLoginItem::unregisterItem() {
    @autoreleasepool {
        NSError *error = nil;
        const BOOL succeeded = [service_.get() unregisterAndReturnError:&error];
        return failure(succeeded, error);
    }
}

void MacLoginItem::openSystemSettings() {
    @autoreleasepool {
        [SMAppService openSystemSettingsLoginItems];
    }
}

} // namespace quillmender
