#pragma once

#include "fakes/CallLog.h"
#include "platform/SecretItems.h"
#include "platform/SignalWait.h"

#include <QFutureWatcher>
#include <QMap>
#include <QPromise>

#include <memory>
#include <utility>

namespace quillmender::fakes {

/// A secret store in memory that records each operation with its attributes, in their order.
class FakeSecretItems : public SecretItems {
  public:
    explicit FakeSecretItems(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<SecretMatch> copyMatching(SecretAttributes query) override {
        log_->append(QStringLiteral("copyMatching ") + described(query));
        const SecretMatch match = found(key(query));
        if (gate_) {
            QFutureWatcher<void> watcher;
            watcher.setFuture(gate_->future());
            co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
        }
        co_return std::as_const(match);
    }

    /// From now on answers, though found when asked for, arrive only at `release()`.
    void hold() {
        gate_ = std::make_shared<QPromise<void>>();
        gate_->start();
    }
    void release() {
        const auto gate = std::exchange(gate_, nullptr);
        gate->finish();
    }

    qint32 add(const SecretAttributes &attributes) override {
        log_->append(QStringLiteral("add ") + described(attributes));
        if (failure != secret::success)
            return failure;
        if (items.contains(key(attributes)))
            return secret::duplicateItem;
        items[key(attributes)] = std::get<QByteArray>(attributes.at(SecretAttribute::valueData));
        return secret::success;
    }
    qint32 remove(const SecretAttributes &query) override {
        log_->append(QStringLiteral("remove ") + described(query));
        if (failure != secret::success)
            return failure;
        return items.remove(key(query)) > 0 ? secret::success : secret::itemNotFound;
    }

    QMap<std::pair<QString, QString>, QByteArray> items;
    qint32 failure = secret::success;

  private:
    SecretMatch found(const std::pair<QString, QString> &wanted) const {
        if (failure != secret::success)
            return {failure, std::nullopt};
        const auto item = items.find(wanted);
        if (item == items.end())
            return {secret::itemNotFound, std::nullopt};
        return {secret::success, *item};
    }

    static std::pair<QString, QString> key(const SecretAttributes &attributes) {
        return {std::get<QString>(attributes.at(SecretAttribute::service)),
                std::get<QString>(attributes.at(SecretAttribute::account))};
    }

    static QString described(const SecretAttributes &attributes) {
        static const char *const names[] = {"class",      "service",    "account",   "data",
                                            "accessible", "returnData", "matchLimit"};
        QStringList parts;
        for (const auto &[attribute, value] : attributes) {
            QString shown;
            if (const auto *text = std::get_if<QString>(&value))
                shown = *text;
            else if (const auto *bytes = std::get_if<QByteArray>(&value))
                shown = QString::fromUtf8(*bytes);
            else
                shown = std::get<bool>(value) ? QStringLiteral("true") : QStringLiteral("false");
            parts.append(QLatin1String(names[static_cast<int>(attribute)]) + u'=' + shown);
        }
        return parts.join(u' ');
    }

    CallLog log_;
    std::shared_ptr<QPromise<void>> gate_;
};

} // namespace quillmender::fakes
