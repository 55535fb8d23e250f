#include "platform/linux/wayland/kwin/SeatLayout.h"

#include "platform/linux/wayland/kwin/SeatKeyboard.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>

namespace quillmender::kwin {

namespace {

constexpr int limitMilliseconds = 250;

QCoro::Task<quint32> activeLayout(QDBusConnection bus) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.kde.keyboard"), QStringLiteral("/Layouts"),
        QStringLiteral("org.kde.KeyboardLayouts"), QStringLiteral("getLayout"));
    call.setAutoStartService(false);
    QDBusPendingCall pending = bus.asyncCall(call, limitMilliseconds);
    const QDBusMessage reply = co_await pending;
    const bool isAnswer =
        reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QStringLiteral("u");
    co_return isAnswer ? reply.arguments().constFirst().toUInt() : 0;
}

} // namespace

QCoro::Task<ChordCodes> SeatLayout::codesOf(wayland::TypedKeys keys) const {
    const QByteArray keymap = keyboard_.keymap();
    const quint32 layout = co_await activeLayout(bus_);
    co_return kwin::codesOf(keys, keymap, layout);
}

} // namespace quillmender::kwin
