#include "desktop/harness/wayland/KWinScripting.h"

#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDBusMessage>
#include <QFile>

namespace quillmender::harness {

namespace {

const auto kwin = QStringLiteral("org.kde.KWin");
const auto scriptingPath = QStringLiteral("/Scripting");
const auto scriptingInterface = QStringLiteral("org.kde.kwin.Scripting");

} // namespace

KWinScripting::KWinScripting(const QDBusConnection &sessionBus, QString folder)
    : bus_(sessionBus),
      folder_(std::move(folder)),
      objectPath_(QStringLiteral("/report")) {
    bus_.registerObject(objectPath_, this, QDBusConnection::ExportAllSlots);
}

KWinScripting::~KWinScripting() {
    bus_.unregisterObject(objectPath_);
}

QString KWinScripting::run(const QString &script) {
    const QString name = QStringLiteral("test-%1").arg(++count_);
    QFile file(folder_ + QLatin1Char('/') + name + QStringLiteral(".js"));
    if (!file.open(QIODevice::WriteOnly))
        throw HarnessError(QStringLiteral("cannot write %1").arg(file.fileName()));
    file.write(QStringLiteral("function report(text) { callDBus('%1', '%2', "
                              "'com.quillmender.Test.Report', 'take', '' + text); }\n")
                   .arg(bus_.baseService(), objectPath_)
                   .toUtf8() +
               script.toUtf8());
    file.close();
    report_.reset();
    const int number = call(scriptingPath, scriptingInterface, QStringLiteral("loadScript"),
                            {file.fileName(), name})
                           .toInt();
    // It answers when the script has ended, which may be waiting for its report to be taken.
    bus_.call(QDBusMessage::createMethodCall(
                  kwin, QStringLiteral("/Scripting/Script%1").arg(number),
                  QStringLiteral("org.kde.kwin.Script"), QStringLiteral("run")),
              QDBus::NoBlock);
    waitUntil([&] { return report_.has_value(); }, QStringLiteral("KWin's script reports"));
    // The next script may get the same number.
    call(scriptingPath, scriptingInterface, QStringLiteral("unloadScript"), {name});
    return *report_;
}

QVariant KWinScripting::call(const QString &path, const QString &interface, const QString &method,
                             const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(kwin, path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage answer =
        bus_.call(message, QDBus::Block, static_cast<int>(defaultDeadline.count()));
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw HarnessError(QStringLiteral("%1: %2").arg(method, answer.errorMessage()));
    return answer.arguments().value(0);
}

} // namespace quillmender::harness
