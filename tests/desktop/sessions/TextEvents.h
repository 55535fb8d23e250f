#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>

namespace quillmender {

/// Listens on the accessibility bus, as a screen reader does, to what applications tell of
/// changes of their texts.
class TextEvents : public QObject {
    Q_OBJECT

  public:
    explicit TextEvents(const QDBusConnection &accessibilityBus);

    /// What that object has told to be inserted or removed, in its order.
    QStringList of(const QString &service, const QString &path) const;

  private Q_SLOTS:
    void receive(const QDBusMessage &message);

  private:
    struct Event {
        QString service;
        QString path;
        QString text;
    };

    QDBusConnection bus_;
    QList<Event> events_;
};

} // namespace quillmender
