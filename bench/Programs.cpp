#include "bench/Programs.h"

#include "bench/StatusNotifierHost.h"
#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/ProductProcess.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

namespace quillmender::bench {

namespace {

using std::chrono::steady_clock;

// Answered in a turn of the event loop of the object's thread, so not before the loop runs.
QDBusMessage question(const TrayProgram &program) {
    return QDBusMessage::createMethodCall(program.busName, program.objectPath,
                                          QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                          QStringLiteral("Introspect"));
}

} // namespace

TrayProgram quillmenderProgram() {
    return {QStringLiteral("quillmender"), QStringLiteral("com.quillmender.Quillmender"),
            QStringLiteral("/com/quillmender/Quillmender")};
}

TrayProgram floorTrayProgram() {
    return {QStringLiteral("floor-tray"), QStringLiteral("com.quillmender.FloorTray"),
            QStringLiteral("/com/quillmender/FloorTray")};
}

StartedProgram::StartedProgram(harness::AnyDesktop &desktop, StatusNotifierHost &host,
                               const TrayProgram &program) {
    const QDBusConnection bus = desktop.sessionBus().connection();
    std::optional<TimePoint> answeredAt;
    QDBusServiceWatcher names(program.busName, bus, QDBusServiceWatcher::WatchForRegistration);
    QObject::connect(&names, &QDBusServiceWatcher::serviceRegistered, &names, [&] {
        auto *call = new QDBusPendingCallWatcher(bus.asyncCall(question(program)), &names);
        QObject::connect(call, &QDBusPendingCallWatcher::finished, &names, [&, call] {
            if (!call->isError())
                answeredAt = steady_clock::now();
        });
    });
    const int itemsBefore = host.registrations();
    desktop.prepareFor(besideThis(program.file));

    const TimePoint start = steady_clock::now();
    process_ = std::make_unique<harness::ChildProcess>(desktop.command(besideThis(program.file)));
    harness::waitUntil([&] { return answeredAt && host.registrations() > itemsBefore; },
                       QStringLiteral("%1 is up").arg(program.file));
    eventLoopMs_ = milliseconds(start, *answeredAt);
    statusItemMs_ = milliseconds(start, host.lastRegistration());
}

QString besideThis(const QString &program) {
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + program;
}

void configureProvider(harness::AnyDesktop &desktop, const QString &baseUrl) {
    // It writes them when it is started; what is measured starts later.
    harness::ProductProcess(
        desktop, harness::ProductProcess::openAi(baseUrl + QStringLiteral("/v1/responses")))
        .waitUntilReady();
}

} // namespace quillmender::bench
