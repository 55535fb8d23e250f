#pragma once

#include "platform/HeldHotKey.h"
#include "platform/linux/wayland/sway/SwayIpc.h"

#include <QCoroTask>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

namespace quillmender::sway {

/// A hot key as a binding of the compositor's to a command that does nothing but be reported. The
/// compositor lets a binding replace another without a word, so that its configuration is read
/// first, and anew whenever it has been loaded again, which drops the binding: keys of the user's
/// are never taken. What the user binds by hand to the same keys later is seen when it is used.
///
/// Bindings belong to a mode of the compositor. This one is made in the usual mode, and is waited
/// for while there is another.
class SwayHotKey : public HeldHotKey {
    Q_OBJECT

  public:
    /// `spelled` is the compositor's spelling of the keys.
    SwayHotKey(SwayIpc &ipc, QKeyCombination keys, QString spelled, std::function<void()> handler);
    ~SwayHotKey() override;

    std::optional<QKeyCombination> keys() const override;

    /// Why no keys are held, in words for the log.
    const QString &reason() const { return reason_; }

    /// Whether the compositor has been asked for the keys and has answered.
    bool isSettled() const { return !isTaking_; }

  Q_SIGNALS:
    void settled();

  private:
    struct Attempt {
        bool isHeld = false;
        bool isWorthRepeating = false; ///< nobody has refused
        QString reason{};
    };

    /// Runs until nothing has changed meanwhile, or the hot key has gone.
    static QCoro::Task<> take(QPointer<SwayHotKey> self);
    static QCoro::Task<Attempt> attempt(QPointer<SwayHotKey> self, quint64 turn);
    static QCoro::Task<std::optional<QString>> lineInTheWay(QPointer<SwayIpc> ipc,
                                                            QKeyCombination keys);

    void refresh();
    void settle(const Attempt &outcome);
    void setHeld(bool isHeld, const QString &reason);
    void handleEvent(Event event, const QJsonObject &content);
    void handleBinding(const QJsonObject &binding);
    void handlePress();
    void handleLoss();
    bool isOurCombination(const QJsonObject &binding) const;

    SwayIpc &ipc_;
    const QKeyCombination asked_;
    const QString spelled_;
    const QString command_; ///< no other binding has it
    quint64 turn_ = 0;      ///< counts what makes an attempt under way worthless
    bool isTaking_ = false;
    bool isHeld_ = false;
    bool mayBeBound_ = false;
    bool isWithoutRepeats_ = true; ///< the compositor itself leaves them out
    QElapsedTimer lastPress_;
    QTimer again_;
    QString reason_;
};

} // namespace quillmender::sway
