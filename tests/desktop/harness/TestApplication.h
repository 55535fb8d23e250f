#pragma once

#include "desktop/harness/Accessible.h"
#include "desktop/harness/ChildProcess.h"

#include <QRect>
#include <xcb/xproto.h>

namespace quillmender::harness {

class Desktop;

/// A real application on a desktop; constructed means that its window is on the screen and active.
class TestApplication {
  public:
    TestApplication(Desktop &desktop, const QString &program, const QStringList &arguments = {});

    /// Editors with a file that holds the text.
    static TestApplication mousepad(Desktop &desktop, const QString &text = {});
    static TestApplication gedit(Desktop &desktop, const QString &text = {});
    static TestApplication gnomeTextEditor(Desktop &desktop, const QString &text = {});
    /// A terminal that shows the text and then waits for ever.
    static TestApplication xterm(Desktop &desktop, const QString &text = {});
    /// A page in a browser; `html` is its body.
    static TestApplication chromium(Desktop &desktop, const QString &html);
    /// Our own small Qt program; `kind` is "plain", "line", "password" or "commands".
    static TestApplication sampleEditor(Desktop &desktop, const QString &kind,
                                        const QString &text = {});
    /// The same, which never finds the accessibility bus.
    static TestApplication sampleEditorOffTheBus(Desktop &desktop, const QString &kind,
                                                 const QString &text = {});

    qint64 pid() const { return process_->pid(); }
    xcb_window_t window() const { return window_; }
    QString title() const;
    QRect geometry() const;

    /// Asks the window manager for the focus and waits until it is there.
    void activate();

    /// Its focused text on the accessibility bus; waits for it.
    Accessible focusedText() const;

    ChildProcess &process() { return *process_; }

  private:
    static TestApplication withFile(Desktop &desktop, const QString &program,
                                    const QStringList &arguments, const QString &text);

    Desktop *desktop_;
    std::unique_ptr<ChildProcess> process_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

} // namespace quillmender::harness
