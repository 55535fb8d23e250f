#pragma once

#include "desktop/harness/Accessible.h"
#include "desktop/harness/ChildProcess.h"
#include "desktop/harness/WindowList.h"

#include <QRect>

namespace quillmender::harness {

class AnyDesktop;

/// A real application on a desktop; constructed means that its window is on the screen and active.
class TestApplication {
  public:
    TestApplication(AnyDesktop &desktop, const QString &program, const QStringList &arguments = {});

    /// Editors with a file that holds the text.
    static TestApplication mousepad(AnyDesktop &desktop, const QString &text = {});
    static TestApplication gedit(AnyDesktop &desktop, const QString &text = {});
    static TestApplication gnomeTextEditor(AnyDesktop &desktop, const QString &text = {});
    /// Terminals that show the text and then wait for ever; foot is one of Wayland's.
    static TestApplication foot(AnyDesktop &desktop, const QString &text = {});
    static TestApplication xterm(AnyDesktop &desktop, const QString &text = {});
    /// A page in a browser; `html` is its body.
    static TestApplication chromium(AnyDesktop &desktop, const QString &html);
    /// Our own small Qt program; `kind` is "plain", "line", "password", "commands" or
    /// "stalling".
    static TestApplication sampleEditor(AnyDesktop &desktop, const QString &kind,
                                        const QString &text = {});
    /// The same, which never finds the accessibility bus.
    static TestApplication sampleEditorOffTheBus(AnyDesktop &desktop, const QString &kind,
                                                 const QString &text = {});

    qint64 pid() const { return process_->pid(); }
    WindowId window() const { return window_; }
    QString title() const;
    QRect geometry() const;

    /// Asks for the focus and waits until it is there.
    void activate();

    /// Its focused text on the accessibility bus; waits for it.
    Accessible focusedText() const;

    ChildProcess &process() { return *process_; }

  private:
    static TestApplication terminal(AnyDesktop &desktop, const QString &program,
                                    const QString &text);
    static TestApplication withFile(AnyDesktop &desktop, const QString &program,
                                    const QStringList &arguments, const QString &text);

    AnyDesktop *desktop_;
    std::unique_ptr<ChildProcess> process_;
    WindowId window_ = 0;
};

} // namespace quillmender::harness
