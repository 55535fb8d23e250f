#pragma once

#include "platform/linux/atspi/BusApplications.h"
#include "platform/linux/atspi/RegisteredEvents.h"

#include <QDBusMessage>
#include <QHash>
#include <QStringList>

#include <functional>

namespace quillmender::atspi {

/// Which objects said of late that they have the focus: a handful per application, of the
/// applications heard of last. Follows two events only, a gained focus and an activated window: the
/// bus filters them, so that typing anywhere wakes neither us nor makes applications send more.
class FocusMemory : public QObject {
    Q_OBJECT

  public:
    /// Both must outlive the object.
    FocusMemory(AtspiBus &bus, BusApplications &applications);

    void remember(const ObjectRef &object);
    void clear();

    /// Latest first.
    QList<ObjectRef> latest(const QString &service) const { return latest_.value(service); }

    /// The applications that were heard of, latest first.
    QStringList services() const { return services_; }

  private Q_SLOTS:
    void subscribe();
    void focusGained(const QDBusMessage &event);
    void windowActivated(const QDBusMessage &event);

  private:
    void learnProcess(const QString &service);
    void await(const QDBusPendingCall &question, std::function<void(const QVariantList &)> learn);

    AtspiBus &bus_;
    BusApplications &applications_;
    RegisteredEvents events_;
    QHash<QString, QList<ObjectRef>> latest_;
    QStringList services_;

    static constexpr int objectsPerService = 6;
    static constexpr int maximumServices = 64;
};

} // namespace quillmender::atspi
