#include "SettingsFixture.h"

#include <QSignalSpy>
#include <QTest>
#include <QUrl>

namespace quillmender {
namespace {

class SettingsStoreTest : public SettingsFixture {
  protected:
    void storeKey(const QString &provider, const QByteArray &key) {
        secrets.items[{QStringLiteral("com.quillmender.") + provider, QStringLiteral("api-key")}] =
            key;
    }
    int reads() const { return static_cast<int>(log->filter(QStringLiteral("find ")).size()); }
};

TEST_F(SettingsStoreTest, StartsWithTheDefaults) {
    EXPECT_EQ(store().selectedProvider(), AIProvider::openAI);
    EXPECT_EQ(store().model(AIProvider::openAI), QStringLiteral("gpt-5-mini"));
    EXPECT_EQ(store().model(AIProvider::anthropic), QStringLiteral("claude-sonnet-4-20250514"));
    EXPECT_EQ(store().model(AIProvider::gemini), QStringLiteral("gemini-2.5-flash"));
    EXPECT_EQ(QUrl(store().endpoint(AIProvider::openAI)).path(), QStringLiteral("/v1/responses"));
    EXPECT_EQ(QUrl(store().endpoint(AIProvider::anthropic)).path(), QStringLiteral("/v1/messages"));
    EXPECT_EQ(QUrl(store().endpoint(AIProvider::gemini)).path(), QStringLiteral("/v1beta/models"));
    EXPECT_EQ(store().builtInActions(), starterActions());
    EXPECT_TRUE(store().customActions().isEmpty());
    EXPECT_EQ(store().hotKeyDisplay(), QStringLiteral("Control + Option + Space"));
}

TEST_F(SettingsStoreTest, ReadsNoKeyAndWritesNothingWhenItIsMade) {
    store();
    EXPECT_TRUE(log->isEmpty());
    EXPECT_EQ(defaults.string(QStringLiteral("settings.selectedProvider")), std::nullopt);
}

TEST_F(SettingsStoreTest, AnUnknownStoredProviderIsTheFirst) {
    defaults.setString(QStringLiteral("settings.selectedProvider"), QStringLiteral("OpenAI"));
    EXPECT_EQ(store().selectedProvider(), AIProvider::openAI);
}

TEST_F(SettingsStoreTest, WritesEachPlainSettingUnderItsKeyAsTyped) {
    store().setSelectedProvider(AIProvider::gemini);
    store().setModel(AIProvider::openAI, QStringLiteral(" m1 "));
    store().setEndpoint(AIProvider::openAI, QStringLiteral("e1"));
    store().setModel(AIProvider::anthropic, QStringLiteral("m2"));
    store().setEndpoint(AIProvider::anthropic, QStringLiteral("e2"));
    store().setModel(AIProvider::gemini, QStringLiteral("m3"));
    store().setEndpoint(AIProvider::gemini, QStringLiteral("e3"));
    const QList<std::pair<const char *, const char *>> expected{
        {"settings.selectedProvider", "gemini"}, {"settings.openai.model", " m1 "},
        {"settings.openai.endpoint", "e1"},      {"settings.anthropic.model", "m2"},
        {"settings.anthropic.endpoint", "e2"},   {"settings.gemini.model", "m3"},
        {"settings.gemini.endpoint", "e3"}};
    for (const auto &[key, value] : expected)
        EXPECT_EQ(defaults.string(QString::fromLatin1(key)), QString::fromLatin1(value)) << key;

    restart();
    EXPECT_EQ(store().selectedProvider(), AIProvider::gemini);
    EXPECT_EQ(store().model(AIProvider::openAI), QStringLiteral(" m1 "));
}

TEST_F(SettingsStoreTest, AStoredEmptyModelStaysEmpty) {
    defaults.setString(QStringLiteral("settings.openai.model"), QString());
    EXPECT_EQ(store().model(AIProvider::openAI), QString());
    EXPECT_EQ(snapshot().model, QString());
}

TEST_F(SettingsStoreTest, AnnouncesEachChangeBeforeIt) {
    QString seen = QStringLiteral("nothing");
    QObject::connect(&store(), &Observable::objectWillChange, &store(),
                     [&] { seen = store().model(AIProvider::openAI); });
    store().setModel(AIProvider::openAI, QStringLiteral("new"));
    EXPECT_EQ(seen, QStringLiteral("gpt-5-mini"));
}

TEST_F(SettingsStoreTest, TakesASnapshotTrimmed) {
    storeKey(QStringLiteral("openAI"), "key\n");
    store().setModel(AIProvider::openAI, QStringLiteral(" m "));
    store().setEndpoint(AIProvider::openAI, QStringLiteral("\te\n"));
    const LLMConfiguration snapshot = this->snapshot();
    EXPECT_EQ(snapshot.provider, AIProvider::openAI);
    EXPECT_EQ(snapshot.apiKey, QStringLiteral("key"));
    EXPECT_EQ(snapshot.model, QStringLiteral("m"));
    EXPECT_EQ(snapshot.endpoint, QStringLiteral("e"));
}

TEST_F(SettingsStoreTest, ReadsAKeyOnceAndOnlyTheSelectedProviders) {
    storeKey(QStringLiteral("openAI"), "key");
    snapshot();
    snapshot();
    EXPECT_EQ(reads(), 1);
    store().loadAPIKeysIfNeeded();
    EXPECT_EQ(reads(), 3);
    EXPECT_TRUE(log->at(1).contains(QStringLiteral("com.quillmender.anthropic")));
    EXPECT_TRUE(log->at(2).contains(QStringLiteral("com.quillmender.gemini")));
    store().loadAPIKeysIfNeeded();
    EXPECT_EQ(reads(), 3);
}

TEST_F(SettingsStoreTest, DoesNotWriteBackWhatItJustRead) {
    storeKey(QStringLiteral("openAI"), "key");
    snapshot();
    EXPECT_EQ(log->size(), 1);
    EXPECT_EQ(store().apiKey(AIProvider::openAI), QStringLiteral("key"));
}

TEST_F(SettingsStoreTest, AKeyOfSpacesDeletesTheItemAndShowsTheSpaces) {
    storeKey(QStringLiteral("anthropic"), "key");
    store().setApiKey(AIProvider::anthropic, QStringLiteral("   "));
    EXPECT_TRUE(secrets.items.isEmpty());
    EXPECT_EQ(store().apiKey(AIProvider::anthropic), QStringLiteral("   "));
    EXPECT_EQ(log->size(), 1);
}

TEST_F(SettingsStoreTest, StoresAKeyTrimmedAndShowsItAsTyped) {
    store().setApiKey(AIProvider::gemini, QStringLiteral("key\n"));
    EXPECT_EQ(secrets.items.first(), "key");
    EXPECT_EQ(store().apiKey(AIProvider::gemini), QStringLiteral("key\n"));
}

TEST_F(SettingsStoreTest, WhatNobodySeesAroundAKeyIsNoPartOfIt) {
    store().setApiKey(AIProvider::openAI, QStringLiteral("\uFEFF key\u200B\n"));
    EXPECT_EQ(secrets.items.first(), "key");
    EXPECT_EQ(snapshot().apiKey, QStringLiteral("key"));
    restart();
    storeKey(QStringLiteral("openAI"), "\xEF\xBB\xBFold");
    EXPECT_EQ(snapshot().apiKey, QStringLiteral("old"));
    EXPECT_EQ(store().apiKey(AIProvider::openAI), QStringLiteral("\uFEFFold"));
    store().setApiKey(AIProvider::openAI, QStringLiteral("\uFEFF"));
    EXPECT_TRUE(secrets.items.isEmpty());
}

TEST_F(SettingsStoreTest, TheFirstLoadReplacesWhatWasTypedBefore) {
    store().setApiKey(AIProvider::openAI, QStringLiteral("  typed "));
    EXPECT_EQ(snapshot().apiKey, QStringLiteral("typed"));
    EXPECT_EQ(store().apiKey(AIProvider::openAI), QStringLiteral("typed"));
}

TEST_F(SettingsStoreTest, AFailingKeychainLeavesTheKeyEmpty) {
    secrets.failure = fakes::FakeSecrets::unavailable();
    EXPECT_EQ(snapshot().apiKey, QString());
    store().setApiKey(AIProvider::openAI, QStringLiteral("key"));
    EXPECT_EQ(store().apiKey(AIProvider::openAI), QStringLiteral("key"));
}

TEST_F(SettingsStoreTest, ASlowKeychainHoldsNothingUp) {
    storeKey(QStringLiteral("gemini"), "stored");
    secrets.hold();
    store().loadAPIKeysIfNeeded();
    EXPECT_EQ(reads(), 3);
    EXPECT_EQ(store().apiKey(AIProvider::gemini), QString());
    store().loadAPIKeysIfNeeded();
    EXPECT_EQ(reads(), 3) << "one search at a time";
    int changes = 0;
    QObject::connect(&store(), &Observable::objectWillChange, &store(), [&] { ++changes; });
    secrets.release();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return store().apiKey(AIProvider::gemini) == QStringLiteral("stored"); }));
    EXPECT_GE(changes, 1);
}

TEST_F(SettingsStoreTest, ASnapshotWaitsForASlowKeychain) {
    storeKey(QStringLiteral("openAI"), "stored");
    secrets.hold();
    store().setModel(AIProvider::openAI, QStringLiteral("then"));
    auto task = store().snapshot();
    EXPECT_FALSE(task.isReady());
    store().setModel(AIProvider::openAI, QStringLiteral("now"));
    store().setSelectedProvider(AIProvider::gemini);
    secrets.release();
    const LLMConfiguration taken = test::runTask(std::move(task));
    EXPECT_EQ(taken.provider, AIProvider::openAI);
    EXPECT_EQ(taken.apiKey, QStringLiteral("stored"));
    EXPECT_EQ(taken.model, QStringLiteral("then"));
}

TEST_F(SettingsStoreTest, ASnapshotDoesNotWaitForever) {
    keyPatience = std::chrono::milliseconds(1);
    storeKey(QStringLiteral("openAI"), "stored");
    secrets.hold();
    EXPECT_EQ(snapshot().apiKey, QString());
    secrets.release();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return store().apiKey(AIProvider::openAI) == QStringLiteral("stored");
    })) << "the late answer counts";
    EXPECT_EQ(snapshot().apiKey, QStringLiteral("stored"));
    EXPECT_EQ(reads(), 1);
}

TEST_F(SettingsStoreTest, WhatIsTypedDuringASearchStays) {
    storeKey(QStringLiteral("openAI"), "stored");
    secrets.hold();
    store().loadAPIKeysIfNeeded();
    store().setApiKey(AIProvider::openAI, QStringLiteral("typed"));
    EXPECT_EQ(snapshot().apiKey, QStringLiteral("typed")) << "at once";
    QSignalSpy ended(&store(), &SettingsStore::apiKeySearchEnded);
    secrets.release();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ended.count() == 3; }));
    EXPECT_EQ(store().apiKey(AIProvider::openAI), QStringLiteral("typed"));
    EXPECT_EQ(secrets.items.first(), "typed");
}

TEST_F(SettingsStoreTest, ALockedKeychainIsAskedAgainTheNextTime) {
    storeKey(QStringLiteral("openAI"), "stored");
    secrets.failure = fakes::FakeSecrets::unavailable();
    EXPECT_EQ(snapshot().apiKey, QString());
    EXPECT_EQ(snapshot().apiKey, QString());
    secrets.failure = std::nullopt;
    EXPECT_EQ(snapshot().apiKey, QStringLiteral("stored"));
    EXPECT_EQ(reads(), 3);
    snapshot();
    EXPECT_EQ(reads(), 3);
}

TEST_F(SettingsStoreTest, WhatIsTypedWithoutAKeychainIsUsedInThisRun) {
    secrets.failure = fakes::FakeSecrets::unavailable();
    store().loadAPIKeysIfNeeded();
    store().setApiKey(AIProvider::openAI, QStringLiteral("typed"));
    store().loadAPIKeysIfNeeded();
    EXPECT_EQ(snapshot().apiKey, QStringLiteral("typed"));
}

TEST_F(SettingsStoreTest, AMissingKeyIsSearchedOnce) {
    EXPECT_EQ(snapshot().apiKey, QString());
    snapshot();
    EXPECT_EQ(reads(), 1);
}

TEST_F(SettingsStoreTest, NoKeyEverReachesThePlainSettings) {
    store().setApiKey(AIProvider::openAI, QStringLiteral("sk-secret"));
    for (const char *key : {"settings.openai.apiKey", "settings.openai.key", "settings.apiKey"})
        EXPECT_EQ(defaults.string(QString::fromLatin1(key)), std::nullopt);
}

} // namespace
} // namespace quillmender
