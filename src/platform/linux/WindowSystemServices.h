#pragma once

#include "platform/Capabilities.h"
#include "platform/Chords.h"
#include "platform/HotKeys.h"
#include "platform/OwnWindows.h"
#include "platform/Pasteboard.h"
#include "platform/Workspace.h"
#include "platform/linux/BridgedClipboard.h"
#include "platform/linux/FrontWindows.h"
#include "platform/linux/FrontmostSource.h"
#include "platform/linux/WindowSystemTray.h"

#include <QIcon>

#include <chrono>
#include <functional>
#include <memory>

namespace quillmender {

/// What the session's window system offers, each by the backend that was chosen for it.
struct WindowSystemServices {
    QString name; ///< empty when the window system is none that is known here

    /// Keeps alive what the services share, such as a connection.
    std::shared_ptr<void> shared;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<Pasteboard> pasteboard;
    std::unique_ptr<Chords> chords;
    std::unique_ptr<HotKeys> hotKeys;
    std::unique_ptr<OwnWindows> ownWindows;
    std::unique_ptr<FrontmostSource> frontmost;
    std::unique_ptr<WindowSystemTray> tray; ///< null where trays are on the session bus alone

    /// How each capability comes about, for the log, or why it is missing, for the user.
    QMap<Capability, QString> backends;
    MissingCapabilities missing;
};

/// What a window system needs of others.
struct WindowSystemNeeds {
    /// Makes the icon of our windows, where the window system is told of one.
    std::function<QIcon()> windowIcon{};

    /// The process of the active window with that title and application id, where the window
    /// system does not tell; 0 when nobody can.
    std::function<QCoro::Task<qint64>(QString title, QString appId)> findProcess{};

    /// Who tells of the windows of a window system that does not. It outlives the services.
    std::function<FrontWindows &()> frontWindows{};

    /// The clipboard by way of the X server beside a compositor; empty when there is none.
    std::function<BridgedClipboard()> openBridgedClipboard{};

    /// Completes with true when the X server beside a compositor has learned of what Wayland
    /// programs offer as selections, or nobody can tell; with false when it has not within `limit`.
    std::function<QCoro::Task<bool>(std::chrono::milliseconds limit)> waitForBridge{};
};

/// The services of the window system that the toolkit speaks, by the toolkit's name of it: another
/// one's server that happens to answer, as XWayland does, is not this session's. What is missing is
/// its `none` form. Writes its choices to the log, a line for each capability.
WindowSystemServices chooseWindowSystem(const QString &toolkitPlatform, WindowSystemNeeds needs);

} // namespace quillmender
