#include "desktop/sessions/SessionFixture.h"
#include "desktop/soak/ResourceUse.h"
#include "support/ProviderAnswers.h"

#include <iostream>
#include <random>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::ClipboardOwner;
using harness::ClipboardProbe;
using harness::TestApplication;
using harness::waitUntil;
using test::ScriptedAnswer;

const QString letter = QStringLiteral("Hello, you recieve it.");
constexpr int wordStart = 11;
constexpr int wordEnd = 18;
const QString failureMessage = QStringLiteral("The provider is out of order.");
const QStringList actions{QStringLiteral("Formalize"), QStringLiteral("Simplify"),
                          QStringLiteral("Fix My Grammar")};

int fromEnvironment(const char *name, int usual) {
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber && value > 0 ? value : usual;
}

/// Session after session in one process: $QUILLMENDER_SOAK_SESSIONS of them, drawn from
/// $QUILLMENDER_SOAK_SEED.
class SoakTest : public SessionFixture {
  protected:
    SoakTest() {
        std::cout << "seed " << seed_ << "\n";
        RecordProperty("seed", static_cast<int>(seed_));
    }

    int draw(int count) { return std::uniform_int_distribution(0, count - 1)(random_); }

    void startApplications() {
        add(TestApplication::mousepad(desktop(), letter));
        add(TestApplication::gedit(desktop(), letter));
        add(TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), letter));
        add(TestApplication::sampleEditor(desktop(), QStringLiteral("line"), letter));
    }

    /// An editor that still loads its file would drop a selection.
    void add(TestApplication application) {
        const Accessible text = application.focusedText();
        waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
        applications_.push_back(std::move(application));
    }

    void takeClipboard() {
        static const QList<harness::ClipboardRepresentation> nothing;
        switch (draw(4)) {
        case 0:
            owner_.emplace(desktop().display(), ClipboardOwner::textHtmlAndImage());
            break;
        case 1:
            owner_.emplace(desktop().display(),
                           ClipboardOwner::plainText(QString(draw(5000), u'x')));
            break;
        case 2:
            owner_.emplace(desktop().display(),
                           ClipboardOwner::plainText(QString(600'000 + draw(1000), u'y')));
            break;
        default:
            break; // whoever has it keeps it
        }
    }

    /// Hot key, action, and either the answer in the text or the message in the panel.
    void runSession() {
        TestApplication &application = applications_[static_cast<size_t>(draw(4))];
        application.activate();
        const Accessible text = application.focusedText();
        text.setText(letter);
        waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is there"));
        const bool isWordOnly = draw(2) == 0;
        if (isWordOnly) {
            text.select(wordStart, wordEnd);
            waitUntil([&] { return text.selectedText() == QStringLiteral("recieve"); },
                      QStringLiteral("the word is selected"));
        } else {
            text.setCaretOffset(0);
            waitUntil([&] { return text.selectedText().isEmpty(); },
                      QStringLiteral("nothing is selected"));
        }
        takeClipboard();
        const harness::ClipboardContents before = ClipboardProbe(desktop().display()).read();

        const bool isFailure = draw(4) == 0;
        const QString answer = QStringLiteral("Answer %1 \u00e9").arg(++sessions_);
        if (isFailure)
            provider().setAnswer(ScriptedAnswer::http(500, test::errorBody(failureMessage)));
        else
            answerWith(answer);
        pressHotKey();
        const xcb_window_t panel = waitForPanel(isWordOnly ? QStringLiteral("recieve") : letter);
        click(actions[draw(static_cast<int>(actions.size()))]);
        QString expected = letter;
        if (isFailure) {
            waitForPanel(failureMessage);
            desktop().windows().close(panel);
        } else if (isWordOnly) {
            expected.replace(wordStart, wordEnd - wordStart, answer);
        } else {
            expected = answer;
        }
        waitUntilPanelIsGone();
        waitUntil([&] { return text.text() == expected; },
                  QStringLiteral("the text is \"%1\"").arg(expected));
        EXPECT_EQ(ClipboardProbe(desktop().display()).read(), before);
    }

    ResourceUse use() { return ResourceUse::ofProcess(program().pid(), desktop()); }

  private:
    unsigned seed_ = static_cast<unsigned>(fromEnvironment(
        "QUILLMENDER_SOAK_SEED", static_cast<int>(std::random_device{}() & 0x7fffffff)));
    std::mt19937 random_{seed_};
    std::vector<TestApplication> applications_;
    std::optional<ClipboardOwner> owner_;
    int sessions_ = 0;
};

TEST_F(SoakTest, ManySessionsLeaveNothingBehind) {
    const int sessions = fromEnvironment("QUILLMENDER_SOAK_SESSIONS", 100);
    const int warmUp = std::min(100, sessions / 2);
    start();
    startApplications();
    for (int i = 0; i < warmUp && !HasFailure(); ++i)
        runSession();
    const ResourceUse early = use();
    for (int i = warmUp; i < sessions && !HasFailure(); ++i)
        runSession();
    const ResourceUse late = use();
    std::cout << "after " << warmUp << " sessions: " << early << "\nafter " << sessions
              << " sessions: " << late << "\n";

    // A leak of one thing in a session would show as many as there were sessions.
    const int leak = std::max(4, (sessions - warmUp) / 4);
    // A sanitizer's heap is another; leaks of the smallest kind are what it tells of itself.
    const int leakKiB = fromEnvironment("QUILLMENDER_SOAK_LEAK_KIB", 3072);
    EXPECT_LT(late.memoryKiB - early.memoryKiB, leakKiB);
    EXPECT_LT(late.descriptors - early.descriptors, leak);
    EXPECT_LT(late.threads - early.threads, leak);
    EXPECT_GT(early.serverResources, 0);
    EXPECT_LT(late.serverResources - early.serverResources, leak);
    EXPECT_EQ(late.matchRules.has_value(), early.matchRules.has_value());
    EXPECT_LT(late.matchRules.value_or(0) - early.matchRules.value_or(0), leak);

    program().activateAction(QStringLiteral("quit"));
    waitUntil([&] { return !program().process().isRunning(); }, QStringLiteral("it has ended"));
    EXPECT_EQ(program().process().exitCode(), 0);
}

} // namespace
} // namespace quillmender
