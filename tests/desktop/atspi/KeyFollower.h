#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

namespace quillmender::atspi {

/// A screen reader as the accessibility registry knows it: it is shown every key of applications on
/// the bus, which wait until it has answered.
class KeyFollower : public QDBusVirtualObject {
  public:
    explicit KeyFollower(QDBusConnection bus);
    ~KeyFollower() override;

    /// Whether a key waits for its answer.
    bool isAsked() const { return !questions_.isEmpty(); }

    /// Lets this key go on, and all that follow.
    void letGo();

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override;

  private:
    void answer(const QDBusMessage &question);

    QDBusConnection bus_;
    QList<QDBusMessage> questions_;
    bool isLettingGo_ = false;
};

} // namespace quillmender::atspi
