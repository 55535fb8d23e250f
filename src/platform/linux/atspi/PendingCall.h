#pragma once

#include "platform/linux/atspi/CallBudget.h"

#include <QCoroTask>
#include <QDBusPendingCall>
#include <QVariantList>

#include <optional>

namespace quillmender::atspi {

/// A call under way. Several are sent before the first answer is awaited.
class PendingCall {
  public:
    PendingCall(const QDBusPendingCall &pending, CallBudgetRef budget, QString service);

    /// The answer's arguments; nothing for an error or when time ran out, which silences the
    /// application for the rest of the capture.
    QCoro::Task<std::optional<QVariantList>> answer() const;

    const QDBusPendingCall &pending() const { return pending_; }

  private:
    QDBusPendingCall pending_;
    CallBudgetRef budget_;
    QString service_;
};

/// The value inside a Properties.Get answer or of a single-argument answer.
QVariant firstValue(const std::optional<QVariantList> &answer);

/// An integer answer; nothing when it is missing or of another type.
std::optional<int> intValue(const std::optional<QVariantList> &answer);

} // namespace quillmender::atspi
