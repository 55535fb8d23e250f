#pragma once

#include "platform/linux/FrontWindows.h"
#include "platform/linux/atspi/BusApplications.h"
#include "platform/linux/atspi/RegisteredEvents.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QPointer>

namespace quillmender::atspi {

/// The window in front as applications tell of their own on the accessibility bus when they are
/// activated and deactivated. Nobody is asked but the bus itself and, for its names, the
/// application that has just told: one that hangs by then has none, and delays nobody.
///
/// Applications that are not on the bus are not seen: while one of them is in front, no window is
/// active.
class ActiveFrames : public FrontWindows {
    Q_OBJECT

  public:
    /// The bus must outlive the object.
    explicit ActiveFrames(AtspiBus &bus);

    std::optional<FrontWindow> latest() const override { return latest_; }
    bool isActive() const override { return latest_ && isActive_; }

  private Q_SLOTS:
    void windowActivated(const QDBusMessage &event);
    void windowDeactivated(const QDBusMessage &event);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void subscribe();
    static QCoro::Task<> lookAround(QPointer<ActiveFrames> self);
    void adopt(const ObjectRef &frame, qint64 process);
    void seeWhetherItIsThere();
    void askName(const ObjectRef &object, QString FrontWindow::*name);
    void forget();

    AtspiBus &bus_;
    RegisteredEvents events_;
    QDBusServiceWatcher applicationWatch_; ///< of the latest one's
    ObjectRef frame_;                      ///< the latest window
    std::optional<FrontWindow> latest_;
    bool isActive_ = false;
    ObjectRef candidate_; ///< has said that it is active, and the bus is asked whose it is
    quint64 news_ = 0;    ///< how often something was told
};

} // namespace quillmender::atspi
