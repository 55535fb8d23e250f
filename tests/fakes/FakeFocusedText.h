#pragma once

#include "fakes/CallLog.h"
#include "fakes/Gate.h"
#include "platform/FocusedText.h"

#include <utility>

namespace quillmender::fakes {

/// One focused element, with a reading and outcomes that the test sets.
class FakeFocusedText : public FocusedText {
  public:
    explicit FakeFocusedText(CallLog log) : log_(std::move(log)) {
        reading.element = std::make_shared<const FocusedElement>();
    }

    QCoro::Task<FocusReading> read(RunningApplicationRef application) override {
        log_->append(application ? QStringLiteral("focus.read")
                                 : QStringLiteral("focus.read of nobody known"));
        if (gate)
            co_await *gate;
        FocusReading answer = reading;
        if (application && !answer.application)
            answer.application = application;
        co_return answer;
    }
    QCoro::Task<> prepare() override {
        log_->append(QStringLiteral("focus.prepare"));
        if (gate)
            co_await *gate;
    }
    QCoro::Task<std::optional<TextRange>> selectedRange(FocusedElementRef) override {
        log_->append(QStringLiteral("focus.selectedRange"));
        co_return std::as_const(rangeAfterCopy);
    }
    QCoro::Task<Replacement> replace(FocusedElementRef, TextRange range, QString text) override {
        log_->append(QStringLiteral("focus.replace %1+%2 %3")
                         .arg(range.location)
                         .arg(range.length)
                         .arg(text));
        co_return std::as_const(replacement);
    }
    QCoro::Task<PasteTarget> select(FocusedElementRef, TextRange range) override {
        log_->append(QStringLiteral("focus.select %1+%2").arg(range.location).arg(range.length));
        co_return std::as_const(pasteTarget);
    }

    FocusReading reading; ///< of whichever application is asked for
    std::optional<TextRange> rangeAfterCopy;
    Replacement replacement{Replacement::Outcome::done};
    PasteTarget pasteTarget = PasteTarget::selected;
    Gate *gate = nullptr; ///< that every reading waits at

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
