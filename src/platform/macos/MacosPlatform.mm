#include "platform/Platform.h"
#include "platform/QtClock.h"
#include "platform/macos/BundleVersion.h"
#include "platform/macos/MacAccessibility.h"
#include "platform/macos/MacChords.h"
#include "platform/macos/MacHotKeys.h"
#include "platform/macos/MacInstance.h"
#include "platform/macos/MacLoginItem.h"
#include "platform/macos/MacPasteboard.h"
#include "platform/macos/MacPresence.h"
#include "platform/macos/MacSecretItems.h"
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
    platform->secretItems = std::make_unique<MacSecretItems>();
    platform->loginItem = std::make_unique<MacLoginItem>();
    platform->workspace = std::make_unique<MacWorkspace>();
    platform->accessibility = std::make_unique<MacAccessibility>();
    platform->pasteboard = std::make_unique<MacPasteboard>();
    platform->chords = std::make_unique<MacChords>();
    platform->hotKeys = std::make_unique<MacHotKeys>();
    platform->presence = std::make_unique<MacPresence>();
    platform->bundleVersion = bundleVersion();
    qCInfo(log, "window system: AppKit; accessibility: AX; secrets: keychain");
    return platform;
}

} // namespace quillmender
