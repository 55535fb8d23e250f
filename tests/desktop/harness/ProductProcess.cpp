#include "desktop/harness/ProductProcess.h"

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/HarnessError.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFile>

namespace quillmender::harness {

namespace {

const auto busName = QStringLiteral("com.quillmender.Quillmender");
const auto busPath = QStringLiteral("/com/quillmender/Quillmender");

void writeSettings(const AnyDesktop &desktop, const QMap<QString, QString> &settings) {
    const QString folder = desktop.folders().config() + QStringLiteral("/quillmender");
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/quillmender.conf"));
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(file.fileName()));
    file.write("[General]\n");
    for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
        file.write(QStringLiteral("%1=\"%2\"\n").arg(setting.key(), setting.value()).toUtf8());
}

Command prepare(AnyDesktop &desktop, const ProductProcess::Setup &setup) {
    if (!setup.settings.isEmpty())
        writeSettings(desktop, setup.settings);
    for (auto key = setup.apiKeys.cbegin(); key != setup.apiKeys.cend(); ++key) {
        desktop.keyring()->store(QStringLiteral("com.quillmender.") + key.key(),
                                 QStringLiteral("api-key"), key.value());
    }
    const QString program = setup.program.isEmpty() ? ProductProcess::path() : setup.program;
    desktop.prepareFor(program);
    Command command = desktop.command(program, setup.arguments);
    for (auto each = setup.environment.cbegin(); each != setup.environment.cend(); ++each)
        command.environment.insert(each.key(), each.value());
    return command;
}

} // namespace

ProductProcess::ProductProcess(AnyDesktop &desktop, const Setup &setup)
    : desktop_(desktop),
      process_(prepare(desktop, setup)) {}

ProductProcess::Setup ProductProcess::openAi(const QString &endpoint) {
    return {.settings = {{QStringLiteral("settings.selectedProvider"), QStringLiteral("openAI")},
                         {QStringLiteral("settings.openai.endpoint"), endpoint},
                         {QStringLiteral("settings.openai.model"), QStringLiteral("test-model")}},
            .apiKeys = {{QStringLiteral("openAI"), "test-key"}},
            .environment = {}};
}

QString ProductProcess::path() {
    return qEnvironmentVariable("QUILLMENDER_PROGRAM", QStringLiteral(QUILLMENDER_PROGRAM));
}

void ProductProcess::waitUntilReady() {
    const auto isOnTheBus = [this] {
        if (!process_.isRunning())
            throw HarnessError(
                QStringLiteral("the program ended: %1").arg(QString::fromUtf8(log())));
        return desktop_.sessionBus().hasOwner(busName);
    };
    waitUntil(isOnTheBus, QStringLiteral("the program is on the session bus"));
    // It takes its name first and its hot key then; an answer comes from its event loop only.
    // Meanwhile it may ask for a status area, which this process can be.
    const QDBusPendingCallWatcher question(desktop_.sessionBus().connection().asyncCall(
        QDBusMessage::createMethodCall(busName, busPath,
                                       QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                       QStringLiteral("Introspect"))));
    waitUntil([&] { return question.isFinished(); }, QStringLiteral("the program answers"));
}

void ProductProcess::activateAction(const QString &action) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        busName, busPath, QStringLiteral("org.freedesktop.Application"),
        QStringLiteral("ActivateAction"));
    call.setArguments({action, QVariantList(), QVariantMap()});
    desktop_.sessionBus().connection().call(call, QDBus::NoBlock);
}

} // namespace quillmender::harness
