#include "settings/KeychainStore.h"

#include "model/Wiping.h"

#include <QStringDecoder>

namespace quillmender {

KeychainStore::KeychainStore(SecretItems &items) : items_(items) {}

SecretAttributes KeychainStore::baseQuery(const QString &service, const QString &account) {
    return {
        {SecretAttribute::itemClass, QString::fromLatin1(secret::genericPassword)},
        {SecretAttribute::service, service},
        {SecretAttribute::account, account},
    };
}

QCoro::Task<KeychainReading> KeychainStore::read(QString service, QString account) {
    SecretAttributes query = baseQuery(service, account);
    query[SecretAttribute::returnData] = true;
    query[SecretAttribute::matchLimit] = QString::fromLatin1(secret::matchLimitOne);
    SecretMatch match = co_await items_.copyMatching(std::move(query));
    if (match.status == secret::notAvailable || match.status == secret::interactionNotAllowed)
        co_return KeychainReading{std::nullopt, false};
    if (match.status != secret::success || !match.data)
        co_return KeychainReading{};

    // Every character is the caller's, a byte order mark as well.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(*match.data);
    wipe(*match.data);
    if (decoder.hasError())
        co_return KeychainReading{};
    co_return KeychainReading{text, true};
}

void KeychainStore::write(const QString &value, const QString &service, const QString &account) {
    const SecretAttributes query = baseQuery(service, account);
    items_.remove(query);
    SecretAttributes attributes = query;
    attributes[SecretAttribute::valueData] = value.toUtf8();
    attributes[SecretAttribute::accessible] =
        QString::fromLatin1(secret::accessibleAfterFirstUnlock);
    items_.add(attributes);
    wipe(std::get<QByteArray>(attributes[SecretAttribute::valueData]));
}

void KeychainStore::remove(const QString &service, const QString &account) {
    items_.remove(baseQuery(service, account));
}

} // namespace quillmender
