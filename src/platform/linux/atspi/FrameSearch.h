#pragma once

#include "platform/linux/atspi/BusApplications.h"

namespace quillmender::atspi {

/// A window on the accessibility bus, and whose it is.
struct OwnedFrame {
    ObjectRef object;
    qint64 processId = 0;
};

/// The windows of other applications that say that they are active. All are asked at once: one
/// that hangs would leave no time for those behind it. Nothing when the bus has gone meanwhile.
QCoro::Task<QList<OwnedFrame>> findActiveFrames(AtspiBus &bus,
                                                std::shared_ptr<BusApplications> applications,
                                                CallBudgetRef budget);

} // namespace quillmender::atspi
