#include "ui/WindowPixels.h"

#include <QBackingStore>
#include <QWidget>

namespace quillmender {

void releasePixels(const QWidget &window) {
    if (QBackingStore *store = window.backingStore())
        store->resize(QSize(1, 1));
}

} // namespace quillmender
