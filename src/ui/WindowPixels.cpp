#include "ui/WindowPixels.h"

#include "platform/OwnWindows.h"

#include <QBackingStore>
#include <QImage>
#include <QWidget>

namespace quillmender {

void releasePixels(const QWidget &window) {
    if (QBackingStore *store = window.backingStore())
        store->resize(QSize(1, 1));
}

void reservePixels(const QWidget &window, OwnWindows &ownWindows) {
    QBackingStore *store = window.backingStore();
    if (!store)
        return;
    store->resize(window.size());
    // Some backing stores have a picture only while they are painted to.
    store->beginPaint(window.rect());
    if (auto *image = dynamic_cast<QImage *>(store->paintDevice()))
        ownWindows.provideMemory(image->bits(), std::size_t(image->sizeInBytes()));
    store->endPaint();
}

} // namespace quillmender
