#include "desktop/stalls/ScriptedDocument.h"

#include "desktop/harness/ClipboardProbe.h"
#include "desktop/harness/HarnessError.h"
#include "desktop/harness/Waiter.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

#include <X11/keysym.h>

namespace quillmender {

using harness::waitUntil;

namespace {

QString nameOf(bool isOnBus) {
    return QStringLiteral("com.quillmender.StallingEditor.") +
           (isOnBus ? QStringLiteral("On") : QStringLiteral("Off"));
}

} // namespace

ScriptedDocument::ScriptedDocument(harness::Desktop &desktop, bool isOnBus)
    : desktop_(desktop),
      name_(nameOf(isOnBus)),
      application_(desktop, QStringLiteral(QUILLMENDER_STALLING_EDITOR),
                   {name_, desktop.accessibilityBus()->address(),
                    isOnBus ? QStringLiteral("on") : QStringLiteral("off")}) {}

void ScriptedDocument::prepare(const QString &text, int start, int end,
                               const QList<Stall> &stalls) {
    activate();
    ask("prepare", {text, start, end, toStrings(stalls)});
}

void ScriptedDocument::comeToRest() {
    waitUntil([this] { return ask("report").pending == 0; },
              QStringLiteral("the editor has done what it was late with"));
    activate();
    sendSentinel();
    // Keys that it handled may have asked for the clipboard; it takes one answer after the other.
    harness::ClipboardProbe(desktop_.display()).owner();
    sendSentinel();
}

void ScriptedDocument::sendSentinel() {
    const int before = ask("report").sentinels;
    desktop_.input().chord({XK_F12});
    waitUntil([&] { return ask("report").sentinels > before; },
              QStringLiteral("the editor handles its keys"));
}

QString ScriptedDocument::busName() {
    return desktop_.accessibilityBus()->connection().interface()->serviceOwner(name_);
}

ScriptedDocument::Report ScriptedDocument::ask(const char *member, const QVariantList &arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        name_, QStringLiteral("/control"), QStringLiteral("com.quillmender.StallingEditor"),
        QLatin1String(member));
    question.setArguments(arguments);
    const QDBusMessage reply = desktop_.accessibilityBus()->connection().call(
        question, QDBus::Block, int(harness::defaultDeadline.count()));
    if (reply.type() != QDBusMessage::ReplyMessage)
        throw harness::HarnessError(QStringLiteral("the editor: ") + reply.errorMessage());
    const QVariantList values = reply.arguments();
    return {values.value(0).toString(), values.value(1).toInt(), values.value(2).toInt(),
            values.value(3).toStringList()};
}

} // namespace quillmender
