#include "SettingsFixture.h"

#include <functional>

namespace quillmender {
namespace {

/// What is written, when, and what is announced before it.
class SettingsWritesTest : public SettingsFixture {
  protected:
    struct Setter {
        const char *key;
        std::function<void()> assign;       ///< another value than the first one
        std::function<QString()> published; ///< what it is now
    };

    QList<Setter> plainSetters() {
        QList<Setter> setters{
            {"settings.selectedProvider",
             [this] { store().setSelectedProvider(AIProvider::gemini); },
             [this] { return rawValue(store().selectedProvider()); }},
            {"settings.customActions", [this] { store().setCustomActions({mine}); },
             [this] { return QString::number(store().customActions().size()); }},
            {"settings.builtInActions", [this] { store().setBuiltInActions(renamed()); },
             [this] { return store().builtInActions().constFirst().title; }},
        };
        for (const AIProvider provider : allProviders) {
            const auto index = static_cast<qsizetype>(provider);
            setters.append({modelKeys[index],
                            [this, provider] { store().setModel(provider, QStringLiteral("m")); },
                            [this, provider] { return store().model(provider); }});
            setters.append(
                {endpointKeys[index],
                 [this, provider] { store().setEndpoint(provider, QStringLiteral("e")); },
                 [this, provider] { return store().endpoint(provider); }});
        }
        return setters;
    }

    static QList<BuiltInActionConfig> renamed() {
        auto actions = starterActions();
        actions.first().title = QStringLiteral("Renamed");
        return actions;
    }

    /// The keys that were written since the last time.
    QStringList takeKeys() {
        QStringList keys;
        for (const QString &write : std::exchange(defaults.writes, {}))
            keys.append(write.section(u'=', 0, 0));
        return keys;
    }

    const CustomAction mine{QUuid::createUuid(), QStringLiteral("Mine"), QStringLiteral("x")};
    static constexpr const char *modelKeys[] = {"settings.openai.model", "settings.anthropic.model",
                                                "settings.gemini.model"};
    static constexpr const char *endpointKeys[] = {
        "settings.openai.endpoint", "settings.anthropic.endpoint", "settings.gemini.endpoint"};
};

TEST_F(SettingsWritesTest, NothingIsWrittenWhenItIsMade) {
    for (const char *document : {"{broken", "[]", "[1]"}) {
        restart();
        defaults.setData(QStringLiteral("settings.builtInActions"), document);
        defaults.setData(QStringLiteral("settings.customActions"), document);
        defaults.setString(QStringLiteral("settings.selectedProvider"), QStringLiteral("none"));
        defaults.writes.clear();
        store();
        EXPECT_EQ(defaults.writes, QStringList()) << document;
    }
    restart();
    store();
    EXPECT_TRUE(log->isEmpty());
}

TEST_F(SettingsWritesTest, EachSettingIsWrittenUnderItsOwnKeyAlone) {
    for (const Setter &setter : plainSetters()) {
        setter.assign();
        EXPECT_EQ(takeKeys(), QStringList(QLatin1String(setter.key))) << setter.key;
    }
    EXPECT_TRUE(log->isEmpty()) << "none of it is the keychain's";
}

TEST_F(SettingsWritesTest, AValueThatIsTheSameIsWrittenAgain) {
    for (const Setter &setter : plainSetters()) {
        setter.assign();
        takeKeys();
        setter.assign();
        EXPECT_EQ(takeKeys(), QStringList(QLatin1String(setter.key))) << setter.key;
    }
}

TEST_F(SettingsWritesTest, EachAssignmentIsAnnouncedOnceBeforeItHappensAndIsWritten) {
    for (const Setter &setter : plainSetters()) {
        const QString before = setter.published();
        QStringList seen;
        int writesThen = 0;
        const auto connection =
            QObject::connect(&store(), &Observable::objectWillChange, &store(), [&] {
                seen.append(setter.published());
                writesThen += int(defaults.writes.size());
            });
        takeKeys();
        setter.assign();
        EXPECT_EQ(seen, QStringList(before)) << setter.key;
        EXPECT_EQ(writesThen, 0) << setter.key;
        EXPECT_NE(setter.published(), before) << setter.key;
        setter.assign();
        EXPECT_EQ(seen.size(), 2) << setter.key << ", although it is the same";
        QObject::disconnect(connection);
    }
}

TEST_F(SettingsWritesTest, AKeyIsAnnouncedBeforeItHappensAndIsStored) {
    for (const AIProvider provider : allProviders) {
        QStringList seen;
        qsizetype callsThen = 0;
        const auto connection =
            QObject::connect(&store(), &Observable::objectWillChange, &store(), [&] {
                seen.append(store().apiKey(provider));
                callsThen += log->size();
            });
        log->clear();
        store().setApiKey(provider, QStringLiteral("k"));
        EXPECT_EQ(seen, QStringList(QString()));
        EXPECT_EQ(callsThen, 0);
        EXPECT_EQ(store().apiKey(provider), QStringLiteral("k"));
        QObject::disconnect(connection);
    }
    EXPECT_EQ(defaults.writes, QStringList());
}

TEST_F(SettingsWritesTest, EveryKeystrokeRewritesTheKeyOfItsProviderAlone) {
    for (const AIProvider provider : allProviders) {
        log->clear();
        for (int time = 0; time < 2; ++time)
            store().setApiKey(provider, QStringLiteral("\t k 1 \n"));
        const QString once =
            QStringLiteral("store com.quillmender.%1 api-key k 1").arg(rawValue(provider));
        EXPECT_EQ(*log, QStringList({once, once}));
    }
}

TEST_F(SettingsWritesTest, AClearedKeyIsDeletedAndNeverAdded) {
    for (const char *blank : {"", " ", "\n\t ", "\u00a0\u2003"}) {
        log->clear();
        store().setApiKey(AIProvider::gemini, QString::fromUtf8(blank));
        EXPECT_EQ(*log, QStringList(QStringLiteral("remove com.quillmender.gemini api-key")))
            << blank;
        EXPECT_EQ(store().apiKey(AIProvider::gemini), QString::fromUtf8(blank));
    }
}

TEST_F(SettingsWritesTest, AKeyOfBlanksIsNoKeyInTheSnapshot) {
    for (const char *blank : {"", "   ", "\n\t "}) {
        secrets.items[{QStringLiteral("com.quillmender.openAI"), QStringLiteral("api-key")}] =
            blank;
        restart();
        EXPECT_EQ(snapshot().apiKey, QString()) << blank;
    }
}

TEST_F(SettingsWritesTest, EachStoredSettingIsReadFromItsOwnKey) {
    for (const AIProvider provider : allProviders) {
        const auto index = static_cast<qsizetype>(provider);
        defaults.setString(QLatin1String(modelKeys[index]),
                           QStringLiteral(" model of ") + rawValue(provider));
        defaults.setString(QLatin1String(endpointKeys[index]),
                           QStringLiteral(" endpoint of ") + rawValue(provider));
        secrets.items[{QStringLiteral("com.quillmender.") + rawValue(provider),
                       QStringLiteral("api-key")}] = rawValue(provider).toUtf8();
    }
    for (const AIProvider provider : allProviders) {
        EXPECT_EQ(store().model(provider), QStringLiteral(" model of ") + rawValue(provider));
        EXPECT_EQ(store().endpoint(provider), QStringLiteral(" endpoint of ") + rawValue(provider));
        store().setSelectedProvider(provider);
        const LLMConfiguration taken = snapshot();
        EXPECT_EQ(taken.provider, provider);
        EXPECT_EQ(taken.apiKey, rawValue(provider));
        EXPECT_EQ(taken.model, QStringLiteral("model of ") + rawValue(provider));
        EXPECT_EQ(taken.endpoint, QStringLiteral("endpoint of ") + rawValue(provider));
    }
}

TEST_F(SettingsWritesTest, AStoredEmptyTextIsNoMissingOne) {
    for (const AIProvider provider : allProviders) {
        const auto index = static_cast<qsizetype>(provider);
        defaults.setString(QLatin1String(modelKeys[index]), QStringLiteral(""));
        defaults.setString(QLatin1String(endpointKeys[index]), QStringLiteral(""));
    }
    for (const AIProvider provider : allProviders) {
        EXPECT_EQ(store().model(provider), QString());
        EXPECT_EQ(store().endpoint(provider), QString());
    }
}

TEST_F(SettingsWritesTest, AStoredProviderCountsOnlyAsItIsSpelt) {
    for (const char *other : {"Gemini", "GEMINI", "Anthropic", "claude", " gemini", "gemini\n"}) {
        restart();
        defaults.setString(QStringLiteral("settings.selectedProvider"), QLatin1String(other));
        EXPECT_EQ(store().selectedProvider(), AIProvider::openAI) << other;
    }
    for (const AIProvider provider : allProviders) {
        restart();
        defaults.setString(QStringLiteral("settings.selectedProvider"), rawValue(provider));
        EXPECT_EQ(store().selectedProvider(), provider);
    }
}

TEST_F(SettingsWritesTest, KeysAreReadInTheOrderOfTheProviders) {
    store().loadAPIKeysIfNeeded();
    EXPECT_EQ(*log, QStringList({QStringLiteral("find com.quillmender.openAI api-key"),
                                 QStringLiteral("find com.quillmender.anthropic api-key"),
                                 QStringLiteral("find com.quillmender.gemini api-key")}));
}

} // namespace
} // namespace quillmender
