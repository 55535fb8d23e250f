#pragma once

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/InputDriver.h"
#include "desktop/harness/WindowManager.h"
#include "desktop/harness/Windows.h"
#include "desktop/harness/XServer.h"
#include "desktop/harness/XcbConnection.h"

#include <memory>

namespace quillmender::harness {

/// A whole private desktop on X11: X server, window manager, session bus, accessibility bus and
/// keyring, with a home folder of its own. Any number of them run side by side.
class Desktop : public AnyDesktop {
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
    ~Desktop() override;

    const QString &display() const { return xServer_->display(); }
    XServer &xServer() { return *xServer_; }
    XcbConnection &connection() { return *connection_; }
    Windows &windows() override { return *windows_; }
    InputDriver &input() override { return *input_; }
    /// Null without a window manager.
    WindowManager *windowManager() { return windowManager_.get(); }

    std::unique_ptr<SelectionOwner>
    ownClipboard(const QList<ClipboardRepresentation> &offer) override;
    std::unique_ptr<SelectionOwner> ownSelectedText(const QString &text) override;
    ClipboardContents readClipboard() override;
    std::optional<QByteArray> readClipboardText(std::chrono::milliseconds deadline) override;
    QString selectedText() override;

    QImage screenshot() override;
    QSize screen() const override { return screen_; }

  private:
    QSize screen_;
    std::unique_ptr<XServer> xServer_;
    std::unique_ptr<XcbConnection> connection_;
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<InputDriver> input_;
    std::unique_ptr<WindowManager> windowManager_;
};

} // namespace quillmender::harness
