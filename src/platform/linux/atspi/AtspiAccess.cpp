#include "platform/linux/atspi/AtspiAccess.h"

namespace quillmender::atspi {

namespace {
constexpr int patienceMs = 250;
} // namespace

bool AtspiAccess::isGranted() {
    return bus_.isEnabledAndAnswers(QDeadlineTimer(patienceMs));
}

void AtspiAccess::request() {
    bus_.enable(QDeadlineTimer(patienceMs));
}

} // namespace quillmender::atspi
