#include "platform/linux/services/SecretServiceSecrets.h"

#include "platform/SignalWait.h"
#include "platform/linux/services/SecretService.h"

#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QPromise>

#include <future>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.secrets", QtWarningMsg)

// After that the log says what is waited for.
constexpr std::chrono::milliseconds patience(2000);

} // namespace

SecretServiceSecrets::SecretServiceSecrets(std::chrono::milliseconds lastWait,
                                           const QString &library)
    : lastWait_(lastWait),
      service_(std::make_unique<SecretService>(library)) {}

SecretServiceSecrets::~SecretServiceSecrets() {
    // What was accepted is written before the program ends, unless the service is stuck.
    auto drained = std::make_shared<std::promise<void>>();
    const std::future<void> isDrained = drained->get_future();
    worker_.enqueue([drained] { drained->set_value(); });
    if (isDrained.wait_for(lastWait_) == std::future_status::timeout) {
        qCWarning(log, "the secret service did not take the last changes in time");
        service_->giveUp();
    }
}

void SecretServiceSecrets::enqueue(Job job, const std::string &subject) {
    worker_.enqueue([job = std::move(job), service = service_.get()] { job(*service); }, subject);
}

// What it changes is one for each item.
void SecretServiceSecrets::change(const QString &service, const QString &account, Job job) {
    const std::string subject = (service + u'\n' + account).toStdString();
    worker_.dropWaiting(subject);
    enqueue(std::move(job), subject);
}

QCoro::Task<SecretSearch> SecretServiceSecrets::find(QString service, QString account) {
    const auto promise = std::make_shared<QPromise<SecretSearch>>();
    QFutureWatcher<SecretSearch> watcher;
    promise->start();
    watcher.setFuture(promise->future());
    enqueue([promise, service, account](SecretService &asked) {
        promise->addResult(asked.find(service, account));
        promise->finish();
    });
    co_await SignalWait(&watcher, &QFutureWatcherBase::finished, patience);
    if (!watcher.isFinished()) {
        qCWarning(log, "the secret service has not answered yet");
        co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
    }
    if (watcher.future().resultCount() == 0)
        co_return SecretSearch{SecretOutcome::unavailable, {}, QStringLiteral("the program ends")};
    co_return watcher.result();
}

void SecretServiceSecrets::store(const QString &service, const QString &account,
                                 const QByteArray &secret) {
    change(service, account, [service, account, secret](SecretService &asked) {
        asked.store(service, account, secret);
    });
}

void SecretServiceSecrets::remove(const QString &service, const QString &account) {
    change(service, account,
           [service, account](SecretService &asked) { asked.remove(service, account); });
}

} // namespace quillmender
