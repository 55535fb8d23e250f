#pragma once

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/ProductProcess.h"
#include "support/LoopbackServer.h"

#include <X11/keysym.h>
#include <optional>

namespace quillmender {

/// What the tests' user does in a session of the real program, and what can be seen of it, on
/// whatever desktop: somebody else's clipboard, a provider on the loopback, the panel.
class SessionSteps {
  public:
    SessionSteps() = default;
    SessionSteps(const SessionSteps &) = delete;
    SessionSteps &operator=(const SessionSteps &) = delete;
    virtual ~SessionSteps();

    /// The one that was started, or else the standard one, as whoever has it names it.
    virtual harness::AnyDesktop &sessionDesktop() = 0;

    /// A standard desktop with another application's clipboard, and the program.
    virtual void start() = 0;

    /// Another application owns the clipboard with these from now on.
    void takeClipboard(const QList<harness::ClipboardRepresentation> &offer);

    /// The program, which asks the provider; `environment` is added to the desktop's.
    void startProgram(const QMap<QString, QString> &environment = {});
    void startProgram(const harness::ProductProcess::Setup &setup);

    harness::ProductProcess &program() { return *program_; }
    /// The process whose windows are looked at.
    virtual qint64 programId() { return program_->pid(); }
    test::LoopbackServer &provider() { return provider_; }

    /// What the provider answers from now on.
    void answerWith(const QString &text);
    /// The same, but not before release() of the provider.
    void answerLater(const QString &text);

    void pressHotKey();

    /// Waits until the panel is shown and active. Its window is 0 where the desktop does not list
    /// it.
    virtual harness::WindowId waitForPanel() = 0;
    /// Waits until it also shows this text somewhere.
    harness::WindowId waitForPanel(const QString &text);
    virtual void waitUntilPanelIsGone() = 0;

    /// So many answers have taken the place of their texts, and the clipboard is as it was.
    void waitUntilWritten(int times = 1);
    /// Whether no other window gets the keyboard while the panel is shown.
    virtual bool panelKeepsKeyboard() const { return false; }
    bool panelShows(const QString &text);

    /// A button of the panel that can be pressed; waits for it.
    harness::Accessible button(const QString &title);
    /// A click of the mouse.
    void click(const QString &title);
    /// Tab until it has the focus.
    void tabTo(const QString &title);

    /// Where on the screen a widget of the program has its middle.
    virtual QPoint middleOf(const harness::Accessible &widget) { return widget.extents().center(); }

    /// Waits for that many requests, in all; gives the newest.
    test::ReceivedRequest waitForRequest(size_t count = 1);

    /// Waits until the selection with the mouse or Shift is this text, as applications tell it.
    void waitUntilSelected(const QString &text);

    /// Waits until the active application, asked by selecting and copying everything, has this
    /// text. It takes the clipboard.
    void expectTextByCopying(const QString &text);

    /// Every type has the bytes that it had at the start.
    void expectClipboardUntouched();
    /// And still is in the hands of the application that had it.
    void expectClipboardNeverTaken();

    /// How often the program has read the clipboard of its first owner.
    int clipboardReads() const;

    /// For a test in which the program has something to say.
    void allowLog() { logMustBeEmpty_ = false; }

  protected:
    /// Whether the program has to say this line in every session on this desktop.
    virtual bool isToBeLogged(const QByteArray & /*line*/) { return false; }

    harness::SelectionOwner &clipboardOwner() { return *clipboard_; }

    /// Judges the program's log, while everything is still there.
    void judgeLog();
    /// Ends the program and gives the clipboard up.
    void endSession();

  private:
    test::LoopbackServer provider_;
    std::unique_ptr<harness::SelectionOwner> clipboard_;
    harness::ClipboardContents clipboardBefore_;
    int ownReads_ = 0;
    std::optional<harness::ProductProcess> program_;
    bool logMustBeEmpty_ = true;
};

/// The text that the request asks to work on, with the instruction around it.
QString promptOf(const test::ReceivedRequest &request);

} // namespace quillmender
