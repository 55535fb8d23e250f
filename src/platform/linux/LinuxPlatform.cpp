#include "platform/Platform.h"
#include "platform/QtClock.h"
#include "platform/linux/WindowSystemServices.h"
#include "platform/linux/atspi/ActiveFrames.h"
#include "platform/linux/atspi/AtspiAccess.h"
#include "platform/linux/atspi/AtspiFocusedText.h"
#include "platform/linux/atspi/FrameProcesses.h"
#include "platform/linux/desktop/ToolkitPlatform.h"
#include "platform/linux/services/AutostartLoginItem.h"
#include "platform/linux/services/Badge.h"
#include "platform/linux/services/DesktopInstance.h"
#include "platform/linux/services/DrawnSymbols.h"
#include "platform/linux/services/PortalAppearance.h"
#include "platform/linux/services/SecretServiceSecrets.h"
#include "platform/linux/services/SettingsFile.h"
#include "platform/linux/services/TrayStatusItem.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <malloc.h>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.platform", QtWarningMsg)

// What the services refer to beyond each other.
struct Shared {
    atspi::AtspiBus accessibilityBus{QDBusConnection::sessionBus()};
    atspi::FrameProcesses frameProcesses{accessibilityBus};
    std::unique_ptr<atspi::ActiveFrames> activeFrames; ///< where they are wanted
    std::shared_ptr<void> windowSystem;
    std::unique_ptr<FrontmostSource> frontmost;
    std::unique_ptr<WindowSystemTray> tray;
};

} // namespace

std::unique_ptr<Platform> makePlatform() {
    forgetToolkitPlatform();
    const auto shared = std::make_shared<Shared>();
    WindowSystemServices windowSystem = chooseWindowSystem(
        QGuiApplication::platformName(),
        {.windowIcon = [] { return badge(QString(programSymbol)); },
         .findProcess =
             [&processes = shared->frameProcesses](QString title, QString appId) {
                 return processes.processOfActive(std::move(title), std::move(appId));
             },
         .frontWindows = [everything = shared.get()]() -> FrontWindows & {
             if (!everything->activeFrames)
                 everything->activeFrames =
                     std::make_unique<atspi::ActiveFrames>(everything->accessibilityBus);
             return *everything->activeFrames;
         }});
    qCInfo(log, "texts: AT-SPI");
    qCInfo(log, "secrets: Secret Service");

    shared->windowSystem = std::move(windowSystem.shared);
    shared->frontmost = std::move(windowSystem.frontmost);
    shared->tray = std::move(windowSystem.tray);

    auto platform = std::make_unique<Platform>();
    platform->shared = shared;
    platform->clock = std::make_unique<QtClock>();
    platform->instance = std::make_unique<DesktopInstance>();
    platform->userDefaults = std::make_unique<SettingsFile>();
    platform->secrets = std::make_unique<SecretServiceSecrets>();
    platform->loginItem = std::make_unique<AutostartLoginItem>();
    platform->workspace = std::move(windowSystem.workspace);
    platform->accessibilityAccess = std::make_unique<atspi::AtspiAccess>(shared->accessibilityBus);
    platform->focusedText =
        std::make_unique<atspi::AtspiFocusedText>(*shared->frontmost, shared->accessibilityBus);
    platform->pasteboard = std::move(windowSystem.pasteboard);
    platform->chords = std::move(windowSystem.chords);
    platform->hotKeys = std::move(windowSystem.hotKeys);
    platform->ownWindows = std::move(windowSystem.ownWindows);
    platform->symbols = std::make_unique<DrawnSymbols>();
    platform->appearance = std::make_unique<PortalAppearance>();
    platform->statusItem =
        std::make_unique<TrayStatusItem>(*platform->appearance, shared->tray.get());
    platform->prepareMore = [frontmost = shared->frontmost.get()] {
        return frontmost->prepareMore();
    };
    platform->giveMemoryBack = [] { malloc_trim(0); };
    platform->missing = std::move(windowSystem.missing);
    platform->bundleVersion = QStringLiteral(QUILLMENDER_VERSION);
    return platform;
}

} // namespace quillmender
