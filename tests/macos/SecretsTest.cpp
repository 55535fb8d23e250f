#include "DoublesTest.h"
#include "doubles/cf/Data.h"
#include "doubles/cf/Dictionary.h"
#include "doubles/cf/String.h"
#include "doubles/security/Keychain.h"
#include "fakes/Await.h"
#include "platform/macos/CFRef.h"
#include "platform/macos/MacSecrets.h"
#include "settings/KeychainStore.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

constexpr auto copyQuery =
    "SecItemCopyMatching {acct=api-key, class=genp, m_Limit=m_LimitOne, r_Data=true, svce=s}";
constexpr auto deleteQuery = "SecItemDelete {acct=api-key, class=genp, svce=s}";
constexpr auto addQuery =
    "SecItemAdd {acct=api-key, class=genp, pdmn=ck, svce=s, v_Data=<k\xC3\xA9y>}";

class SecretsTest : public DoublesTest {
  protected:
    std::optional<QString> read() { return fakes::await(store.read(service, account)).text; }
    SecretSearch find() { return fakes::await(secrets.find(service, account)); }
    void write(const QString &value) { store.write(value, service, account); }

    doubles::Keychain::Item item(const std::string &data) const {
        return {"genp", "s", "api-key", data, "ck"};
    }

    const QString service = QStringLiteral("s");
    const QString account = QStringLiteral("api-key");
    doubles::Keychain keychain;
    MacSecrets secrets;
    KeychainStore store{secrets};
};

TEST_F(SecretsTest, ReadsOneItemsBytes) {
    keychain.items = {item("k\xC3\xA9y")};
    EXPECT_EQ(read(), QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(copyQuery));
}

TEST_F(SecretsTest, AMissingItemIsNothing) {
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(find().outcome, SecretOutcome::absent);
    EXPECT_EQ(find().reason, QString());
}

TEST_F(SecretsTest, DeletesThenAddsWithoutAResult) {
    write(QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(deleteQuery, addQuery));
    EXPECT_THAT(keychain.items, ElementsAre(item("k\xC3\xA9y")));
}

TEST_F(SecretsTest, WritingTwiceLeavesTheSecondOnly) {
    keychain.items = {{"genp", "s", "api-key", "old", "ak"}};
    write(QStringLiteral("first"));
    write(QStringLiteral("second"));
    EXPECT_THAT(keychain.items, ElementsAre(item("second")));
    EXPECT_EQ(read(), QStringLiteral("second"));
}

TEST_F(SecretsTest, OtherItemsAreLeftAlone) {
    const doubles::Keychain::Item other = {"genp", "other", "api-key", "o", "ck"};
    const doubles::Keychain::Item web = {"inet", "s", "api-key", "w", "ck"};
    keychain.items = {other, web};
    write(QStringLiteral("key"));
    EXPECT_THAT(keychain.items, ElementsAre(other, web, item("key")));
    store.remove(service, account);
    EXPECT_THAT(keychain.items, ElementsAre(other, web));
}

TEST_F(SecretsTest, RemovesWithTheBaseQuery) {
    store.remove(service, account);
    EXPECT_THAT(calls(), ElementsAre(deleteQuery));
}

TEST_F(SecretsTest, AFailedDeletionDoesNotStopTheAddition) {
    keychain.deleteStatus = errSecInteractionNotAllowed;
    write(QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(deleteQuery, addQuery));
}

TEST_F(SecretsTest, AFailedAdditionIsSilent) {
    keychain.addStatus = errSecNotAvailable;
    write(QStringLiteral("key"));
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretsTest, AKeychainThatCannotBeAskedIsNotAnEmptyOne) {
    keychain.items = {item("key")};
    for (const OSStatus status : {errSecInteractionNotAllowed, errSecNotAvailable}) {
        keychain.copyStatus = status;
        EXPECT_EQ(find().outcome, SecretOutcome::unavailable);
        EXPECT_FALSE(find().reason.isEmpty());
        EXPECT_FALSE(find().reason.contains(QLatin1String("25")));
    }
    keychain.copyStatus = errSecParam;
    EXPECT_EQ(find().outcome, SecretOutcome::absent);
    EXPECT_FALSE(find().reason.isEmpty());
    keychain.copyStatus = errSecSuccess;
    EXPECT_EQ(find().outcome, SecretOutcome::found);
    EXPECT_EQ(find().secret, "key");
    EXPECT_EQ(find().reason, QString());
}

TEST_F(SecretsTest, AnotherResultThanBytesIsNothing) {
    keychain.items = {item("key")};
    const auto text = CFRef<CFStringRef>::adopted(doubles::makeString(u"key"));
    keychain.answer = text.get();
    EXPECT_EQ(read(), std::nullopt);
    keychain.answer = nullptr;
    keychain.answersNull = true;
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretsTest, AResultThatComesWithAnErrorIsReleased) {
    const auto bytes = CFRef<CFDataRef>::adopted(doubles::makeData("key"));
    keychain.answer = bytes.get();
    keychain.copyStatus = errSecInteractionNotAllowed;
    keychain.answersInSpiteOfStatus = true;
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretsTest, BytesThatAreNotUtf8AreNothing) {
    keychain.items = {item("\xFF\xFE")};
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretsTest, WithoutMemoryTheKeychainIsNotAsked) {
    const auto expectNoCalls = [&](const std::function<void()> &makeScarce) {
        makeScarce();
        EXPECT_EQ(find().outcome, SecretOutcome::absent);
        makeScarce();
        store.remove(service, account);
        EXPECT_THAT(calls(), ElementsAre());
    };
    expectNoCalls([] { doubles::nextDictionaryIsNull = true; });
    const doubles::ScarceStrings one(1);
    expectNoCalls([] {});
    write(QStringLiteral("key"));
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(SecretsTest, WithoutMemoryForTheDeletionTheAdditionIsTried) {
    doubles::nextDictionaryIsNull = true;
    write(QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(addQuery));
}

TEST_F(SecretsTest, WithoutMemoryForTheBytesNothingIsAdded) {
    doubles::nextDataIsNull = true;
    write(QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(deleteQuery));
}

} // namespace
} // namespace quillmender
