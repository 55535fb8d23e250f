#include "desktop/sessions/TextEvents.h"

#include "desktop/harness/HarnessError.h"

#include <QDBusVariant>

namespace quillmender {

TextEvents::TextEvents(const QDBusConnection &accessibilityBus) : bus_(accessibilityBus) {
    if (!bus_.connect(QString(), QString(), QStringLiteral("org.a11y.atspi.Event.Object"),
                      QStringLiteral("TextChanged"), this, SLOT(receive(QDBusMessage))))
        throw harness::HarnessError(QStringLiteral("cannot listen on the accessibility bus"));
    // Applications send only what somebody has asked the registry for.
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/registry"),
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("RegisterEvent"));
    call.setArguments({QStringLiteral("object:text-changed")});
    const QDBusMessage reply = bus_.call(call);
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw harness::HarnessError(reply.errorMessage());
}

void TextEvents::receive(const QDBusMessage &message) {
    constexpr qsizetype changedText = 3;
    const QVariant argument = message.arguments().value(changedText);
    const QVariant text =
        argument.canConvert<QDBusVariant>() ? argument.value<QDBusVariant>().variant() : argument;
    events_.append({message.service(), message.path(), text.toString()});
}

QStringList TextEvents::of(const QString &service, const QString &path) const {
    QStringList texts;
    for (const Event &event : events_)
        if (event.service == service && event.path == path)
            texts.append(event.text);
    return texts;
}

} // namespace quillmender
