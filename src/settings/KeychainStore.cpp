#include "settings/KeychainStore.h"

#include "model/Wiping.h"

#include <QLoggingCategory>
#include <QStringDecoder>

namespace quillmender {

namespace {
Q_LOGGING_CATEGORY(log, "quillmender.secrets", QtWarningMsg)
} // namespace

QCoro::Task<KeychainReading> KeychainStore::read(QString service, QString account) {
    SecretSearch search = co_await secrets_.find(service, account);
    if (!search.reason.isEmpty())
        qCWarning(log, "reading a secret failed: %s", qUtf8Printable(search.reason));
    if (search.outcome != SecretOutcome::found)
        co_return KeychainReading{std::nullopt, search.outcome == SecretOutcome::absent};

    // Every character is the caller's, a byte order mark as well.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(search.secret);
    wipe(search.secret);
    if (decoder.hasError())
        co_return KeychainReading{};
    co_return KeychainReading{text, true};
}

void KeychainStore::write(const QString &value, const QString &service, const QString &account) {
    QByteArray bytes = value.toUtf8();
    secrets_.store(service, account, bytes);
    wipe(bytes);
}

void KeychainStore::remove(const QString &service, const QString &account) {
    secrets_.remove(service, account);
}

} // namespace quillmender
