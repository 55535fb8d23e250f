#pragma once

#include <QString>
#include <QUrl>

#include <memory>
#include <optional>

namespace quillmender {

/// An opaque handle of one running application (on X11 together with its active window).
class RunningApplication {
  public:
    RunningApplication() = default;
    RunningApplication(const RunningApplication &) = delete;
    RunningApplication &operator=(const RunningApplication &) = delete;
    virtual ~RunningApplication() = default;

    /// 0 when it is not known.
    virtual qint64 processId() const { return 0; }

    virtual bool isSame(const RunningApplication &other) const { return this == &other; }
};

using RunningApplicationRef = std::shared_ptr<const RunningApplication>;

/// A rectangle of the desktop in device pixels.
struct DesktopRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// A page of the system's own settings program.
enum class SettingsPage {
    accessibility, ///< what assistive programs may do
};

/// Running applications and what opens a URL.
class Workspace {
  public:
    Workspace() = default;
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;
    virtual ~Workspace() = default;

    /// The application in front; the last one that was when it is this program itself. Null when
    /// there is none.
    virtual RunningApplicationRef frontmostApplication() = 0;

    /// Brings the application to the front. True when the request was sent, which does not mean
    /// that it was granted.
    virtual bool activate(RunningApplicationRef application) = 0;

    /// Where the application's window is, so that a panel can appear on the same screen. Absent
    /// where the system places windows itself.
    virtual std::optional<DesktopRect> windowFrame(RunningApplicationRef application) = 0;

    /// Opens the URL with the system's handler. False when there is none.
    virtual bool openUrl(const QUrl &url) = 0;

    /// False when the system has no such page.
    virtual bool openSettingsPage(SettingsPage page) = 0;
};

} // namespace quillmender
