#pragma once

#include "fakes/CallLog.h"
#include "platform/Secrets.h"
#include "platform/SignalWait.h"

#include <QFutureWatcher>
#include <QMap>
#include <QPromise>

#include <memory>
#include <optional>
#include <utility>

namespace quillmender::fakes {

/// A secret store in memory that records each operation, in their order.
class FakeSecrets : public Secrets {
  public:
    explicit FakeSecrets(CallLog log) : log_(std::move(log)) {}

    QCoro::Task<SecretSearch> find(QString service, QString account) override {
        log_->append(QStringLiteral("find %1 %2").arg(service, account));
        const SecretSearch search = found({service, account});
        if (gate_) {
            QFutureWatcher<void> watcher;
            watcher.setFuture(gate_->future());
            co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
        }
        co_return std::as_const(search);
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

    void store(const QString &service, const QString &account, const QByteArray &secret) override {
        log_->append(
            QStringLiteral("store %1 %2 %3").arg(service, account, QString::fromUtf8(secret)));
        if (!failure)
            items[{service, account}] = secret;
    }
    void remove(const QString &service, const QString &account) override {
        log_->append(QStringLiteral("remove %1 %2").arg(service, account));
        if (!failure)
            items.remove({service, account});
    }

    QMap<std::pair<QString, QString>, QByteArray> items;
    /// What every search comes to instead; nothing is written meanwhile.
    std::optional<SecretSearch> failure;

    /// For `failure`: the store cannot be asked.
    static SecretSearch unavailable() {
        return {SecretOutcome::unavailable, {}, QStringLiteral("the test's store is locked")};
    }

  private:
    SecretSearch found(const std::pair<QString, QString> &wanted) const {
        if (failure)
            return *failure;
        const auto item = items.find(wanted);
        return item == items.end() ? SecretSearch{} : SecretSearch{SecretOutcome::found, *item, {}};
    }

    CallLog log_;
    std::shared_ptr<QPromise<void>> gate_;
};

} // namespace quillmender::fakes
