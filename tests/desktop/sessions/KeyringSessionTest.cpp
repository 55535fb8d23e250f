#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SettingsForm.h"

#include <QFile>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

const QString service = QStringLiteral("com.quillmender.openAI");
const QString account = QStringLiteral("api-key");
const QByteArray stored = "Kq7-stored-before";
const QString typed = QStringLiteral("Kq8-typed-by-hand");

/// The desktop's keyring is stuck, locked or not there.
class KeyringSessionTest : public SessionFixture {
  protected:
    void startWith(const harness::Desktop::Options &options) {
        startDesktop(options);
        harness::ProductProcess::Setup setup =
            harness::ProductProcess::openAi(provider().baseUrl() + QStringLiteral("/v1/responses"));
        setup.apiKeys.clear();
        if (options.keyring)
            setup.apiKeys[QStringLiteral("openAI")] = stored;
        startProgram(setup);
        allowLog();
    }

    SettingsForm openSettings() {
        program().activateAction(QStringLiteral("settings"));
        return {desktop(), program().pid()};
    }

    QByteArray settingsFile() {
        QFile file(desktop().folders().config() + QStringLiteral("/quillmender/quillmender.conf"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void typeModel(SettingsForm &settings) {
        settings.fill("OpenAI Model", QStringLiteral("typed-model"));
        waitUntil([&] { return settingsFile().contains("settings.openai.model=typed-model"); },
                  QStringLiteral("the model is stored"));
    }

    bool programHasLoaded(const char *library) {
        QFile maps(QStringLiteral("/proc/%1/maps").arg(program().pid()));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library);
    }

    harness::Keyring &keyring() { return *desktop().keyring(); }
    bool keyringHas(const QString &key) {
        return keyring().lookup(service, account) == key.toUtf8();
    }

    void expectLogWithoutKeys(const char *reason) {
        waitUntil([&] { return program().log().contains(reason); },
                  QStringLiteral("the log says why: ") + QString::fromUtf8(program().log()));
        EXPECT_FALSE(program().log().contains("Kq7"));
        EXPECT_FALSE(program().log().contains("Kq8"));
    }

    /// A session whose request goes out with this key.
    void expectRequestWith(const QString &key) {
        const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("some words"));
        const Accessible text = editor.focusedText();
        waitUntil([&] { return text.text() == QStringLiteral("some words"); },
                  QStringLiteral("the words are there"));
        answerWith(QStringLiteral("other words"));
        pressHotKey();
        waitForPanel(QStringLiteral("some words"));
        click(QStringLiteral("Fix My Grammar"));
        EXPECT_EQ(waitForRequest().header("authorization"), "Bearer " + key.toUtf8());
        waitUntilPanelIsGone();
    }
};

TEST_F(KeyringSessionTest, ItsLibraryComesWithTheFirstKey) {
    startWith({});
    EXPECT_TRUE(programHasLoaded("libQt6Widgets"));
    EXPECT_FALSE(programHasLoaded("libsecret"));
    expectRequestWith(QString::fromUtf8(stored));
    EXPECT_TRUE(programHasLoaded("libsecret"));
}

TEST_F(KeyringSessionTest, AStuckKeyringNeverHoldsUpTheSettings) {
    startWith({});
    keyring().process().suspend();
    SettingsForm settings = openSettings();
    settings.fill("OpenAI API Key", typed);
    typeModel(settings);
    expectLogWithoutKeys("the secret service has not answered yet");
    settings.close();
    keyring().process().resume();
    waitUntil([&] { return keyringHas(typed); }, QStringLiteral("what was typed is stored"));
    EXPECT_FALSE(settingsFile().contains("Kq"));
    expectRequestWith(typed);
}

TEST_F(KeyringSessionTest, AKeyringThatWasStartedAgainIsUsedAgain) {
    startWith({});
    SettingsForm settings = openSettings();
    settings.fill("OpenAI API Key", QStringLiteral("Kq8-first"));
    waitUntil([&] { return keyringHas(QStringLiteral("Kq8-first")); },
              QStringLiteral("the first is stored"));
    keyring().process().kill();
    harness::Keyring second(desktop().sessionBus(), desktop().environment(),
                            desktop().folders().log(QStringLiteral("second-keyring")));
    settings.fill("OpenAI API Key", typed);
    waitUntil([&] { return second.lookup(service, account) == typed.toUtf8(); },
              QStringLiteral("what was typed afterwards is stored"));
    settings.close();
    expectRequestWith(typed);
}

TEST_F(KeyringSessionTest, AStuckKeyringsAnswerStillCounts) {
    startWith({});
    keyring().process().suspend();
    openSettings().close();
    keyring().process().resume();
    expectRequestWith(QString::fromUtf8(stored));
}

TEST_F(KeyringSessionTest, ALockedKeyringIsAskedAgainWhenItsKeyIsNeeded) {
    startWith({});
    keyring().lock();
    openSettings().close();
    expectLogWithoutKeys("quillmender.secrets");
    keyring().unlock();
    expectRequestWith(QString::fromUtf8(stored));
}

TEST_F(KeyringSessionTest, ALockedKeyringLooksLikeAMissingKey) {
    startWith({});
    keyring().lock();
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("some words"));
    editor.focusedText();
    pressHotKey();
    waitForPanel(QStringLiteral("some words"));
    click(QStringLiteral("Fix My Grammar"));
    waitForPanel(QStringLiteral("Add your OpenAI API key in Settings before using Quillmender."));
    EXPECT_TRUE(provider().requests().empty());
}

TEST_F(KeyringSessionTest, WithoutAKeyringTheTypedKeyServesThisRun) {
    startWith({.keyring = false});
    SettingsForm settings = openSettings();
    settings.fill("OpenAI API Key", typed);
    typeModel(settings);
    settings.close();
    expectLogWithoutKeys("quillmender.secrets");
    EXPECT_FALSE(settingsFile().contains("Kq"));
    expectRequestWith(typed);
}

} // namespace
} // namespace quillmender
