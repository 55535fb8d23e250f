#pragma once

#include "desktop/harness/AccessibilityBus.h"
#include "desktop/harness/AccessibleClient.h"
#include "desktop/harness/ClipboardContents.h"
#include "desktop/harness/DesktopFolders.h"
#include "desktop/harness/Keyring.h"
#include "desktop/harness/SelectionOwner.h"
#include "desktop/harness/SessionBus.h"
#include "desktop/harness/UserInput.h"
#include "desktop/harness/Waiter.h"
#include "desktop/harness/WindowList.h"

#include <QImage>

#include <memory>
#include <optional>

namespace quillmender::harness {

/// What the private desktops of all window systems have: a home folder, a session bus, an
/// accessibility bus and a keyring, windows, a keyboard and a mouse, and clipboards. Tests that
/// need no more than this run on each of them.
class AnyDesktop {
  public:
    AnyDesktop();
    AnyDesktop(const AnyDesktop &) = delete;
    AnyDesktop &operator=(const AnyDesktop &) = delete;
    virtual ~AnyDesktop();

    const DesktopFolders &folders() const { return folders_; }
    /// What every program of this desktop is started with.
    const QProcessEnvironment &environment() const { return environment_; }

    SessionBus &sessionBus() { return *sessionBus_; }
    /// Null without an accessibility bus.
    AccessibilityBus *accessibilityBus() { return accessibilityBus_.get(); }
    /// Throws HarnessError without an accessibility bus.
    AccessibleClient &accessible();
    /// Null without a keyring.
    Keyring *keyring() { return keyring_.get(); }

    virtual WindowList &windows() = 0;
    virtual UserInput &input() = 0;
    virtual QImage screenshot() = 0;
    /// In pixels of windows.
    virtual QSize screen() const = 0;

    /// Another application takes the clipboard with this.
    virtual std::unique_ptr<SelectionOwner>
    ownClipboard(const QList<ClipboardRepresentation> &offer) = 0;
    /// The same with what is selected anywhere (PRIMARY).
    virtual std::unique_ptr<SelectionOwner> ownSelectedText(const QString &text) = 0;
    /// Another application reads all of it.
    virtual ClipboardContents readClipboard() = 0;
    /// Only its text, as UTF-8; absent when it has none. Throws HarnessError when the owner does
    /// not answer in time.
    virtual std::optional<QByteArray> readClipboardText(std::chrono::milliseconds deadline) = 0;
    /// The text of what is selected anywhere (PRIMARY); empty when that is nothing.
    virtual QString selectedText() = 0;

    /// What a program that is about to be started needs of the desktop to be trusted by it.
    virtual void prepareFor([[maybe_unused]] const QString &program) {}

    /// Makes this desktop the one of the calling process, for code under test that runs in it and
    /// has not yet opened a display or a bus.
    void adoptEnvironment() const;

    /// A command of this desktop; its log is named after the program.
    Command command(const QString &program, const QStringList &arguments = {}) const;

    /// Puts a screenshot and every log into the folder, which is made.
    void keepArtifacts(const QString &folder);

  protected:
    void setVariable(const char *name, const QString &value);
    void removeVariable(const char *name) { environment_.remove(QString::fromLatin1(name)); }

    void startSessionBus(const QStringList &services);
    void startAccessibilityBus(bool enabled);
    void startKeyring();
    /// What the session bus starts from now on gets this desktop's environment.
    void tellServices();

    void endSessionBus() { sessionBus_.reset(); }
    /// The services that clients of the window system need no more.
    void endServices();

  private:
    DesktopFolders folders_;
    QProcessEnvironment environment_;
    std::unique_ptr<SessionBus> sessionBus_;
    std::unique_ptr<AccessibilityBus> accessibilityBus_;
    std::unique_ptr<AccessibleClient> accessible_;
    std::unique_ptr<Keyring> keyring_;
};

} // namespace quillmender::harness
