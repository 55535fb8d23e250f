#include "platform/linux/LastReading.h"

namespace quillmender {

using namespace std::chrono_literals;

namespace {
constexpr auto lifetime = 10s;
} // namespace

LastReading::LastReading() {
    aging_.setSingleShot(true);
    connect(&aging_, &QTimer::timeout, this, &LastReading::age);
}

void LastReading::remember(const QList<PasteboardItem> &items) {
    items_ = items;
    aging_.start(lifetime);
}

bool LastReading::isLarge() const {
    constexpr qsizetype large = qsizetype{16} * 1024 * 1024;
    qsizetype size = 0;
    for (const PasteboardItem &item : items_.value_or(QList<PasteboardItem>())) {
        for (const PasteboardRepresentation &each : item.representations())
            size += each.data.size();
    }
    return size >= large;
}

void LastReading::age() {
    // A session that is open holds the same bytes, which the next one need not have again.
    if (isLarge() && !items_->isDetached())
        aging_.start(lifetime);
    else
        forget();
}

} // namespace quillmender
