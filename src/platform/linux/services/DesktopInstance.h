#pragma once

#include "platform/Instance.h"

#include <QDBusAbstractAdaptor>
#include <QObject>
#include <QVariantMap>

namespace quillmender {

/// The bus name `com.quillmender.Quillmender` with the interface `org.freedesktop.Application`
/// (D-Bus activation of desktop entries). Without a session bus every copy runs. Whoever owns the
/// name and does not say in time that it is this program makes the claim fail.
class DesktopInstance : public QObject, public Instance {
    Q_OBJECT

  public:
    InstanceClaim claim(std::function<void(const QString &action)> onAction) override;

    void perform(const QString &action);

  private:
    std::function<void(const QString &action)> onAction_;
};

/// The desktop's interface.
class ApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    explicit ApplicationAdaptor(DesktopInstance *instance);

  public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): the names on the bus
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameter,
                        const QVariantMap &platformData);
    // NOLINTEND(readability-identifier-naming)

  private:
    DesktopInstance *instance_;
};

/// The program's own interface, for its second copy.
class InstanceAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.quillmender.Quillmender")

  public:
    explicit InstanceAdaptor(DesktopInstance *instance);

  public Q_SLOTS:
    /// Activates the program and answers the name of this interface, by which the caller knows it.
    // NOLINTNEXTLINE(readability-identifier-naming): the name on the bus
    QString ActivateInstance();

  private:
    DesktopInstance *instance_;
};

} // namespace quillmender
