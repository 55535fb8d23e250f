#include "platform/linux/services/SecretService.h"

#include <QLoggingCategory>

#include <utility>

namespace quillmender {

namespace {

Q_LOGGING_CATEGORY(log, "quillmender.secrets", QtWarningMsg)

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

constexpr const char *storing = "storing a secret";
constexpr const char *deleting = "deleting a secret";

SecretSearch unavailable(const QString &reason) {
    return {SecretOutcome::unavailable, {}, reason};
}

QByteArray messageOf(const GError *error) {
    return error ? QByteArray(error->message) : QByteArray();
}

} // namespace

SecretService::SecretService(QString library) : library_(std::move(library)) {}

SecretService::~SecretService() {
    if (cancellable_)
        lib_->objectUnref(cancellable_);
}

SecretSearch SecretService::find(const QString &service, const QString &account) {
    if (const QString problem = loadProblem(); !problem.isEmpty())
        return unavailable(problem);
    const Attributes attributes = attributesOf(service, account);
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): the flags of a C interface
    const auto flags = SecretSearchFlags(SECRET_SEARCH_UNLOCK | SECRET_SEARCH_LOAD_SECRETS);
    GList *found = nullptr;
    const Error error = failureOf([&](GError **failure) {
        found = lib_->passwordSearch(&schema, attributes.get(), flags, cancellable_, failure);
    });
    if (error)
        return unavailable(QString::fromUtf8(error->message));
    if (!found)
        return {};
    const Value value = owned(
        lib_->retrieveSecret(static_cast<SecretRetrievable *>(found->data), cancellable_, nullptr));
    g_list_free_full(found, lib_->objectUnref);
    if (!value)
        return unavailable(QStringLiteral("the keyring stays locked"));
    gsize length = 0;
    const gchar *bytes = lib_->valueGet(value.get(), &length);
    return {SecretOutcome::found, QByteArray(bytes, static_cast<qsizetype>(length)), {}};
}

void SecretService::store(const QString &service, const QString &account,
                          const QByteArray &secret) {
    if (const QString problem = loadProblem(); !problem.isEmpty()) {
        report(storing, problem.toUtf8());
        return;
    }
    const Attributes attributes = attributesOf(service, account);
    clear(attributes);
    add(attributes, service, secret);
}

void SecretService::remove(const QString &service, const QString &account) {
    if (const QString problem = loadProblem(); !problem.isEmpty())
        report(deleting, problem.toUtf8());
    else
        clear(attributesOf(service, account));
}

void SecretService::giveUp() {
    const std::scoped_lock lock(mutex_);
    isGivenUp_ = true;
    if (cancellable_)
        lib_->cancellableCancel(cancellable_);
}

QString SecretService::loadProblem() {
    if (!lib_) {
        const std::scoped_lock lock(mutex_);
        lib_.emplace(library_);
        if (lib_->problem().isEmpty()) {
            cancellable_ = lib_->cancellableNew();
            if (isGivenUp_)
                lib_->cancellableCancel(cancellable_);
        }
    }
    return lib_->problem();
}

SecretService::Attributes SecretService::attributesOf(const QString &service,
                                                      const QString &account) const {
    return Attributes(lib_->attributesBuild(&schema, "service", service.toUtf8().constData(),
                                            "account", account.toUtf8().constData(), nullptr));
}

/// Whether the order may be carried out yet, or must not be: nothing is then tried again.
bool SecretService::isFinal(const GError &error) const {
    const GQuark io = lib_->ioErrorQuark();
    const GQuark bus = lib_->dbusErrorQuark();
    return g_error_matches(&error, io, G_IO_ERROR_CANCELLED) != 0 ||
           g_error_matches(&error, io, G_IO_ERROR_TIMED_OUT) != 0 ||
           g_error_matches(&error, bus, G_DBUS_ERROR_NO_REPLY) != 0 ||
           g_error_matches(&error, bus, G_DBUS_ERROR_TIMEOUT) != 0;
}

/// What the operation fails with. The library keeps the service's address and a session with it; a
/// service that has been started again since knows neither, and is asked anew.
template <typename Operation>
SecretService::Error SecretService::failureOf(Operation operation) const {
    GError *error = nullptr;
    operation(&error);
    if (!error || isFinal(*error))
        return Error(error);
    g_error_free(error);
    error = nullptr;
    lib_->serviceDisconnect();
    operation(&error);
    return Error(error);
}

void SecretService::clear(const Attributes &attributes) {
    const Error error = failureOf([&](GError **failure) {
        lib_->passwordClear(&schema, attributes.get(), cancellable_, failure);
    });
    report(deleting, messageOf(error.get()));
}

void SecretService::add(const Attributes &attributes, const QString &service,
                        const QByteArray &secret) {
    const Value value = owned(lib_->valueNew(secret.constData(), secret.size(), "text/plain"));
    const QByteArray label = "Quillmender: " + service.toUtf8();
    const Error error = failureOf([&](GError **failure) {
        lib_->passwordStore(&schema, attributes.get(), SECRET_COLLECTION_DEFAULT, label.constData(),
                            value.get(), cancellable_, failure);
    });
    report(storing, messageOf(error.get()));
}

void SecretService::report(const char *operation, const QByteArray &problem) {
    if (!problem.isEmpty() && problem != lastProblem_)
        qCWarning(log, "%s failed: %s", operation, problem.constData());
    lastProblem_ = problem;
}

} // namespace quillmender
