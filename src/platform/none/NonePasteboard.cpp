#include "platform/none/NonePasteboard.h"

#include <utility>

namespace quillmender {

namespace {

const auto plainText = QStringLiteral("text/plain;charset=utf-8");

/// Nobody tells who has read it.
class NoneLentText : public LentText {
  public:
    QCoro::Task<bool> wasRead(std::chrono::milliseconds) override { co_return true; }
};

} // namespace

QCoro::Task<QList<PasteboardItem>> NonePasteboard::items() {
    co_return std::as_const(items_);
}

void NonePasteboard::replaceContents(const QList<PasteboardItem> &items) {
    items_ = items;
    ++changeCount_;
}

QCoro::Task<std::optional<QString>> NonePasteboard::string() {
    for (const PasteboardItem &item : items_) {
        if (const auto *text = item.find(plainText))
            co_return QString::fromUtf8(text->data);
    }
    co_return std::nullopt;
}

LentTextRef NonePasteboard::lend(const QString &text, RunningApplicationRef) {
    PasteboardItem item;
    item.setData(plainText, text.toUtf8());
    replaceContents({item});
    return std::make_shared<NoneLentText>();
}

QCoro::Task<> NonePasteboard::handOver() {
    co_return;
}

} // namespace quillmender
