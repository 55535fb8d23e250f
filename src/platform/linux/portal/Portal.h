#pragma once

#include "platform/linux/portal/PortalAnswer.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantList>

#include <chrono>

namespace quillmender::portal {

/// What is asked of the portal. The options are the last argument of its methods.
struct PortalQuestion {
    QString interface{}; ///< without `org.freedesktop.portal.`
    QString method{};
    QVariantList arguments{};
    QVariantMap options{};
};

/// The desktop portal on the session bus. Before anything else it is told who asks
/// (org.freedesktop.host.portal.Registry), once for each time that it starts.
class Portal : public QObject {
    Q_OBJECT

  public:
    /// For what answers without the user.
    static constexpr std::chrono::milliseconds usualLimit{5000};
    /// For what the user is asked, who may take any time.
    static constexpr std::chrono::milliseconds noLimit{-1};

    /// A connection to the session bus of its own: who asks must be told before anything else, and
    /// the toolkit asks the portal on the common one.
    static QDBusConnection ownConnection();

    explicit Portal(QDBusConnection bus = ownConnection());

    const QDBusConnection &bus() const { return bus_; }

    /// The version of one of its interfaces, named without `org.freedesktop.portal.`; 0 when it is
    /// not there.
    QCoro::Task<quint32> version(QString interface);

    /// Asks and waits for the response; after `limit` it is given up.
    QCoro::Task<PortalAnswer> ask(PortalQuestion question, std::chrono::milliseconds limit);

    /// A call of a method that answers at once, to be sent by whoever makes it.
    static QDBusMessage call(const QString &interface, const QString &method,
                             const QVariantList &arguments);

  Q_SIGNALS:
    /// It has ended, with all sessions.
    void gone();
    /// It is there again.
    void came();

    /// It has been told who asks, or has not taken note of it.
    void introductionChanged();

  private:
    enum class Introduction { none, underWay, made };

    QCoro::Task<bool> introduceOurselves();
    void setIntroduction(Introduction introduction);

    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
    Introduction introduction_ = Introduction::none;
};

} // namespace quillmender::portal
