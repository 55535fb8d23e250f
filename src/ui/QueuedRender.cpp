#include "ui/QueuedRender.h"

#include <utility>

namespace quillmender {

QueuedRender::QueuedRender(QWidget &view, std::function<void()> render)
    : QObject(&view),
      view_(view),
      render_(std::move(render)) {}

void QueuedRender::request() {
    if (isQueued_ || !view_.isVisible())
        return;
    isQueued_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            isQueued_ = false;
            if (view_.isVisible())
                render_();
        },
        Qt::QueuedConnection);
}

} // namespace quillmender
