#pragma once

#include "platform/linux/atspi/AtspiTypes.h"
#include "platform/linux/atspi/PendingCall.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QDeadlineTimer>
#include <QObject>

#include <optional>

namespace quillmender::atspi {

/// Our own connection to the accessibility bus, made when the bus is there, made again when the
/// bus has been started again.
class AtspiBus : public QObject {
    Q_OBJECT

  public:
    explicit AtspiBus(const QDBusConnection &session);
    ~AtspiBus() override;

    /// Puts the questions already that `isEnabledAndAnswers` waits for. Does not block.
    void askIfEnabled(QDeadlineTimer deadline);

    /// Whether the desktop's accessibility switch (`org.a11y.Status`) is on and the bus shows a
    /// sign of life; connects to it if need be. Blocks, at most until then.
    bool isEnabledAndAnswers(QDeadlineTimer deadline);

    void enable(QDeadlineTimer deadline);

    bool isConnected() const { return connection_.isConnected(); }

    /// For the subscription of signals.
    QDBusConnection connection() const { return connection_; }

    PendingCall call(const CallBudgetRef &budget, const ObjectRef &object, const char *interface,
                     const char *member, const QVariantList &arguments = {},
                     std::chrono::milliseconds allowance = {});
    PendingCall property(const CallBudgetRef &budget, const ObjectRef &object,
                         const char *interface, const char *name);

    /// Sends without asking for an answer: some toolkits act and never reply.
    void post(const ObjectRef &object, const char *interface, const char *member,
              const QVariantList &arguments);

  Q_SIGNALS:
    /// A new connection stands; subscriptions of an earlier one are gone.
    void connected();

  private:
    struct Questions {
        QDeadlineTimer deadline;
        QDBusPendingCall isEnabled;
        std::optional<QDBusPendingCall> isAlive; ///< absent without a connection
    };

    void connectAgain();
    bool connectToBus(QDeadlineTimer deadline);
    void dropConnection();

    QString busAddress(QDeadlineTimer deadline) const;

    QDBusConnection session_;
    QDBusConnection connection_;
    QString name_;
    std::optional<Questions> asked_;
};

} // namespace quillmender::atspi
