#include "platform/linux/atspi/RegistryDetour.h"

#include <array>
#include <utility>

namespace quillmender {

RegistryDetour::RegistryDetour(AtspiBus &bus, QString service)
    : bus_(bus),
      service_(std::move(service)) {}

QCoro::Task<bool> RegistryDetour::isPassed() {
    const auto budget = std::make_shared<Budget>();
    // Both attend to one message after the other: the registry has answered the application before
    // it answers this question, and the application reads that before the second one.
    const std::array way{QString(QLatin1String(atspi::registry)), service_};
    for (const QString &service : way) {
        const ObjectRef root{service, QLatin1String(atspi::rootPath)};
        const Call question = bus_.property(budget, root, atspi::accessible, "Name");
        co_await question.answer();
        if (budget->isSilent(service))
            co_return false;
    }
    co_return true;
}

} // namespace quillmender
