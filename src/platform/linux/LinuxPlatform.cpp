#include "platform/Platform.h"
#include "platform/QtClock.h"
#include "platform/linux/NoFrontmostSource.h"
#include "platform/linux/atspi/AtspiAccessibility.h"
#include "platform/linux/services/AutostartLoginItem.h"
#include "platform/linux/services/DesktopInstance.h"
#include "platform/linux/services/LinuxPresence.h"
#include "platform/linux/services/SecretServiceItems.h"
#include "platform/linux/services/SettingsFile.h"
#include "platform/linux/x11/X11Services.h"
#include "platform/none/NoneChords.h"
#include "platform/none/NoneHotKeys.h"
#include "platform/none/NonePasteboard.h"
#include "platform/none/NoneWorkspace.h"

#include <QLoggingCategory>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.platform", QtWarningMsg)

// What the services refer to beyond each other.
struct Shared {
    NoFrontmostSource noFrontmost;
    std::unique_ptr<X11Services> x11;
};

void addWindowSystem(Platform &platform, Shared &shared) {
    if (X11Services *x11 = shared.x11.get()) {
        platform.workspace = std::move(x11->workspace);
        platform.pasteboard = std::move(x11->pasteboard);
        platform.chords = std::move(x11->chords);
        platform.hotKeys = std::move(x11->hotKeys);
    } else {
        platform.workspace = std::make_unique<NoneWorkspace>();
        platform.pasteboard = std::make_unique<NonePasteboard>();
        platform.chords = std::make_unique<NoneChords>();
        platform.hotKeys = std::make_unique<NoneHotKeys>();
    }
}

} // namespace

std::unique_ptr<Platform> makePlatform() {
    const auto shared = std::make_shared<Shared>();
    shared->x11 = X11Services::create();
    qCInfo(log, "window system: %s; accessibility: AT-SPI; secrets: Secret Service",
           shared->x11 ? "X11" : "none");

    auto platform = std::make_unique<Platform>();
    platform->shared = shared;
    platform->clock = std::make_unique<QtClock>();
    platform->instance = std::make_unique<DesktopInstance>();
    platform->userDefaults = std::make_unique<SettingsFile>();
    platform->secretItems = std::make_unique<SecretServiceItems>();
    platform->loginItem = std::make_unique<AutostartLoginItem>();
    addWindowSystem(*platform, *shared);

    FrontmostSource *frontmost = &shared->noFrontmost;
    WindowSystem *windowSystem = nullptr;
    if (shared->x11) {
        frontmost = shared->x11->frontmost.get();
        windowSystem = shared->x11->windowSystem.get();
    }
    platform->accessibility = std::make_unique<AtspiAccessibility>(*frontmost);
    platform->presence = std::make_unique<LinuxPresence>(windowSystem);
    platform->bundleVersion = QStringLiteral(QUILLMENDER_VERSION);
    return platform;
}

} // namespace quillmender
