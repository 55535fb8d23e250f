#include "platform/linux/atspi/PendingCall.h"

#include <QCoroDBusPendingCall>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

namespace quillmender::atspi {

PendingCall::PendingCall(const QDBusPendingCall &pending, CallBudgetRef budget, QString service)
    : pending_(pending),
      budget_(std::move(budget)),
      service_(std::move(service)) {}

namespace {

QCoro::Task<std::optional<QVariantList>> await(QDBusPendingCall pending, CallBudgetRef budget,
                                               QString service) {
    const QDBusMessage reply = co_await pending;
    if (reply.type() == QDBusMessage::ReplyMessage)
        co_return reply.arguments();
    const QDBusError::ErrorType error = pending.error().type();
    if (error == QDBusError::NoReply || error == QDBusError::Timeout ||
        error == QDBusError::TimedOut)
        budget->noteSilence(service);
    co_return std::nullopt;
}

} // namespace

QCoro::Task<std::optional<QVariantList>> PendingCall::answer() const {
    return await(pending_, budget_, service_);
}

QVariant firstValue(const std::optional<QVariantList> &answer) {
    if (!answer || answer->isEmpty())
        return {};
    const QVariant &first = answer->constFirst();
    if (first.metaType() == QMetaType::fromType<QDBusVariant>())
        return first.value<QDBusVariant>().variant();
    return first;
}

std::optional<int> intValue(const std::optional<QVariantList> &answer) {
    const QVariant value = firstValue(answer);
    if (value.metaType() != QMetaType::fromType<int>() &&
        value.metaType() != QMetaType::fromType<uint>())
        return std::nullopt;
    return value.toInt();
}

} // namespace quillmender::atspi
