#include "platform/linux/atspi/CallBudget.h"

#include <algorithm>
#include <utility>

namespace quillmender::atspi {

namespace {
constexpr qint64 forgivenAfterMs = 1000;
constexpr qint64 charactersPerMs = 500;
constexpr qint64 mostPerTextMs = 4000;
} // namespace

CallBudget::Use::Use(std::shared_ptr<CallBudget> budget) : budget_(std::move(budget)) {
    if (budget_->users_++ > 0)
        return;
    if (budget_->since_.isValid() && budget_->since_.elapsed() > forgivenAfterMs) {
        budget_->reset(wholeMs, perCall.count());
        budget_->earnedMs_ = 0;
        budget_->silent_.clear();
    }
    budget_->since_.start();
}

CallBudget::Use::~Use() {
    if (--budget_->users_ > 0)
        return;
    budget_->spentMs_ += budget_->since_.restart();
}

std::chrono::milliseconds CallBudget::transferAllowance(qint64 characters) {
    return std::chrono::milliseconds(
        std::clamp<qint64>(characters / charactersPerMs, 0, mostPerTextMs));
}

std::chrono::milliseconds CallBudget::nextCall(std::chrono::milliseconds allowance) {
    const qint64 granted = std::min<qint64>(allowance.count(), mostGrantedMs - grantedMs_);
    grantedMs_ += granted;
    limitMs_ += granted;
    earnedMs_ = std::max<qint64>(earnedMs_, allowance.count());
    const qint64 left = limitMs_ - spentMs();
    return std::chrono::milliseconds(std::clamp<qint64>(left, 0, perCallMs_ + earnedMs_));
}

void CallBudget::renew() {
    reset(wholeMs + earnedMs_, perCall.count());
}

void CallBudget::beginWait(std::chrono::milliseconds patience) {
    reset(2 * patience.count() + earnedMs_, patience.count());
    silent_.clear();
}

void CallBudget::reset(qint64 limitMs, qint64 perCallMs) {
    spentMs_ = 0;
    limitMs_ = limitMs;
    perCallMs_ = perCallMs;
    grantedMs_ = 0;
    since_.start();
}

qint64 CallBudget::spentMs() const {
    return spentMs_ + (users_ > 0 ? since_.elapsed() : 0);
}

} // namespace quillmender::atspi
