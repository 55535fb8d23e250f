#pragma once

#include "platform/linux/atspi/BusApplications.h"
#include "platform/linux/atspi/FocusMemory.h"

#include <QDBusMessage>

namespace quillmender::atspi {

/// Follows two events only, a gained focus and an activated window: the bus filters them, so that
/// typing anywhere wakes neither us nor makes applications send more.
class FocusEvents : public QObject {
    Q_OBJECT

  public:
    FocusEvents(AtspiBus &bus, BusApplications &applications, FocusMemory &memory);

  private Q_SLOTS:
    void subscribe();
    void registerEvents();
    void focusGained(const QDBusMessage &event);
    void windowActivated(const QDBusMessage &event);

  private:
    AtspiBus &bus_;
    BusApplications &applications_;
    FocusMemory &memory_;
};

} // namespace quillmender::atspi
