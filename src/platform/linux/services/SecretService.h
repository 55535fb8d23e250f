#pragma once

#include "platform/Secrets.h"
#include "platform/linux/services/LibSecret.h"

#include <memory>
#include <mutex>
#include <optional>

namespace quillmender {

/// The desktop's Secret Service (org.freedesktop.secrets) by way of libsecret. Each call blocks
/// until the service has answered, so all come from one worker. The log has why a change did not
/// work; a problem that goes on is told once.
class SecretService {
  public:
    /// `library` is loaded by the first call.
    explicit SecretService(QString library);
    SecretService(const SecretService &) = delete;
    SecretService &operator=(const SecretService &) = delete;
    ~SecretService();

    SecretSearch find(const QString &service, const QString &account);
    void store(const QString &service, const QString &account, const QByteArray &secret);
    void remove(const QString &service, const QString &account);

    /// From any thread: the call under way fails, and every later one.
    void giveUp();

  private:
    struct AttributesDeleter {
        void operator()(GHashTable *table) const { g_hash_table_unref(table); }
    };
    using Attributes = std::unique_ptr<GHashTable, AttributesDeleter>;

    struct ErrorDeleter {
        void operator()(GError *error) const { g_error_free(error); }
    };
    using Error = std::unique_ptr<GError, ErrorDeleter>;

    struct ValueDeleter {
        const LibSecret *lib;
        void operator()(SecretValue *value) const { lib->valueUnref(value); }
    };
    using Value = std::unique_ptr<SecretValue, ValueDeleter>;

    /// Why there is no library, if so.
    QString loadProblem();
    Attributes attributesOf(const QString &service, const QString &account) const;
    Value owned(SecretValue *value) const { return Value(value, ValueDeleter{&*lib_}); }
    bool isFinal(const GError &error) const;
    template <typename Operation> Error failureOf(Operation operation) const;
    void clear(const Attributes &attributes);
    void add(const Attributes &attributes, const QString &service, const QByteArray &secret);
    void report(const char *operation, const QByteArray &problem);

    const QString library_;
    std::optional<LibSecret> lib_;
    QByteArray lastProblem_;
    std::mutex mutex_; ///< of what follows, which others than the worker use
    GCancellable *cancellable_ = nullptr;
    bool isGivenUp_ = false;
};

} // namespace quillmender
