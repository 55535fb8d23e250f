#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <functional>

namespace quillmender::wayland {

/// Sees to it that a window that was shown or asked for gets the keyboard. A compositor is free to
/// refuse, and says nothing when it does: patience has to end by itself.
class KeyboardArrival : public QObject {
    Q_OBJECT

  public:
    KeyboardArrival();

    /// Waits for the keyboard to come to the window, from now on and instead of to another one.
    /// `insist` is called, once, when it did not come by itself.
    void await(QWindow &window, std::function<void()> insist);

    void forget();

  Q_SIGNALS:
    /// It has not come to the window, which is on the screen.
    void withheld(QWindow *window);

  private:
    void look();

    QPointer<QWindow> window_;
    std::function<void()> insist_;
    QTimer patience_;
};

} // namespace quillmender::wayland
