#include "settings/KeychainStore.h"

#include "fakes/FakeSecrets.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

class KeychainStoreTest : public testing::Test {
  protected:
    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeSecrets items{log};
    KeychainStore keychain{items};
    std::optional<QString> read() { return test::runTask(keychain.read(service, account)).text; }

    const QString service = QStringLiteral("com.quillmender.openAI");
    const QString account = QStringLiteral("api-key");
};

TEST_F(KeychainStoreTest, WritesOneTextAsItsBytes) {
    keychain.write(QStringLiteral("sk-ключ"), service, account);
    EXPECT_EQ(*log, QStringList(QStringLiteral("store com.quillmender.openAI api-key sk-ключ")));
    EXPECT_EQ((items.items[{service, account}]), "sk-\xd0\xba\xd0\xbb\xd1\x8e\xd1\x87");
}

TEST_F(KeychainStoreTest, ReadsWhatItHasWritten) {
    keychain.write(QStringLiteral("sk-ключ"), service, account);
    log->clear();
    EXPECT_EQ(read(), QStringLiteral("sk-ключ"));
    EXPECT_EQ(*log, QStringList(QStringLiteral("find com.quillmender.openAI api-key")));
}

TEST_F(KeychainStoreTest, AByteOrderMarkIsACharacterLikeAnyOther) {
    keychain.write(QStringLiteral("\uFEFFsk"), service, account);
    EXPECT_EQ(read(), QStringLiteral("\uFEFFsk"));
}

TEST_F(KeychainStoreTest, WritingTwiceLeavesTheSecondValueAlone) {
    keychain.write(QStringLiteral("one"), service, account);
    keychain.write(QStringLiteral("two"), service, account);
    EXPECT_EQ(items.items.size(), 1);
    EXPECT_EQ(read(), QStringLiteral("two"));
}

TEST_F(KeychainStoreTest, FindsNothingThatWasNeverWritten) {
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(KeychainStoreTest, ProvidersDoNotInterfere) {
    keychain.write(QStringLiteral("one"), service, account);
    keychain.write(QStringLiteral("two"), QStringLiteral("com.quillmender.gemini"), account);
    keychain.remove(QStringLiteral("com.quillmender.gemini"), account);
    EXPECT_EQ(read(), QStringLiteral("one"));
}

TEST_F(KeychainStoreTest, BytesThatAreNotUtf8AreNothing) {
    items.items[{service, account}] = QByteArray("sk-\xff\xfe");
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(KeychainStoreTest, FailuresAreSilent) {
    items.failure = fakes::FakeSecrets::unavailable();
    keychain.write(QStringLiteral("one"), service, account);
    auto reading = test::runTask(keychain.read(service, account));
    EXPECT_EQ(reading.text, std::nullopt);
    EXPECT_FALSE(reading.wasAnswered);
    for (const char *reason : {"", "the store refuses"}) {
        items.failure = {SecretOutcome::absent, {}, QLatin1String(reason)};
        reading = test::runTask(keychain.read(service, account));
        EXPECT_EQ(reading.text, std::nullopt);
        EXPECT_TRUE(reading.wasAnswered);
    }
    items.failure = std::nullopt;
    EXPECT_TRUE(test::runTask(keychain.read(service, account)).wasAnswered);
}

TEST_F(KeychainStoreTest, BytesBesideAFailureAreNothing) {
    for (const SecretOutcome outcome :
         {SecretOutcome::found, SecretOutcome::absent, SecretOutcome::unavailable}) {
        items.failure = {outcome, "bytes", {}};
        EXPECT_EQ(read().has_value(), outcome == SecretOutcome::found);
    }
}

QString lastMessage;

TEST_F(KeychainStoreTest, TheLogHasWhyNothingCouldBeRead) {
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &text) { lastMessage = text; });
    items.items[{service, account}] = "sk-secret";
    read();
    EXPECT_EQ(lastMessage, QString());
    items.failure = {SecretOutcome::unavailable, "sk-secret", QStringLiteral("it is locked")};
    read();
    qInstallMessageHandler(before);
    EXPECT_EQ(lastMessage, QStringLiteral("reading a secret failed: it is locked"));
}

} // namespace
} // namespace quillmender
