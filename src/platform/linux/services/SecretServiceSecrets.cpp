// libsecret's headers use a name that Qt defines as a macro.
#undef signals
#include "platform/linux/services/SecretServiceSecrets.h"

#include "platform/SignalWait.h"

#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QPromise>
#include <libsecret/secret.h>

#include <future>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.secrets", QtWarningMsg)

// After that the log says what is waited for.
constexpr std::chrono::milliseconds patience(2000);

// Found whatever schema an item was stored under, so that the desktop's own tools can make one.
const SecretSchema schema = {"com.quillmender.ApiKey",
                             SECRET_SCHEMA_DONT_MATCH_NAME,
                             {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                             0,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr};

struct AttributesDeleter {
    void operator()(GHashTable *table) const { g_hash_table_unref(table); }
};
using Attributes = std::unique_ptr<GHashTable, AttributesDeleter>;

struct ValueDeleter {
    void operator()(SecretValue *value) const { secret_value_unref(value); }
};
using Value = std::unique_ptr<SecretValue, ValueDeleter>;

struct ErrorDeleter {
    void operator()(GError *error) const { g_error_free(error); }
};
using Error = std::unique_ptr<GError, ErrorDeleter>;

Attributes attributesOf(const QString &service, const QString &account) {
    return Attributes(secret_attributes_build(&schema, "service", service.toUtf8().constData(),
                                              "account", account.toUtf8().constData(), nullptr));
}

// Called by the worker alone.
void report(const char *operation, GError *error) {
    static QByteArray lastProblem;
    const Error owned(error);
    const QByteArray problem = owned ? QByteArray(owned->message) : QByteArray();
    if (owned && problem != lastProblem)
        qCWarning(log, "%s failed: %s", operation, owned->message);
    lastProblem = problem;
}

/// Whether the order may be carried out yet, or must not be: nothing is then tried again.
bool isFinal(const GError &error) {
    return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != 0 ||
           g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) != 0 ||
           g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY) != 0 ||
           g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_TIMEOUT) != 0;
}

/// What the operation fails with. The library keeps the service's address and a session with it; a
/// service that has been started again since knows neither, and is asked anew.
template <typename Operation> GError *failureOf(Operation operation) {
    GError *error = nullptr;
    operation(&error);
    if (!error || isFinal(*error))
        return error;
    g_error_free(error);
    error = nullptr;
    secret_service_disconnect();
    operation(&error);
    return error;
}

SecretSearch unavailable(const QString &reason) {
    return {SecretOutcome::unavailable, {}, reason};
}

SecretSearch firstMatch(const Attributes &attributes, GCancellable *cancellable) {
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): the flags of a C interface
    const auto flags = SecretSearchFlags(SECRET_SEARCH_UNLOCK | SECRET_SEARCH_LOAD_SECRETS);
    GList *found = nullptr;
    GError *const error = failureOf([&](GError **failure) {
        found =
            secret_password_searchv_sync(&schema, attributes.get(), flags, cancellable, failure);
    });
    if (const Error owned{error})
        return unavailable(QString::fromUtf8(owned->message));
    if (!found)
        return {};
    const Value value(secret_retrievable_retrieve_secret_sync(SECRET_RETRIEVABLE(found->data),
                                                              cancellable, nullptr));
    g_list_free_full(found, g_object_unref);
    if (!value)
        return unavailable(QStringLiteral("the keyring stays locked"));
    gsize length = 0;
    const gchar *bytes = secret_value_get(value.get(), &length);
    return {SecretOutcome::found, QByteArray(bytes, static_cast<qsizetype>(length)), {}};
}

void clear(const Attributes &attributes, GCancellable *cancellable) {
    report("deleting a secret", failureOf([&](GError **failure) {
               secret_password_clearv_sync(&schema, attributes.get(), cancellable, failure);
           }));
}

void add(const Attributes &attributes, const QString &service, const QByteArray &secret,
         GCancellable *cancellable) {
    const Value value(secret_value_new(secret.constData(), secret.size(), "text/plain"));
    const QByteArray label = "Quillmender: " + service.toUtf8();
    report("storing a secret", failureOf([&](GError **failure) {
               secret_password_storev_binary_sync(&schema, attributes.get(),
                                                  SECRET_COLLECTION_DEFAULT, label.constData(),
                                                  value.get(), cancellable, failure);
           }));
}

} // namespace

struct SecretServiceSecrets::Cancellation {
    GCancellable *cancellable = g_cancellable_new();
    Cancellation() = default;
    Cancellation(const Cancellation &) = delete;
    Cancellation &operator=(const Cancellation &) = delete;
    ~Cancellation() { g_object_unref(cancellable); }
};

SecretServiceSecrets::SecretServiceSecrets(std::chrono::milliseconds lastWait)
    : lastWait_(lastWait),
      cancellation_(std::make_shared<Cancellation>()) {}

SecretServiceSecrets::~SecretServiceSecrets() {
    // What was accepted is written before the program ends, unless the service is stuck.
    auto drained = std::make_shared<std::promise<void>>();
    const std::future<void> isDrained = drained->get_future();
    enqueue([drained](Cancellation &) { drained->set_value(); });
    if (isDrained.wait_for(lastWait_) == std::future_status::timeout) {
        qCWarning(log, "the secret service did not take the last changes in time");
        g_cancellable_cancel(cancellation_->cancellable);
    }
}

void SecretServiceSecrets::enqueue(Job job, const std::string &subject) {
    worker_.enqueue([job = std::move(job), cancellation = cancellation_] { job(*cancellation); },
                    subject);
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
    enqueue([promise, service, account](Cancellation &cancellation) {
        promise->addResult(firstMatch(attributesOf(service, account), cancellation.cancellable));
        promise->finish();
    });
    co_await SignalWait(&watcher, &QFutureWatcherBase::finished, patience);
    if (!watcher.isFinished()) {
        qCWarning(log, "the secret service has not answered yet");
        co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
    }
    if (watcher.future().resultCount() == 0)
        co_return unavailable(QStringLiteral("the program ends"));
    co_return watcher.result();
}

void SecretServiceSecrets::store(const QString &service, const QString &account,
                                 const QByteArray &secret) {
    change(service, account, [service, account, secret](Cancellation &cancellation) {
        const Attributes attributes = attributesOf(service, account);
        clear(attributes, cancellation.cancellable);
        add(attributes, service, secret, cancellation.cancellable);
    });
}

void SecretServiceSecrets::remove(const QString &service, const QString &account) {
    change(service, account, [service, account](Cancellation &cancellation) {
        clear(attributesOf(service, account), cancellation.cancellable);
    });
}

} // namespace quillmender
