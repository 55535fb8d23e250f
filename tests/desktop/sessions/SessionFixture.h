#pragma once

#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/ClipboardProbe.h"
#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/ProductProcess.h"
#include "desktop/harness/TestApplication.h"
#include "support/LoopbackServer.h"

#include <X11/keysym.h>
#include <optional>

namespace quillmender {

/// Whole sessions of the real program on a desktop of its own: somebody else's clipboard, a
/// provider on the loopback, a real editor. At the end of every test the program's log must be
/// empty, unless the test says otherwise.
class SessionFixture : public harness::DesktopTest {
  protected:
    /// A desktop whose clipboard holds text, HTML and a picture of another application.
    void startDesktop(const harness::Desktop::Options &options = {});

    /// The program, which asks the provider; `environment` is added to the desktop's.
    void startProgram(const QMap<QString, QString> &environment = {});
    void startProgram(const harness::ProductProcess::Setup &setup);

    /// Both.
    void start();

    harness::ProductProcess &program() { return *program_; }
    /// The process whose windows are looked at.
    virtual qint64 programId() { return program_->pid(); }
    test::LoopbackServer &provider() { return provider_; }
    harness::ClipboardOwner &clipboard() { return *clipboard_; }
    harness::InputDriver &input() { return desktop().input(); }

    /// What the provider answers from now on.
    void answerWith(const QString &text);
    /// The same, but not before release() of the provider.
    void answerLater(const QString &text);

    void pressHotKey();

    /// Waits until the panel is shown and active.
    xcb_window_t waitForPanel();
    /// Waits until it also shows this text somewhere.
    xcb_window_t waitForPanel(const QString &text);
    void waitUntilPanelIsGone();
    bool panelShows(const QString &text);

    /// A button of the panel that can be pressed; waits for it.
    harness::Accessible button(const QString &title);
    /// A click of the mouse.
    void click(const QString &title);
    /// Tab until it has the focus.
    void tabTo(const QString &title);

    /// Waits for that many requests, in all; gives the newest.
    test::ReceivedRequest waitForRequest(size_t count = 1);

    /// Waits until the selection with the mouse or Shift is this text, as applications tell it.
    void waitUntilSelected(const QString &text);

    /// Waits until the active application, asked by selecting and copying everything, has this
    /// text. It takes the clipboard.
    void expectTextByCopying(const QString &text);

    /// Every target has the bytes, type and format that it had at the start.
    void expectClipboardUntouched();
    /// And still is in the hands of the application that had it.
    void expectClipboardNeverTaken();

    /// How often the program has read the clipboard of its first owner.
    int clipboardReads() const;

    /// For a test in which the program has something to say.
    void allowLog() { logMustBeEmpty_ = false; }

    void TearDown() override;

  private:
    test::LoopbackServer provider_;
    std::optional<harness::ClipboardOwner> clipboard_;
    harness::ClipboardContents clipboardBefore_;
    int ownReads_ = 0;
    std::optional<harness::ProductProcess> program_;
    bool logMustBeEmpty_ = true;
};

/// The text that the request asks to work on, with the instruction around it.
QString promptOf(const test::ReceivedRequest &request);

} // namespace quillmender
