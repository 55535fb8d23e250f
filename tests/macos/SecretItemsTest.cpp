#include "DoublesTest.h"
#include "doubles/cf/Data.h"
#include "doubles/cf/Dictionary.h"
#include "doubles/cf/String.h"
#include "doubles/security/Keychain.h"
#include "fakes/Await.h"
#include "platform/macos/CFRef.h"
#include "platform/macos/MacSecretItems.h"
#include "settings/KeychainStore.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

constexpr auto copyQuery =
    "SecItemCopyMatching {acct=api-key, class=genp, m_Limit=m_LimitOne, r_Data=true, svce=s}";
constexpr auto deleteQuery = "SecItemDelete {acct=api-key, class=genp, svce=s}";
constexpr auto addQuery =
    "SecItemAdd {acct=api-key, class=genp, pdmn=ck, svce=s, v_Data=<k\xC3\xA9y>}";

class SecretItemsTest : public DoublesTest {
  protected:
    std::optional<QString> read() { return fakes::await(store.read(service, account)).text; }
    qint32 copyStatus() {
        return fakes::await(items.copyMatching(KeychainStore::baseQuery(service, account))).status;
    }
    void write(const QString &value) { store.write(value, service, account); }

    doubles::Keychain::Item item(const std::string &data) const {
        return {"genp", "s", "api-key", data, "ck"};
    }

    const QString service = QStringLiteral("s");
    const QString account = QStringLiteral("api-key");
    doubles::Keychain keychain;
    MacSecretItems items;
    KeychainStore store{items};
};

TEST_F(SecretItemsTest, readsOneItemsBytes) {
    keychain.items = {item("k\xC3\xA9y")};
    EXPECT_EQ(read(), QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(copyQuery));
}

TEST_F(SecretItemsTest, aMissingItemIsNothing) {
    EXPECT_EQ(read(), std::nullopt);
    EXPECT_EQ(copyStatus(), -25300);
}

TEST_F(SecretItemsTest, deletesThenAddsWithoutAResult) {
    write(QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(deleteQuery, addQuery));
    EXPECT_THAT(keychain.items, ElementsAre(item("k\xC3\xA9y")));
}

TEST_F(SecretItemsTest, writingTwiceLeavesTheSecondOnly) {
    keychain.items = {{"genp", "s", "api-key", "old", "ak"}};
    write(QStringLiteral("first"));
    write(QStringLiteral("second"));
    EXPECT_THAT(keychain.items, ElementsAre(item("second")));
    EXPECT_EQ(read(), QStringLiteral("second"));
}

TEST_F(SecretItemsTest, otherItemsAreLeftAlone) {
    const doubles::Keychain::Item other = {"genp", "other", "api-key", "o", "ck"};
    const doubles::Keychain::Item web = {"inet", "s", "api-key", "w", "ck"};
    keychain.items = {other, web};
    write(QStringLiteral("key"));
    EXPECT_THAT(keychain.items, ElementsAre(other, web, item("key")));
    store.remove(service, account);
    EXPECT_THAT(keychain.items, ElementsAre(other, web));
}

TEST_F(SecretItemsTest, removesWithTheBaseQuery) {
    store.remove(service, account);
    EXPECT_THAT(calls(), ElementsAre(deleteQuery));
}

TEST_F(SecretItemsTest, theBaseQueryHasThreeEntries) {
    EXPECT_EQ(KeychainStore::baseQuery(service, account).size(), 3U);
}

TEST_F(SecretItemsTest, aFailedDeletionDoesNotStopTheAddition) {
    keychain.deleteStatus = errSecInteractionNotAllowed;
    write(QStringLiteral("k\u00E9y"));
    EXPECT_THAT(calls(), ElementsAre(deleteQuery, addQuery));
}

TEST_F(SecretItemsTest, aFailedAdditionIsSilent) {
    keychain.addStatus = errSecNotAvailable;
    write(QStringLiteral("key"));
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretItemsTest, statusesComeThrough) {
    const SecretAttributes query = KeychainStore::baseQuery(service, account);
    keychain.copyStatus = errSecInteractionNotAllowed;
    keychain.addStatus = errSecDuplicateItem;
    keychain.deleteStatus = errSecNotAvailable;
    EXPECT_EQ(copyStatus(), -25308);
    EXPECT_EQ(items.add(query), -25299);
    EXPECT_EQ(items.remove(query), -25291);
}

TEST_F(SecretItemsTest, anotherResultThanBytesIsNothing) {
    keychain.items = {item("key")};
    const auto text = CFRef<CFStringRef>::adopted(doubles::makeString(u"key"));
    keychain.answer = text.get();
    EXPECT_EQ(read(), std::nullopt);
    keychain.answer = nullptr;
    keychain.answersNull = true;
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretItemsTest, aResultThatComesWithAnErrorIsReleased) {
    const auto bytes = CFRef<CFDataRef>::adopted(doubles::makeData("key"));
    keychain.answer = bytes.get();
    keychain.copyStatus = errSecInteractionNotAllowed;
    keychain.answersInSpiteOfStatus = true;
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretItemsTest, bytesThatAreNotUtf8AreNothing) {
    keychain.items = {item("\xFF\xFE")};
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(SecretItemsTest, withoutMemoryTheKeychainIsNotAsked) {
    const SecretAttributes query = KeychainStore::baseQuery(service, account);
    const auto expectAllocationError = [&](const std::function<void()> &makeScarce) {
        makeScarce();
        EXPECT_EQ(copyStatus(), -108);
        makeScarce();
        EXPECT_EQ(items.add(query), -108);
        makeScarce();
        EXPECT_EQ(items.remove(query), -108);
    };
    expectAllocationError([] { doubles::nextDictionaryIsNull = true; });
    const doubles::ScarceStrings one(1);
    expectAllocationError([] {});
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(SecretItemsTest, valuesThatAreNotConstantsStayTexts) {
    items.remove({{SecretAttribute::service, QStringLiteral("genp")},
                  {SecretAttribute::itemClass, QStringLiteral("inet")},
                  {SecretAttribute::returnData, false}});
    EXPECT_THAT(calls(), ElementsAre("SecItemDelete {class=inet, r_Data=false, svce=genp}"));
}

} // namespace
} // namespace quillmender
