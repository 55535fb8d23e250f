#pragma once

#include "platform/Pasteboard.h"

namespace quillmender {

/// A pasteboard of this process alone, in memory: the whole contract without other applications.
class NonePasteboard : public Pasteboard {
  public:
    QCoro::Task<QList<PasteboardItem>> items() override;
    qint64 changeCount() override { return changeCount_; }
    void replaceContents(const QList<PasteboardItem> &items) override;
    QCoro::Task<std::optional<QString>> string() override;
    LentTextRef lend(const QString &text, RunningApplicationRef reader) override;
    QCoro::Task<> handOver() override;

  private:
    QList<PasteboardItem> items_;
    qint64 changeCount_ = 0;
};

} // namespace quillmender
