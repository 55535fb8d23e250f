#include "platform/linux/atspi/AtspiAccess.h"

namespace quillmender::atspi {

void AtspiAccess::ask() {
    bus_.askIfEnabled(QDeadlineTimer(patience));
}

bool AtspiAccess::isGranted() {
    return bus_.isEnabledAndAnswers(QDeadlineTimer(patience));
}

void AtspiAccess::request() {
    bus_.enable(QDeadlineTimer(patience));
}

} // namespace quillmender::atspi
