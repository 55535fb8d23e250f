#pragma once

#include <QWidget>

#include <functional>

namespace quillmender {

/// Renders a view after its model has changed: once for all changes of one turn of the event loop,
/// after the last of them, and only while the view is visible.
class QueuedRender : public QObject {
    Q_OBJECT

  public:
    /// Owned by the view.
    QueuedRender(QWidget &view, std::function<void()> render);

  public Q_SLOTS:
    void request();

  private:
    QWidget &view_;
    std::function<void()> render_;
    bool isQueued_ = false;
};

} // namespace quillmender
