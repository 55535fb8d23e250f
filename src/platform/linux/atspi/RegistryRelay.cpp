#include "platform/linux/atspi/RegistryRelay.h"

#include <algorithm>
#include <utility>

namespace quillmender::atspi {

RegistryRelay::RegistryRelay(AtspiBus &bus, QString service)
    : bus_(bus),
      service_(std::move(service)) {}

QCoro::Task<bool> RegistryRelay::waitUntilPassed(std::chrono::milliseconds patience) {
    const auto budget = std::make_shared<CallBudget>();
    const auto allowance = std::max(patience, CallBudget::perCall) - CallBudget::perCall;
    // The registry attends to keys and to questions about keys in their order, while it answers
    // others in between. The application has read its answer before it reads the second question.
    const ObjectRef registry{QLatin1String(protocol::registry),
                             QLatin1String(protocol::deviceEventControllerPath)};
    const PendingCall first = bus_.call(budget, registry, protocol::deviceEventController,
                                        "GetKeystrokeListeners", {}, allowance);
    co_await first.answer();
    if (budget->isSilent(registry.service))
        co_return false;
    const ObjectRef application{service_, QLatin1String(protocol::rootPath)};
    const PendingCall second = bus_.property(budget, application, protocol::accessible, "Name");
    co_await second.answer();
    co_return !budget->isSilent(service_);
}

} // namespace quillmender::atspi
