#include "platform/Platform.h"
#include "platform/QtClock.h"
#include "platform/macos/BundleVersion.h"
#include "platform/macos/MacAccessibilityAccess.h"
#include "platform/macos/MacAppearance.h"
#include "platform/macos/MacChords.h"
#include "platform/macos/MacFocusedText.h"
#include "platform/macos/MacHotKeys.h"
#include "platform/macos/MacInstance.h"
#include "platform/macos/MacLoginItem.h"
#include "platform/macos/MacOwnWindows.h"
#include "platform/macos/MacPasteboard.h"
#include "platform/macos/MacSecrets.h"
#include "platform/macos/MacStatusItem.h"
#include "platform/macos/MacSymbols.h"
#include "platform/macos/MacUserDefaults.h"
#include "platform/macos/MacWorkspace.h"

#include <QLoggingCategory>

namespace quillmender {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.platform", QtWarningMsg)
} // namespace

std::unique_ptr<Platform> makePlatform() {
    auto platform = std::make_unique<Platform>();
    platform->clock = std::make_unique<QtClock>();
    platform->instance = std::make_unique<MacInstance>();
    platform->userDefaults = std::make_unique<MacUserDefaults>();
    platform->secrets = std::make_unique<MacSecrets>();
    platform->loginItem = std::make_unique<MacLoginItem>();
    platform->workspace = std::make_unique<MacWorkspace>();
    platform->accessibilityAccess = std::make_unique<MacAccessibilityAccess>();
    platform->focusedText = std::make_unique<MacFocusedText>();
    platform->pasteboard = std::make_unique<MacPasteboard>();
    platform->chords = std::make_unique<MacChords>();
    platform->hotKeys = std::make_unique<MacHotKeys>();
    platform->ownWindows = std::make_unique<MacOwnWindows>();
    platform->symbols = std::make_unique<MacSymbols>();
    platform->appearance = std::make_unique<MacAppearance>();
    platform->statusItem = std::make_unique<MacStatusItem>();
    platform->bundleVersion = bundleVersion();
    qCInfo(log, "window system: AppKit; accessibility: AX; secrets: keychain");
    return platform;
}

} // namespace quillmender
