#include "desktop/harness/SessionBus.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUuid>

namespace quillmender::harness {

namespace {

QString writeConfiguration(const QString &folder, const QStringList &services) {
    const QString serviceFolder = folder + QStringLiteral("/services");
    QDir().mkpath(serviceFolder);
    for (const QString &service : services) {
        if (!QFile::copy(service, serviceFolder + QLatin1Char('/') + QFileInfo(service).fileName()))
            throw HarnessError(QStringLiteral("cannot copy %1").arg(service));
    }
    const QString path = folder + QStringLiteral("/session-bus.conf");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(path));
    file.write(
        "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
        " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
        "<busconfig>\n"
        "  <type>session</type>\n"
        "  <keep_umask/>\n"
        "  <listen>unix:path=");
    file.write(QUrl::toPercentEncoding(folder, "/._-"));
    file.write("/session-bus</listen>\n"
               "  <auth>EXTERNAL</auth>\n"
               "  <servicedir>services</servicedir>\n"
               "  <policy context=\"default\">\n"
               "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
               "    <allow eavesdrop=\"true\"/>\n"
               "    <allow own=\"*\"/>\n"
               "  </policy>\n"
               "</busconfig>\n");
    return path;
}

} // namespace

SessionBus::SessionBus(const QString &folder, const QProcessEnvironment &environment,
                       const QString &logFile, const QStringList &services)
    : process_(
          {.program = QStringLiteral("dbus-daemon"),
           .arguments = {QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
                         QStringLiteral("--nosyslog"), QStringLiteral("--print-address=1"),
                         QStringLiteral("--config-file"), writeConfiguration(folder, services)},
           .environment = environment,
           .logFile = logFile,
           .input = {},
           .pipeOutput = true,
           .workingDirectory = {}}),
      address_(QString::fromLatin1(process_.readLine(defaultDeadline))),
      connection_(QDBusConnection::connectToBus(address_, QUuid::createUuid().toString())) {
    if (!connection_.isConnected())
        throw HarnessError(QStringLiteral("no connection to the session bus: %1")
                               .arg(connection_.lastError().message()));
}

SessionBus::~SessionBus() {
    QDBusConnection::disconnectFromBus(connection_.name());
}

bool SessionBus::hasOwner(const QString &name) const {
    return connection_.interface()->isServiceRegistered(name);
}

void SessionBus::waitForOwner(const QString &name) const {
    waitUntil([&] { return hasOwner(name); }, QStringLiteral("%1 is on the bus").arg(name));
}

} // namespace quillmender::harness
