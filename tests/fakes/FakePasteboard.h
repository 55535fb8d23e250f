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
    void clearContents() override {
        log_->append(QStringLiteral("pasteboard.clear"));
        contents.clear();
        text.reset();
        ++count;
    }
    bool writeItems(const QList<PasteboardItem> &items) override {
        log_->append(QStringLiteral("pasteboard.writeItems %1").arg(items.size()));
        contents = items;
        ++count;
        return acceptsWrites;
    }
    QCoro::Task<std::optional<QString>> string() override {
        log_->append(QStringLiteral("pasteboard.string"));
        if (failure)
            std::rethrow_exception(failure);
        co_return std::as_const(text);
    }
    bool setString(const QString &string) override {
        log_->append(QStringLiteral("pasteboard.setString ") + string);
        text = string;
        ++count;
        return acceptsWrites;
    }
    QCoro::Task<bool> stringWasRead(std::chrono::milliseconds limit) override {
        log_->append(QStringLiteral("pasteboard.stringWasRead %1").arg(limit.count()));
        if (failure)
            std::rethrow_exception(failure);
        co_return std::as_const(isStringRead);
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
    bool isStringRead = true;
    bool isOwnerSlow = false;
    bool acceptsWrites = true;
    std::exception_ptr failure; ///< of what waits for others

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
