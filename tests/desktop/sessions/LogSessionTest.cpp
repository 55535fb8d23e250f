#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SettingsForm.h"

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

const QString letter = QStringLiteral("Zyxquarto lies over the hill.");
const QString instruction = QStringLiteral("Wvjumbo");
const QString answer = QStringLiteral("Bfdwomble it says.");
const QString key = QStringLiteral("Kq7-typed-by-hand");

class LogSessionTest : public SessionFixture {};

TEST_F(LogSessionTest, ToldEverythingItHasNeitherTextNorKey) {
    startDesktop();
    harness::ProductProcess::Setup setup =
        harness::ProductProcess::openAi(provider().baseUrl() + QStringLiteral("/v1/responses"));
    setup.environment[QStringLiteral("QT_LOGGING_RULES")] = QStringLiteral("*=true");
    startProgram(setup);
    allowLog();

    program().activateAction(QStringLiteral("settings"));
    SettingsForm settings(desktop(), program().pid());
    settings.fill("OpenAI API Key", key);
    waitUntil(
        [&] {
            return desktop().keyring()->lookup(QStringLiteral("com.quillmender.openAI"),
                                               QStringLiteral("api-key")) == key.toUtf8();
        },
        QStringLiteral("the key is in the keyring"));
    settings.close();

    const auto editor = TestApplication::mousepad(desktop(), letter);
    const Accessible text = editor.focusedText();
    waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
    answerWith(answer);
    pressHotKey();
    waitForPanel(letter);
    const Accessible field = desktop().accessible().waitFor(program().pid(), QStringLiteral("text"),
                                                            QStringLiteral("Generate From Prompt"));
    input().type(instruction);
    waitUntil([&] { return field.text() == instruction; },
              QStringLiteral("the instruction is typed"));
    click(QStringLiteral("Generate"));
    EXPECT_TRUE(waitForRequest().body.contains(instruction.toUtf8()));
    waitUntilPanelIsGone();
    EXPECT_EQ(text.text(), answer);

    // A provider that repeats what it was sent.
    provider().setAnswer(
        test::ScriptedAnswer::http(400, R"({"error":{"message":"no: Zyxquarto Kq7-typed"}})"));
    editor.focusedText();
    pressHotKey();
    waitForPanel(answer);
    click(QStringLiteral("Fix My Grammar"));
    waitForPanel(QStringLiteral("no: Zyxquarto Kq7-typed"));

    const QByteArray log = program().log();
    for (const char *line :
         {"quillmender.platform: window system: X11", "quillmender.session: captured 29 characters",
          "quillmender.session: asking OpenAI", "quillmender.http: POST 127.0.0.1",
          "quillmender.session: written by",
          "quillmender.session: the text was not replaced: the provider reports an error"})
        EXPECT_TRUE(log.contains(line)) << line;
    for (const char *part :
         {"Zyxquarto", "over the hill", "Wvjumbo", "Bfdwomble", "Kq7", "typed-by"})
        EXPECT_FALSE(log.contains(part))
            << log.mid(std::max(0LL, log.indexOf(part) - 200), 400).toStdString();
}

} // namespace
} // namespace quillmender
