#pragma once

#include "platform/linux/wayland/kwin/ShortcutKeys.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>

namespace quillmender {

/// A keeper of global shortcuts with one action. Its name is on the bus as long as it lives.
class FakeGlobalAccel : public QDBusVirtualObject {
    Q_OBJECT

  public:
    enum class Manner { usual, garbled, refused, mute };

    /// What it knows of the action from before.
    explicit FakeGlobalAccel(kwin::ShortcutKeys keys = {}, kwin::ShortcutKeys usual = {});
    ~FakeGlobalAccel() override;

    void setManner(const QString &method, Manner manner) { manners_.insert(method, manner); }
    /// Somebody else has all keys, or gives them back.
    void setTaken(bool isTaken) { isTaken_ = isTaken; }

    const kwin::ShortcutKeys &keys() const { return keys_; }
    const kwin::ShortcutKeys &usualKeys() const { return usual_; }

    /// Methods in the order in which they were called, setShortcutKeys with its flags.
    QStringList asked() const { return asked_; }
    void forget() { asked_.clear(); }

    void tellPressed(bool isPressed);
    /// As when the user has changed the keys of an action in the system's settings.
    void tellKeys(const QString &component, const kwin::ShortcutKeys &keys);
    void tellNonsense();

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &) const override { return {}; }

  private:
    QVariantList answer(const QDBusMessage &call);
    void send(const QString &path, const QString &interface, const QString &signal,
              const QVariantList &arguments);

    QString connectionName_;
    QDBusConnection bus_;
    QHash<QString, Manner> manners_;
    kwin::ShortcutKeys keys_;
    kwin::ShortcutKeys usual_;
    QStringList action_;
    QStringList asked_;
    bool isTaken_ = false;
};

} // namespace quillmender
