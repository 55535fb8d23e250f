#include "platform/none/NonePasteboard.h"

#include <utility>

namespace quillmender {

namespace {
const auto plainText = QStringLiteral("text/plain;charset=utf-8");
} // namespace

QCoro::Task<QList<PasteboardItem>> NonePasteboard::items() {
    co_return std::as_const(items_);
}

void NonePasteboard::clearContents() {
    items_.clear();
    ++changeCount_;
}

bool NonePasteboard::writeItems(const QList<PasteboardItem> &items) {
    items_ = items;
    ++changeCount_;
    return true;
}

QCoro::Task<std::optional<QString>> NonePasteboard::string() {
    for (const PasteboardItem &item : items_) {
        if (const auto *text = item.find(plainText))
            co_return QString::fromUtf8(text->data);
    }
    co_return std::nullopt;
}

bool NonePasteboard::setString(const QString &text) {
    PasteboardItem item;
    item.setData(plainText, text.toUtf8());
    return writeItems({item});
}

QCoro::Task<bool> NonePasteboard::stringWasRead(std::chrono::milliseconds) {
    co_return true;
}

QCoro::Task<> NonePasteboard::handOver() {
    co_return;
}

} // namespace quillmender
