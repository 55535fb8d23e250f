#pragma once

#include "desktop/harness/AccessibilityBus.h"
#include "desktop/harness/AccessibleClient.h"
#include "desktop/harness/DesktopFolders.h"
#include "desktop/harness/InputDriver.h"
#include "desktop/harness/Keyring.h"
#include "desktop/harness/SessionBus.h"
#include "desktop/harness/WindowManager.h"
#include "desktop/harness/Windows.h"
#include "desktop/harness/XServer.h"
#include "desktop/harness/XcbConnection.h"

#include <QImage>

#include <memory>

namespace quillmender::harness {

/// A whole private desktop: X server, window manager, session bus, accessibility bus and keyring,
/// with a home folder of its own. Any number of them run side by side.
class Desktop {
  public:
    struct Options {
        QSize screen{1280, 900};
        /// 1, 1.5 or 2: what toolkits find as the scale of their windows.
        double scale = 1;
        /// Whether there is an accessibility bus at all.
        bool accessibilityBus = true;
        /// What IsEnabled says when applications start.
        bool accessibilityEnabled = true;
        bool keyring = true;
        bool windowManager = true;
        /// The program and its arguments; one of those that announce themselves, or twm.
        // NOLINTNEXTLINE(readability-redundant-member-init): g++ warns where it is left out
        QStringList windowManagerCommand = {};
        /// The D-Bus service files of programs that the session bus starts when they are called.
        // NOLINTNEXTLINE(readability-redundant-member-init): g++ warns where it is left out
        QStringList services = {};
    };

    Desktop();
    explicit Desktop(const Options &options);
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;
    ~Desktop();

    const QString &display() const { return xServer_->display(); }
    const DesktopFolders &folders() const { return folders_; }
    /// What every program of this desktop is started with.
    const QProcessEnvironment &environment() const { return environment_; }

    XServer &xServer() { return *xServer_; }
    XcbConnection &connection() { return *connection_; }
    Windows &windows() { return *windows_; }
    InputDriver &input() { return *input_; }
    SessionBus &sessionBus() { return *sessionBus_; }
    /// Null without a window manager.
    WindowManager *windowManager() { return windowManager_.get(); }
    /// Null without an accessibility bus.
    AccessibilityBus *accessibilityBus() { return accessibilityBus_.get(); }
    /// Throws HarnessError without an accessibility bus.
    AccessibleClient &accessible();
    /// Null without a keyring.
    Keyring *keyring() { return keyring_.get(); }

    /// Makes this desktop the one of the calling process, for code under test that runs in it and
    /// has not yet opened a display or a bus.
    void adoptEnvironment() const;

    /// A command of this desktop; its log is named after the program.
    Command command(const QString &program, const QStringList &arguments = {}) const;

    QImage screenshot();

    /// Puts a screenshot and every log into the folder, which is made.
    void keepArtifacts(const QString &folder);

  private:
    DesktopFolders folders_;
    QProcessEnvironment environment_;
    std::unique_ptr<XServer> xServer_;
    std::unique_ptr<XcbConnection> connection_;
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<InputDriver> input_;
    std::unique_ptr<SessionBus> sessionBus_;
    std::unique_ptr<WindowManager> windowManager_;
    std::unique_ptr<AccessibilityBus> accessibilityBus_;
    std::unique_ptr<AccessibleClient> accessible_;
    std::unique_ptr<Keyring> keyring_;
};

} // namespace quillmender::harness
