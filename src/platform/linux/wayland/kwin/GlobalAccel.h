#pragma once

#include "platform/linux/wayland/kwin/ShortcutKeys.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QStringList>

#include <optional>

namespace quillmender::kwin {

/// The desktop's keeper of global shortcuts, `org.kde.kglobalaccel`, by the few calls that are used
/// of it. An action is named by its component, its own name there, and what people read of both.
/// No answer within five seconds, an error and nonsense are all an absent answer.
class GlobalAccel {
  public:
    static const QString service;
    static const QString path;
    static const QString interface;

    /// How keys are set: in use from now on; whatever the user has chosen before; as those that a
    /// reset brings back, with no effect now.
    enum Flag : quint32 { present = 2, regardless = 4, asDefault = 8 };

    explicit GlobalAccel(QDBusConnection bus) : bus_(std::move(bus)) {}

    /// False when it has not answered.
    QCoro::Task<bool> doRegister(QStringList action) const;

    QCoro::Task<std::optional<ShortcutKeys>> keys(QStringList action) const;
    QCoro::Task<std::optional<ShortcutKeys>> defaultKeys(QStringList action) const;

    /// What the action has then: nothing where others have the keys.
    QCoro::Task<std::optional<ShortcutKeys>> setKeys(QStringList action, ShortcutKeys keys,
                                                     quint32 flags) const;

    /// Who has the keys, in words; empty when nobody has.
    QCoro::Task<QString> ownerOf(ShortcutKeys keys) const;

    /// Lets go of the keys without waiting: what the user has chosen is kept.
    void setInactive(const QStringList &action) const;

    /// The same, and waits until it is so, a quarter of a second at most.
    void setInactiveNow(const QStringList &action) const;

  private:
    QDBusConnection bus_;
};

} // namespace quillmender::kwin
