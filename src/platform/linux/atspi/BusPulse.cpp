#include "platform/linux/atspi/BusPulse.h"

#include <algorithm>
#include <utility>

namespace quillmender::atspi {

BusPulse::BusPulse(AtspiBus &bus, QString service, std::shared_ptr<KeyRelay> relay)
    : bus_(bus),
      service_(std::move(service)),
      relay_(std::move(relay)) {}

QCoro::Task<bool> BusPulse::beats(std::chrono::milliseconds limit) {
    if (relay_) {
        const bool isPassed = co_await relay_->waitUntilPassed(limit);
        co_return isPassed;
    }
    const auto budget = std::make_shared<CallBudget>();
    const auto allowance = std::max(limit, CallBudget::perCall) - CallBudget::perCall;
    const QString service = service_;
    const ObjectRef application{service, QLatin1String(protocol::rootPath)};
    const PendingCall question =
        bus_.call(budget, application, protocol::accessible, "GetRole", {}, allowance);
    co_await question.answer();
    co_return !budget->isSilent(service);
}

} // namespace quillmender::atspi
