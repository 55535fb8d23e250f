#pragma once

#include "fakes/CallLog.h"
#include "platform/Pasteboard.h"

#include <exception>
#include <utility>

namespace quillmender::fakes {

/// A pasteboard in memory; `copied` is what another application's copy puts on it.
class FakePasteboard : public Pasteboard {
  public:
    explicit FakePasteboard(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<QList<PasteboardItem>> items() override {
        log_->append(QStringLiteral("pasteboard.items"));
        co_return std::as_const(contents);
    }
    QCoro::Task<std::optional<QList<PasteboardItem>>>
    itemsWithin(std::chrono::milliseconds limit) override {
        log_->append(QStringLiteral("pasteboard.itemsWithin %1").arg(limit.count()));
        std::optional<QList<PasteboardItem>> answer;
        if (!isOwnerSlow)
            answer = contents;
        co_return answer;
    }
    qint64 changeCount() override {
        log_->append(QStringLiteral("pasteboard.changeCount"));
        return count;
    }
    void replaceContents(const QList<PasteboardItem> &items) override {
        log_->append(QStringLiteral("pasteboard.replaceContents %1").arg(items.size()));
        contents = items;
        text.reset();
        ++count;
    }
    QCoro::Task<std::optional<QString>> string() override {
        log_->append(QStringLiteral("pasteboard.string"));
        if (failure)
            std::rethrow_exception(failure);
        co_return std::as_const(text);
    }
    LentTextRef lend(const QString &lent, RunningApplicationRef reader) override {
        log_->append(QStringLiteral("pasteboard.lend ") + lent);
        readers.append(reader);
        if (!acceptsWrites)
            return nullptr;
        contents.clear();
        text = lent;
        ++count;
        return std::make_shared<Lent>(*this);
    }
    QCoro::Task<> handOver() override {
        log_->append(QStringLiteral("pasteboard.handOver"));
        co_return;
    }

    void copyFromElsewhere(std::optional<QString> copied) {
        contents.clear();
        text = std::move(copied);
        ++count;
    }

    QList<PasteboardItem> contents;
    std::optional<QString> text;
    qint64 count = 7;
    QList<RunningApplicationRef> readers; ///< that texts were lent to
    bool isLentTextRead = true;
    bool isOwnerSlow = false;
    bool acceptsWrites = true;
    std::exception_ptr failure; ///< of what waits for others

  private:
    struct Lent : LentText {
        explicit Lent(FakePasteboard &lender) : pasteboard(lender) {}
        QCoro::Task<bool> wasRead(std::chrono::milliseconds limit) override {
            pasteboard.log_->append(QStringLiteral("lent.wasRead %1").arg(limit.count()));
            if (pasteboard.failure)
                std::rethrow_exception(pasteboard.failure);
            co_return std::as_const(pasteboard.isLentTextRead);
        }
        FakePasteboard &pasteboard;
    };

    CallLog log_;
};

} // namespace quillmender::fakes
