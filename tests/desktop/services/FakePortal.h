#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QVariantMap>

namespace quillmender {

using SettingGroups = QMap<QString, QVariantMap>;

/// A settings portal with settable values. Its name is on the bus as long as it lives.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

  public:
    /// On the environment's session bus, or the one that has this address.
    explicit FakePortal(const QVariantMap &appearance, const QString &busAddress = {});
    ~FakePortal() override;

    /// An accent colour as the portal tells it, channels from 0 to 1.
    static QVariant accent(double red, double green, double blue);

    void change(const QString &key, const QVariant &value);

  public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList &groups);

  Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

  private:
    QString connectionName_;
    QVariantMap appearance_;
};

} // namespace quillmender
