#pragma once

#include "platform/OwnWindows.h"
#include "ui/ScreenFollower.h"

#include <QWidget>

namespace quillmender {

/// A titled window of one size around its content: it can be closed and minimised, not resized.
/// Closing only hides it. A screen smaller than it makes it smaller.
class HostedWindow : public QWidget {
    Q_OBJECT

  public:
    /// Takes the content; the own windows outlive this one.
    HostedWindow(const QString &title, QSize contentSize, QWidget *content, OwnWindows &ownWindows);

    /// Centres the window on the screen with the pointer.
    void centre();

    /// Shows the window in front of all others, the panel included, with the keyboard focus. A
    /// sheet over it keeps the focus.
    void makeKeyAndOrderFront();

  protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

  private:
    /// The panel floats above every ordinary window; beside it this one floats, too, until it
    /// hides.
    void floatWith(QWidget *panel);
    QWidget *sheet() const;

    QSize contentSize_;
    OwnWindows &ownWindows_;
    ScreenFollower follower_;
};

} // namespace quillmender
