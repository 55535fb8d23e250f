#include "ui/WindowPixels.h"

#include <QBackingStore>
#include <QPainter>
#include <QWidget>

namespace quillmender {

void releasePixels(const QWidget &window) {
    if (QBackingStore *store = window.backingStore())
        store->resize(QSize(1, 1));
}

void reservePixels(const QWidget &window) {
    QBackingStore *store = window.backingStore();
    if (!store)
        return;
    store->resize(window.size());
    // The system gives memory only when it is written to.
    store->beginPaint(window.rect());
    QPainter(store->paintDevice()).fillRect(window.rect(), window.palette().window());
    store->endPaint();
}

} // namespace quillmender
