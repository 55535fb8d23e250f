#pragma once

#include "platform/HeldHotKey.h"
#include "platform/linux/PressGate.h"
#include "platform/linux/wayland/kwin/GlobalAccel.h"

#include <QCoroTask>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QStringList>

namespace quillmender::kwin {

/// A global shortcut of `org.kde.kglobalaccel`. The keys are those that the user has chosen for it
/// in the system's settings, else the ones that were asked for, if nobody else has them; what the
/// user changes there is followed. When that service has gone and come back, they are held again.
class KdeHotKey : public HeldHotKey {
    Q_OBJECT

  public:
    KdeHotKey(QDBusConnection bus, QStringList action, QKeyCombination asked,
              std::function<void()> handler);
    ~KdeHotKey() override;

    struct Registration {
        bool isAnswered = false;
        QString reason{}; ///< why no keys are held, in words for the log
    };

    /// Registers the action and its keys. A later call makes what this one still waits for void.
    QCoro::Task<Registration> registerKeys();

    std::optional<QKeyCombination> keys() const override { return held_; }

  private Q_SLOTS: // NOLINT(readability-redundant-access-specifiers): moc reads it
    void handlePressed();
    void handleReleased();
    void handleKeysChanged(const QDBusMessage &signal);

  private: // NOLINT(readability-redundant-access-specifiers): ends the slots
    void watch();
    void handleServiceGone();
    void registerAgain();
    void setHeld(std::optional<QKeyCombination> keys);

    QDBusConnection bus_;
    GlobalAccel accel_;
    const QStringList action_;
    const QKeyCombination asked_;
    QDBusServiceWatcher service_;
    PressGate gate_;
    std::optional<QKeyCombination> held_;
    quint64 registration_ = 0; ///< the latest one
    bool isTaken_ = false;     ///< somebody else has the keys
};

} // namespace quillmender::kwin
