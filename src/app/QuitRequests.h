#pragma once

#include <QObject>

#include <functional>

namespace quillmender {

/// Catches what tells the toolkit to end the program, such as the system's own "Quit" or a log-out,
/// which otherwise would end it in the middle of what it is doing.
class QuitRequests : public QObject {
    Q_OBJECT

  public:
    /// `requested` is called each time; the program goes on until somebody exits its event loop.
    explicit QuitRequests(std::function<void()> requested);

    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    std::function<void()> requested_;
};

} // namespace quillmender
