#pragma once

#include <QObject>

class QWindow;

namespace quillmender {

/// Does for the windows of this program what the system does for those of a program with a Dock
/// icon and a menu bar.
class WindowWatch : public QObject {
    Q_OBJECT

  public:
    /// When the last window has gone from the screen, this program hides, and the application that
    /// was in front before has the keyboard again. Otherwise the program would stay the active one
    /// without a window.
    void add(QWindow &window);

    /// Command-W closes the window.
    void addCloseKey(QWindow &window);

    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    static void giveKeyboardBack();
};

} // namespace quillmender
