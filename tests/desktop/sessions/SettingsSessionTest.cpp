#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SettingsForm.h"
#include "desktop/sessions/TextEvents.h"
#include "desktop/sessions/TextKeys.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");
const QString secret = QStringLiteral("Kq7-typed-by-hand");
const QString service = QStringLiteral("com.quillmender.openAI");
const QString account = QStringLiteral("api-key");
constexpr uint passwordTextRole = 40;

class SettingsSessionTest : public SessionFixture {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        startDesktop();
        startProgram(harness::ProductProcess::Setup{});
        editor_ = TestApplication::mousepad(desktop(), letter);
        const Accessible text = editor_->focusedText();
        waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
        selectByKeyboard(input(), letter, wrong);
        waitUntil([&] { return text.selectedText() == wrong; },
                  QStringLiteral("a word is selected"));
    }

    QByteArray settingsFile() {
        QFile file(desktop().folders().config() + QStringLiteral("/quillmender/quillmender.conf"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void waitUntilStored(const char *setting, const QString &value) {
        const QByteArray line = QByteArray(setting) + '=' + value.toUtf8();
        waitUntil([&] { return settingsFile().contains(line); },
                  QStringLiteral("%1 is stored").arg(QLatin1String(setting)));
    }

    const TestApplication &editor() const { return *editor_; }

  private:
    std::optional<TestApplication> editor_;
};

TEST_F(SettingsSessionTest, ConfiguredFromThePanelTheNextSessionUsesIt) {
    const TextEvents events(desktop().accessibilityBus()->connection());
    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Settings"));
    SettingsForm settings(desktop(), programId());

    const QString endpoint = provider().baseUrl() + QStringLiteral("/v1/responses");
    const Accessible key = settings.fill("OpenAI API Key", secret);
    waitUntil([&] { return desktop().keyring()->lookup(service, account) == secret.toUtf8(); },
              QStringLiteral("the key is in the keyring"));
    const Accessible model = settings.fill("OpenAI Model", QStringLiteral("typed-model"));
    waitUntilStored("settings.openai.model", QStringLiteral("typed-model"));
    settings.fill("OpenAI Endpoint", endpoint);
    waitUntilStored("settings.openai.endpoint", endpoint);

    EXPECT_EQ(key.role(), passwordTextRole);
    EXPECT_EQ(key.text(), QString());
    input().click(key.extents().center());
    input().chord({XK_Control_L, XK_a});
    input().chord({XK_Control_L, XK_c});
    settings.close();
    EXPECT_TRUE(program().process().isRunning());
    expectClipboardNeverTaken();
    EXPECT_NE(harness::ClipboardProbe(desktop().display(), "PRIMARY").text(), secret);

    // The stored key is put into the field again.
    program().activateAction(QStringLiteral("settings"));
    settings.waitUntilShown();
    waitUntil(
        [&] { return events.of(model.service(), model.path()).contains(QStringLiteral("y")); },
        QStringLiteral("events of the model field arrive"));
    EXPECT_FALSE(settingsFile().contains(secret.toUtf8()));
    EXPECT_FALSE(program().log().contains(secret.toUtf8()));
    const QStringList told = events.of(key.service(), key.path());
    EXPECT_FALSE(told.isEmpty());
    for (const QString &text : told)
        EXPECT_EQ(text, QString(text.size(), QChar(0x2022)));
    settings.close();

    answerWith(QStringLiteral("receive"));
    desktop().windows().activate(desktop().windows().titled(QStringLiteral("Quillmender")));
    click(QStringLiteral("Fix My Grammar"));
    const test::ReceivedRequest request = waitForRequest();
    EXPECT_EQ(request.header("authorization"), "Bearer " + secret.toUtf8());
    EXPECT_EQ(QJsonDocument::fromJson(request.body)[QStringLiteral("model")].toString(),
              QStringLiteral("typed-model"));
    waitUntilPanelIsGone();
    EXPECT_EQ(editor().focusedText().text(), QStringLiteral("Hello, you receive it."));
    expectClipboardNeverTaken();
}

} // namespace
} // namespace quillmender
