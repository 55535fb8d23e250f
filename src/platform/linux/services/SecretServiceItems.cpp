// libsecret's headers use a name that Qt defines as a macro.
#undef signals
#include "platform/linux/services/SecretServiceItems.h"

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
    void operator()(::SecretValue *value) const { secret_value_unref(value); }
};
using Value = std::unique_ptr<::SecretValue, ValueDeleter>;

struct ErrorDeleter {
    void operator()(GError *error) const { g_error_free(error); }
};

QByteArray text(const SecretAttributes &attributes, SecretAttribute attribute) {
    const auto found = attributes.find(attribute);
    const auto *value = found == attributes.end() ? nullptr : std::get_if<QString>(&found->second);
    return value ? value->toUtf8() : QByteArray();
}

Attributes lookupAttributes(const SecretAttributes &query) {
    return Attributes(secret_attributes_build(
        &schema, "service", text(query, SecretAttribute::service).constData(), "account",
        text(query, SecretAttribute::account).constData(), nullptr));
}

// Called by the worker alone.
void report(const char *operation, GError *error) {
    static QByteArray lastProblem;
    const std::unique_ptr<GError, ErrorDeleter> owned(error);
    const QByteArray problem = owned ? QByteArray(owned->message) : QByteArray();
    if (owned && problem != lastProblem)
        qCWarning(log, "%s failed: %s", operation, owned->message);
    lastProblem = problem;
}

SecretMatch firstMatch(const SecretAttributes &query, GCancellable *cancellable) {
    GError *error = nullptr;
    const Attributes attributes = lookupAttributes(query);
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): the flags of a C interface
    const auto flags = SecretSearchFlags(SECRET_SEARCH_UNLOCK | SECRET_SEARCH_LOAD_SECRETS);
    GList *found =
        secret_password_searchv_sync(&schema, attributes.get(), flags, cancellable, &error);
    const bool isAnswered = error == nullptr;
    report("reading a secret", error);
    if (!isAnswered)
        return {secret::notAvailable, std::nullopt};
    if (!found)
        return {secret::itemNotFound, std::nullopt};
    const Value value(secret_retrievable_retrieve_secret_sync(SECRET_RETRIEVABLE(found->data),
                                                              cancellable, nullptr));
    g_list_free_full(found, g_object_unref);
    if (!value) {
        qCWarning(log, "the keyring stays locked");
        return {secret::interactionNotAllowed, std::nullopt};
    }
    gsize length = 0;
    const gchar *bytes = secret_value_get(value.get(), &length);
    return {secret::success, QByteArray(bytes, static_cast<qsizetype>(length))};
}

// One for each item.
std::string subjectOf(const SecretAttributes &attributes) {
    return (text(attributes, SecretAttribute::service) + '\n' +
            text(attributes, SecretAttribute::account))
        .toStdString();
}

} // namespace

struct SecretServiceItems::Cancellation {
    GCancellable *cancellable = g_cancellable_new();
    Cancellation() = default;
    Cancellation(const Cancellation &) = delete;
    Cancellation &operator=(const Cancellation &) = delete;
    ~Cancellation() { g_object_unref(cancellable); }
};

SecretServiceItems::SecretServiceItems(std::chrono::milliseconds lastWait)
    : lastWait_(lastWait),
      cancellation_(std::make_shared<Cancellation>()) {}

SecretServiceItems::~SecretServiceItems() {
    // What was accepted is written before the program ends, unless the service is stuck.
    auto drained = std::make_shared<std::promise<void>>();
    const std::future<void> isDrained = drained->get_future();
    enqueue([drained](Cancellation &) { drained->set_value(); });
    if (isDrained.wait_for(lastWait_) == std::future_status::timeout) {
        qCWarning(log, "the secret service did not take the last changes in time");
        g_cancellable_cancel(cancellation_->cancellable);
    }
}

void SecretServiceItems::enqueue(Job job, const std::string &subject) {
    worker_.enqueue([job = std::move(job), cancellation = cancellation_] { job(*cancellation); },
                    subject);
}

QCoro::Task<SecretMatch> SecretServiceItems::copyMatching(SecretAttributes query) {
    const auto promise = std::make_shared<QPromise<SecretMatch>>();
    QFutureWatcher<SecretMatch> watcher;
    promise->start();
    watcher.setFuture(promise->future());
    enqueue([promise, query](Cancellation &cancellation) {
        promise->addResult(firstMatch(query, cancellation.cancellable));
        promise->finish();
    });
    co_await SignalWait(&watcher, &QFutureWatcherBase::finished, patience);
    if (!watcher.isFinished()) {
        qCWarning(log, "the secret service has not answered yet");
        co_await SignalWait(&watcher, &QFutureWatcherBase::finished);
    }
    if (watcher.future().resultCount() == 0)
        co_return SecretMatch{secret::interactionNotAllowed, std::nullopt};
    co_return watcher.result();
}

qint32 SecretServiceItems::add(const SecretAttributes &attributes) {
    const auto write = [attributes](Cancellation &cancellation) {
        const auto found = attributes.find(SecretAttribute::valueData);
        const auto *data =
            found == attributes.end() ? nullptr : std::get_if<QByteArray>(&found->second);
        if (!data)
            return;
        GError *error = nullptr;
        const Attributes lookup = lookupAttributes(attributes);
        const Value value(secret_value_new(data->constData(), data->size(), "text/plain"));
        const QByteArray label = "Quillmender: " + text(attributes, SecretAttribute::service);
        secret_password_storev_binary_sync(&schema, lookup.get(), SECRET_COLLECTION_DEFAULT,
                                           label.constData(), value.get(), cancellation.cancellable,
                                           &error);
        report("storing a secret", error);
    };
    enqueue(write, subjectOf(attributes));
    return secret::success;
}

qint32 SecretServiceItems::remove(const SecretAttributes &query) {
    const std::string subject = subjectOf(query);
    worker_.dropWaiting(subject);
    const auto clear = [query](Cancellation &cancellation) {
        GError *error = nullptr;
        const Attributes attributes = lookupAttributes(query);
        secret_password_clearv_sync(&schema, attributes.get(), cancellation.cancellable, &error);
        report("deleting a secret", error);
    };
    enqueue(clear, subject);
    return secret::success;
}

} // namespace quillmender
