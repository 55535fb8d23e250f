#include "platform/linux/atspi/Budget.h"

#include <algorithm>
#include <utility>

namespace quillmender {

namespace {
constexpr qint64 forgivenAfterMs = 1000;
constexpr qint64 charactersPerMs = 500;
} // namespace

Budget::Use::Use(std::shared_ptr<Budget> budget) : budget_(std::move(budget)) {
    if (budget_->users_++ > 0)
        return;
    if (budget_->since_.isValid() && budget_->since_.elapsed() > forgivenAfterMs) {
        budget_->spentMs_ = 0;
        budget_->limitMs_ = wholeMs;
        budget_->earnedMs_ = 0;
        budget_->silent_.clear();
    }
    budget_->since_.start();
}

Budget::Use::~Use() {
    if (--budget_->users_ > 0)
        return;
    budget_->spentMs_ += budget_->since_.restart();
}

std::chrono::milliseconds Budget::transferAllowance(qint64 characters) {
    return std::chrono::milliseconds(characters / charactersPerMs);
}

std::chrono::milliseconds Budget::nextCall(std::chrono::milliseconds allowance) {
    limitMs_ += allowance.count();
    earnedMs_ = std::max<qint64>(earnedMs_, allowance.count());
    const qint64 left = limitMs_ - spentMs();
    return std::chrono::milliseconds(std::clamp<qint64>(left, 0, perCall.count() + earnedMs_));
}

void Budget::renew() {
    spentMs_ = 0;
    limitMs_ = wholeMs + earnedMs_;
    since_.start();
}

qint64 Budget::spentMs() const {
    return spentMs_ + (users_ > 0 ? since_.elapsed() : 0);
}

} // namespace quillmender
