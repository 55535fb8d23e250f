#include "platform/macos/MacWorkspace.h"

#include "platform/macos/MacRunningApplication.h"
#include "platform/macos/ObjcText.h"

namespace quillmender {

namespace {

constexpr NSApplicationActivationOptions noOptions = 0;

QUrl linkTo(SettingsPage page) {
    switch (page) {
    case SettingsPage::accessibility:
        return QUrl(QStringLiteral(
            "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));
    }
    return {};
}

} // namespace

MacWorkspace::MacWorkspace() {
    @autoreleasepool {
        workspace_ = ObjcRef<NSWorkspace>::retained([NSWorkspace sharedWorkspace]);
        observer_ = ObjcRef<QuillmenderActivationObserver>::adopted(
            [[QuillmenderActivationObserver alloc] initWithWorkspace:workspace_.get()]);
    }
}

MacWorkspace::~MacWorkspace() {
    @autoreleasepool {
        [observer_.get() stop];
    }
}

RunningApplicationRef MacWorkspace::frontmostApplication() {
    @autoreleasepool {
        NSRunningApplication *const application = [observer_.get() frontmostOther];
        if (application == nil)
            return nullptr;
        return std::make_shared<const MacRunningApplication>(application);
    }
}

bool MacWorkspace::activate(RunningApplicationRef application) {
    const auto *running = dynamic_cast<const MacRunningApplication *>(application.get());
    if (running == nullptr)
        return false;
    @autoreleasepool {
        return [running->get() activateWithOptions:noOptions];
    }
}

std::optional<DesktopRect> MacWorkspace::windowFrame(RunningApplicationRef) {
    return std::nullopt;
}

bool MacWorkspace::openUrl(const QUrl &url) {
    @autoreleasepool {
        const QString encoded = QString::fromLatin1(url.toEncoded());
        NSURL *const target = [NSURL URLWithString:toNSString(encoded).get()];
        if (target == nil)
            return false;
        return [workspace_.get() openURL:target];
    }
}

bool MacWorkspace::openSettingsPage(SettingsPage page) {
    return openUrl(linkTo(page));
}

} // namespace quillmender
