#include "platform/linux/atspi/BusApplications.h"

#include "platform/linux/atspi/Decoding.h"

#include <optional>
#include <vector>

namespace quillmender::atspi {

namespace {
constexpr int maximumKnown = 1000;
} // namespace

Toolkit toolkitNamed(const QString &name) {
    const QString lower = name.toLower();
    if (lower.startsWith(QStringLiteral("gtk")))
        return Toolkit::gtk;
    if (lower.startsWith(QStringLiteral("qt")))
        return Toolkit::qt;
    if (lower == QStringLiteral("gecko"))
        return Toolkit::gecko;
    if (lower == QStringLiteral("chromium"))
        return Toolkit::chromium;
    if (lower == QStringLiteral("vcl") || lower.startsWith(QStringLiteral("libreoffice")))
        return Toolkit::libreOffice;
    return Toolkit::unknown;
}

QCoro::Task<qint64> BusApplications::processOf(QString service, CallBudgetRef budget) {
    const QStringList alone{service};
    const QList<qint64> processes = co_await processesOf(alone, budget);
    co_return processes.constFirst();
}

QCoro::Task<QList<qint64>> BusApplications::processesOf(QStringList services,
                                                        CallBudgetRef budget) {
    std::vector<std::optional<PendingCall>> calls;
    QList<qint64> processes;
    for (const QString &service : services) {
        auto &call = calls.emplace_back();
        processes.append(processes_.value(service));
        if (processes.constLast() == 0)
            call = processQuestion(service, budget);
    }
    for (qsizetype i = 0; i < services.size(); ++i) {
        const auto &call = calls[size_t(i)];
        if (!call)
            continue;
        const auto answer = co_await call->answer();
        processes[i] = learnProcess(services[i], intValue(answer).value_or(0));
    }
    co_return processes;
}

QDBusPendingCall BusApplications::askProcess(const QString &service) {
    return processQuestion(service, std::make_shared<CallBudget>()).pending();
}

qint64 BusApplications::learnProcess(const QString &service, const QVariantList &answer) {
    return learnProcess(service, intValue(answer).value_or(0));
}

qint64 BusApplications::learnProcess(const QString &service, qint64 process) {
    if (process != 0) {
        if (processes_.size() >= maximumKnown)
            processes_.clear();
        processes_.insert(service, process);
    }
    return process;
}

QCoro::Task<Toolkit> BusApplications::toolkitOf(QString service, CallBudgetRef budget) {
    if (service.isEmpty())
        co_return Toolkit::unknown;
    const auto known = toolkits_.constFind(service);
    if (known != toolkits_.cend())
        co_return known.value();
    const PendingCall call = toolkitQuestion(service, budget);
    const ObjectRef root{service, QLatin1String(protocol::rootPath)};
    const PendingCall nameCall = bus_.property(budget, root, protocol::accessible, "Name");
    const auto answer = co_await call.answer();
    const auto name = co_await nameCall.answer();
    if (!answer)
        co_return Toolkit::unknown;
    // Within GTK's or Qt's windows it says that it is theirs, and its texts are still its own.
    const bool isOffice = firstValue(name).toString() == QStringLiteral("soffice");
    co_return remember(service, isOffice ? Toolkit::libreOffice
                                         : toolkitNamed(firstValue(answer).toString()));
}

QDBusPendingCall BusApplications::askToolkit(const QString &service) {
    return toolkitQuestion(service, std::make_shared<CallBudget>()).pending();
}

Toolkit BusApplications::learnToolkit(const QString &service, const QVariantList &answer) {
    const Toolkit toolkit = toolkitNamed(firstValue(answer).toString());
    // Others may turn out to be LibreOffice.
    return toolkit == Toolkit::chromium ? remember(service, toolkit) : toolkit;
}

Toolkit BusApplications::remember(const QString &service, Toolkit toolkit) {
    if (toolkits_.size() >= maximumKnown)
        toolkits_.clear();
    toolkits_.insert(service, toolkit);
    return toolkit;
}

PendingCall BusApplications::processQuestion(const QString &service, const CallBudgetRef &budget) {
    const ObjectRef daemon{QStringLiteral("org.freedesktop.DBus"),
                           QStringLiteral("/org/freedesktop/DBus")};
    return bus_.call(budget, daemon, "org.freedesktop.DBus", "GetConnectionUnixProcessID",
                     {service});
}

PendingCall BusApplications::toolkitQuestion(const QString &service, const CallBudgetRef &budget) {
    const ObjectRef root{service, QLatin1String(protocol::rootPath)};
    return bus_.property(budget, root, protocol::application, "ToolkitName");
}

QCoro::Task<QStringList> BusApplications::services(CallBudgetRef budget) {
    const ObjectRef registry{QLatin1String(protocol::registry), QLatin1String(protocol::rootPath)};
    const PendingCall call = bus_.call(budget, registry, protocol::accessible, "GetChildren");
    const auto answer = co_await call.answer();
    QStringList services;
    const auto roots = decodeObjects(firstValue(answer), maximumKnown);
    for (const ObjectRef &root : roots)
        services.append(root.service);
    co_return services;
}

QCoro::Task<> BusApplications::wake(ObjectRef frame, CallBudgetRef budget) {
    const Toolkit toolkit = co_await toolkitOf(frame.service, budget);
    if (toolkit != Toolkit::chromium)
        co_return;
    const PendingCall call = bus_.call(budget, frame, protocol::accessible, "GetAttributes");
    co_await call.answer();
}

void BusApplications::clear() {
    processes_.clear();
    toolkits_.clear();
}

} // namespace quillmender::atspi
