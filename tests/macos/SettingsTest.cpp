#include "DoublesTest.h"
#include "doubles/cf/Data.h"
#include "doubles/cf/Preferences.h"
#include "doubles/cf/String.h"
#include "doubles/security/Keychain.h"
#include "fakes/Await.h"
#include "fakes/FakeLoginItem.h"
#include "platform/macos/MacSecrets.h"
#include "platform/macos/MacUserDefaults.h"
#include "settings/SettingsStore.h"

namespace quillmender {
namespace {

using testing::ElementsAre;

std::string read(const std::string &key) {
    return "CFPreferencesCopyAppValue " + key + " kCFPreferencesCurrentApplication";
}

std::string query(const std::string &function, const std::string &provider) {
    const std::string entries = function == "SecItemCopyMatching"
                                    ? "class=genp, m_Limit=m_LimitOne, r_Data=true"
                                    : "class=genp";
    return function + " {acct=api-key, " + entries + ", svce=com.quillmender." + provider + "}";
}

/// The settings of the whole program on the macOS stores.
class SettingsTest : public DoublesTest {
  protected:
    SettingsStore &store() {
        if (!store_)
            store_ = std::make_unique<SettingsStore>(defaults, secrets, loginItem);
        return *store_;
    }
    void restart() { store_.reset(); }

    doubles::Preferences preferences;
    doubles::Keychain keychain;
    MacUserDefaults defaults;
    MacSecrets secrets;
    fakes::FakeLoginItem loginItem{fakes::makeCallLog()};

  private:
    std::unique_ptr<SettingsStore> store_;
};

TEST_F(SettingsTest, ReadsEveryKeyAndWritesNothingAtTheStart) {
    store();
    EXPECT_THAT(calls(), testing::UnorderedElementsAre(
                             read("settings.selectedProvider"), read("settings.openai.model"),
                             read("settings.openai.endpoint"), read("settings.anthropic.model"),
                             read("settings.anthropic.endpoint"), read("settings.gemini.model"),
                             read("settings.gemini.endpoint"), read("settings.customActions"),
                             read("settings.builtInActions")));
}

TEST_F(SettingsTest, AnEmptyDomainGivesTheDefaults) {
    EXPECT_EQ(store().selectedProvider(), AIProvider::openAI);
    EXPECT_EQ(store().model(AIProvider::openAI), QStringLiteral("gpt-5-mini"));
    EXPECT_EQ(store().model(AIProvider::anthropic), QStringLiteral("claude-sonnet-4-20250514"));
    EXPECT_EQ(store().model(AIProvider::gemini), QStringLiteral("gemini-2.5-flash"));
    EXPECT_EQ(store().builtInActions().size(), 7);
    EXPECT_TRUE(store().customActions().isEmpty());
}

TEST_F(SettingsTest, WhatCannotBeReadHasItsDefault) {
    preferences.give("settings.selectedProvider", doubles::makeString(u"another"));
    preferences.give("settings.openai.model", doubles::makeData("bytes"));
    preferences.give("settings.builtInActions", doubles::makeString(u"[]"));
    preferences.give("settings.customActions", doubles::makeData("not JSON"));
    preferences.give("settings.gemini.model", doubles::makeString(u""));
    EXPECT_EQ(store().selectedProvider(), AIProvider::openAI);
    EXPECT_EQ(store().model(AIProvider::openAI), QStringLiteral("gpt-5-mini"));
    EXPECT_EQ(store().builtInActions().size(), 7);
    EXPECT_TRUE(store().customActions().isEmpty());
    EXPECT_EQ(store().model(AIProvider::gemini), QString());
}

TEST_F(SettingsTest, EveryChangeOutlivesTheRun) {
    store().setSelectedProvider(AIProvider::gemini);
    store().setModel(AIProvider::anthropic, QStringLiteral("m\u00F6del "));
    store().setEndpoint(AIProvider::gemini, QStringLiteral("https://example.org/v1"));
    store().addCustomAction(QStringLiteral("Shout"), QStringLiteral("Shout: {{text}}"));
    store().hideBuiltInAction(TextAction::casual);
    EXPECT_EQ(preferences.stored("settings.selectedProvider"), "gemini");
    EXPECT_EQ(preferences.stored("settings.anthropic.model"), "m\u00F6del ");
    EXPECT_EQ(preferences.stored("settings.gemini.endpoint"), "https://example.org/v1");
    EXPECT_EQ(preferences.stored("settings.customActions").substr(0, 2), "<[");
    EXPECT_TRUE(preferences.isWritten);

    restart();
    EXPECT_EQ(store().selectedProvider(), AIProvider::gemini);
    EXPECT_EQ(store().model(AIProvider::anthropic), QStringLiteral("m\u00F6del "));
    ASSERT_EQ(store().customActions().size(), 1);
    EXPECT_EQ(store().customActions().first().title, QStringLiteral("Shout"));
    EXPECT_EQ(store().visibleBuiltInActions().size(), 6);
}

TEST_F(SettingsTest, ReadsEachKeyOnceInTheProvidersOrder) {
    keychain.items = {{"genp", "com.quillmender.openAI", "api-key", " key\n", "ck"}};
    store();
    calls();
    store().loadAPIKeysIfNeeded();
    store().loadAPIKeysIfNeeded();
    EXPECT_THAT(calls(), ElementsAre(query("SecItemCopyMatching", "openAI"),
                                     query("SecItemCopyMatching", "anthropic"),
                                     query("SecItemCopyMatching", "gemini")));
    EXPECT_EQ(fakes::await(store().snapshot()).apiKey, QStringLiteral("key"));
}

TEST_F(SettingsTest, ASnapshotReadsItsProvidersKeyOnly) {
    keychain.items = {{"genp", "com.quillmender.anthropic", "api-key", "key", "ck"}};
    store().setSelectedProvider(AIProvider::anthropic);
    calls();
    EXPECT_EQ(fakes::await(store().snapshot()).apiKey, QStringLiteral("key"));
    EXPECT_EQ(fakes::await(store().snapshot()).apiKey, QStringLiteral("key"));
    EXPECT_THAT(calls(), ElementsAre(query("SecItemCopyMatching", "anthropic")));
}

TEST_F(SettingsTest, AKeychainThatCouldNotBeAskedIsAskedAgain) {
    keychain.items = {{"genp", "com.quillmender.openAI", "api-key", "key", "ck"}};
    keychain.copyStatus = errSecInteractionNotAllowed;
    EXPECT_EQ(fakes::await(store().snapshot()).apiKey, QString());
    keychain.copyStatus = errSecSuccess;
    EXPECT_EQ(fakes::await(store().snapshot()).apiKey, QStringLiteral("key"));
}

TEST_F(SettingsTest, ABlankKeyDeletesTheItemAndAnotherReplacesIt) {
    keychain.items = {{"genp", "com.quillmender.gemini", "api-key", "old", "ak"}};
    store();
    calls();
    store().setApiKey(AIProvider::gemini, QStringLiteral(" new\n"));
    EXPECT_THAT(keychain.items, ElementsAre(doubles::Keychain::Item{
                                    "genp", "com.quillmender.gemini", "api-key", "new", "ck"}));
    store().setApiKey(AIProvider::gemini, QStringLiteral("  "));
    EXPECT_TRUE(keychain.items.empty());
    EXPECT_EQ(store().apiKey(AIProvider::gemini), QStringLiteral("  "));
    EXPECT_THAT(calls(), ElementsAre(query("SecItemDelete", "gemini"),
                                     "SecItemAdd {acct=api-key, class=genp, pdmn=ck, "
                                     "svce=com.quillmender.gemini, v_Data=<new>}",
                                     query("SecItemDelete", "gemini")));
}

} // namespace
} // namespace quillmender
