#pragma once

#include "platform/linux/atspi/AtspiBus.h"

#include <QHash>

namespace quillmender::atspi {

enum class Toolkit { unknown, gtk, qt, gecko, chromium, libreOffice };

Toolkit toolkitNamed(const QString &name);

/// What is known of the applications on the accessibility bus. Unique names are never used
/// again, so that an answer stays true.
class BusApplications {
  public:
    explicit BusApplications(AtspiBus &bus) : bus_(bus) {}

    /// 0 when it was not asked yet.
    qint64 knownProcess(const QString &service) const { return processes_.value(service); }

    /// 0 when the bus does not know.
    QCoro::Task<qint64> processOf(QString service, CallBudgetRef budget);

    /// The same of several, asked at once; in their order.
    QCoro::Task<QList<qint64>> processesOf(QStringList services, CallBudgetRef budget);

    QCoro::Task<Toolkit> toolkitOf(QString service, CallBudgetRef budget);

    /// The two halves of processOf(), for who cannot await it: the question, and its answer.
    QDBusPendingCall askProcess(const QString &service);
    qint64 learnProcess(const QString &service, const QVariantList &answer);

    /// The same of toolkitOf().
    QDBusPendingCall askToolkit(const QString &service);
    Toolkit learnToolkit(const QString &service, const QVariantList &answer);

    /// All that the registry lists.
    QCoro::Task<QStringList> services(CallBudgetRef budget);

    /// Chromium and what is built on it make their tree when somebody asks for the attributes of
    /// a frame. Does nothing with the others.
    QCoro::Task<> wake(ObjectRef frame, CallBudgetRef budget);

    void clear();

  private:
    qint64 learnProcess(const QString &service, qint64 process);
    Toolkit remember(const QString &service, Toolkit toolkit);
    PendingCall processQuestion(const QString &service, const CallBudgetRef &budget);
    PendingCall toolkitQuestion(const QString &service, const CallBudgetRef &budget);

    AtspiBus &bus_;
    QHash<QString, qint64> processes_;
    QHash<QString, Toolkit> toolkits_;
};

} // namespace quillmender::atspi
