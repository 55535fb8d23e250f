#include "settings/KeychainStore.h"

#include "fakes/FakeSecretItems.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

class KeychainStoreTest : public testing::Test {
  protected:
    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeSecretItems items{log};
    KeychainStore keychain{items};
    std::optional<QString> read() { return test::runTask(keychain.read(service, account)).text; }

    const QString service = QStringLiteral("com.quillmender.openAI");
    const QString account = QStringLiteral("api-key");
};

TEST_F(KeychainStoreTest, theBaseQueryHasExactlyThreeEntries) {
    const SecretAttributes query = KeychainStore::baseQuery(service, account);
    EXPECT_EQ(query.size(), 3U);
    EXPECT_EQ(std::get<QString>(query.at(SecretAttribute::itemClass)), QStringLiteral("genp"));
    EXPECT_EQ(std::get<QString>(query.at(SecretAttribute::service)), service);
    EXPECT_EQ(std::get<QString>(query.at(SecretAttribute::account)), account);
}

TEST_F(KeychainStoreTest, writesByDeletingThenAddingWithAllAttributes) {
    keychain.write(QStringLiteral("sk-ключ"), service, account);
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("remove class=genp service=com.quillmender.openAI "
                                       "account=api-key"),
                        QStringLiteral("add class=genp service=com.quillmender.openAI "
                                       "account=api-key data=sk-ключ accessible=ck"),
                    }));
}

TEST_F(KeychainStoreTest, readsOneItemWithItsData) {
    keychain.write(QStringLiteral("sk-ключ"), service, account);
    log->clear();
    EXPECT_EQ(read(), QStringLiteral("sk-ключ"));
    EXPECT_EQ(*log, QStringList(
                        {QStringLiteral("copyMatching class=genp service=com.quillmender.openAI "
                                        "account=api-key returnData=true matchLimit=m_LimitOne")}));
}

TEST_F(KeychainStoreTest, aByteOrderMarkIsACharacterLikeAnyOther) {
    keychain.write(QStringLiteral("\uFEFFsk"), service, account);
    EXPECT_EQ(read(), QStringLiteral("\uFEFFsk"));
}

TEST_F(KeychainStoreTest, writingTwiceLeavesTheSecondValueAlone) {
    keychain.write(QStringLiteral("one"), service, account);
    keychain.write(QStringLiteral("two"), service, account);
    EXPECT_EQ(items.items.size(), 1);
    EXPECT_EQ(read(), QStringLiteral("two"));
}

TEST_F(KeychainStoreTest, findsNothingThatWasNeverWritten) {
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(KeychainStoreTest, providersDoNotInterfere) {
    keychain.write(QStringLiteral("one"), service, account);
    keychain.write(QStringLiteral("two"), QStringLiteral("com.quillmender.gemini"), account);
    keychain.remove(QStringLiteral("com.quillmender.gemini"), account);
    EXPECT_EQ(read(), QStringLiteral("one"));
}

TEST_F(KeychainStoreTest, bytesThatAreNotUtf8AreNothing) {
    items.items[{service, account}] = QByteArray("sk-\xff\xfe");
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(KeychainStoreTest, failuresAreSilent) {
    items.failure = secret::notAvailable;
    keychain.write(QStringLiteral("one"), service, account);
    EXPECT_EQ(log->size(), 2);
    for (const qint32 status :
         {secret::notAvailable, secret::interactionNotAllowed, secret::duplicateItem}) {
        items.failure = status;
        const auto reading = test::runTask(keychain.read(service, account));
        EXPECT_EQ(reading.text, std::nullopt);
        EXPECT_EQ(reading.wasAnswered, status == secret::duplicateItem);
    }
    items.failure = secret::success;
    EXPECT_TRUE(test::runTask(keychain.read(service, account)).wasAnswered);
}

/// Answers with a status and with bytes beside it.
class BothItems : public fakes::FakeSecretItems {
  public:
    using FakeSecretItems::FakeSecretItems;
    QCoro::Task<SecretMatch> copyMatching(SecretAttributes) override {
        co_return SecretMatch{failure, QByteArray("bytes")};
    }
};

TEST_F(KeychainStoreTest, bytesBesideAFailureAreNothing) {
    BothItems both{log};
    KeychainStore store{both};
    EXPECT_EQ(test::runTask(store.read(service, account)).text, QStringLiteral("bytes"));
    for (const qint32 status : {secret::notAvailable, secret::interactionNotAllowed,
                                secret::duplicateItem, secret::itemNotFound, -1}) {
        both.failure = status;
        EXPECT_EQ(test::runTask(store.read(service, account)).text, std::nullopt) << status;
    }
}

} // namespace
} // namespace quillmender
