#include "platform/linux/atspi/RegistryDetour.h"

#include <algorithm>
#include <utility>

namespace quillmender {

RegistryDetour::RegistryDetour(AtspiBus &bus, QString service)
    : bus_(bus),
      service_(std::move(service)) {}

QCoro::Task<bool> RegistryDetour::isPassed(std::chrono::milliseconds patience) {
    const auto budget = std::make_shared<Budget>();
    const auto allowance = std::max(patience, Budget::perCall) - Budget::perCall;
    // The registry attends to keys and to questions about keys in their order, while it answers
    // others in between. The application has read its answer before it reads the second question.
    const ObjectRef registry{QLatin1String(atspi::registry),
                             QLatin1String(atspi::deviceEventControllerPath)};
    const Call first = bus_.call(budget, registry, atspi::deviceEventController,
                                 "GetKeystrokeListeners", {}, allowance);
    co_await first.answer();
    if (budget->isSilent(registry.service))
        co_return false;
    const ObjectRef application{service_, QLatin1String(atspi::rootPath)};
    const Call second = bus_.property(budget, application, atspi::accessible, "Name");
    co_await second.answer();
    co_return !budget->isSilent(service_);
}

} // namespace quillmender
