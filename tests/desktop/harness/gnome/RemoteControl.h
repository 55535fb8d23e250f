#pragma once

#include <QDBusConnection>
#include <QVariant>

#include <optional>

namespace quillmender::harness {

/// A session of the shell's own interface for remote desktops, which asks nobody and is no portal.
/// It ends with this object. While there is one, the shell's bar says that the screen is shared.
class RemoteControl {
  public:
    /// Throws HarnessError when there is none to be had.
    explicit RemoteControl(QDBusConnection bus);
    RemoteControl(const RemoteControl &) = delete;
    RemoteControl &operator=(const RemoteControl &) = delete;
    ~RemoteControl();

    const QString &path() const { return path_; }
    QDBusConnection &bus() { return bus_; }

    /// Throws HarnessError with what the shell says when it refuses.
    QVariantList call(const QString &method, const QVariantList &arguments = {});
    /// For what may be refused for the moment. Absent when it is.
    std::optional<QVariantList> tryCall(const QString &method, const QVariantList &arguments);

    /// For the receivers of its signals.
    static QString service();
    static QString interface();

  private:
    QDBusConnection bus_;
    QString path_;
};

} // namespace quillmender::harness
