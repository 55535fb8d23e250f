#include "SelectionTest.h"
#include "app/AppCoordinator.h"
#include "doubles/carbon/EventDispatcher.h"
#include "doubles/cf/Preferences.h"
#include "doubles/security/Keychain.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakePresence.h"
#include "fakes/FakeTransport.h"
#include "platform/macos/MacHotKeys.h"
#include "platform/macos/MacSecretItems.h"
#include "platform/macos/MacUserDefaults.h"
#include "platform/none/NoneInstance.h"

#include <QTest>

namespace quillmender {
namespace {

class QuietPanel : public PickerPanel {
  public:
    explicit QuietPanel(bool &isVisible) : isVisible_(isVisible) {}
    void centre(std::optional<DesktopRect>) override {}
    void makeKeyAndOrderFront() override { isVisible_ = true; }
    void orderOut() override { isVisible_ = false; }

  private:
    bool &isVisible_;
};

/// The whole program but its windows and AppKit, from the press of the hot key on.
class SessionTest : public SelectionTest {
  protected:
    SessionTest() {
        keychain.items = {{"genp", "com.quillmender.openAI", "api-key", "secret key", "ck"}};
        platform.clock = std::make_unique<fakes::FakeClock>(log);
        platform.instance = std::make_unique<NoneInstance>();
        platform.userDefaults = std::make_unique<MacUserDefaults>();
        platform.secretItems = std::make_unique<MacSecretItems>();
        platform.loginItem = std::make_unique<fakes::FakeLoginItem>(log);
        platform.workspace = std::make_unique<fakes::FakeWorkspace>(log);
        platform.accessibility = std::make_unique<MacAccessibility>();
        auto general = std::make_unique<fakes::FakePasteboard>(log);
        generalPasteboard = general.get();
        generalPasteboard->contents = pasteboard.contents;
        platform.pasteboard = std::move(general);
        platform.keyEvents = std::make_unique<MacKeyEvents>();
        platform.hotKeys = std::make_unique<MacHotKeys>();
        platform.presence = std::make_unique<fakes::FakePresence>(log);

        WindowFactory windows;
        windows.pickerPanel = [this](ActionPickerModel &) {
            return std::make_unique<QuietPanel>(isPanelVisible);
        };
        windows.showSettings = [] {};
        windows.showAbout = [] {};
        windows.terminate = [] {};
        windows.showAlert = [](const Alert &, const std::function<void(int)> &) {};
        coordinator = std::make_unique<AppCoordinator>(
            platform, LLMClient(transport), UpdateChecker(releases),
            ReleaseSource{QStringLiteral("1.0.0"),
                          QUrl(QStringLiteral("https://releases.test/latest.json"))},
            std::move(windows));
        coordinator->start();
        releases.fail(QStringLiteral("offline"));
        QCoreApplication::sendPostedEvents();
        log->clear();
    }

    void pressHotKey() {
        EXPECT_EQ(dispatcher.press(49, 0x1800), noErr);
        isPanelVisible = false;
        EXPECT_TRUE(QTest::qWaitFor([this] { return isPanelVisible; })) << "no panel came";
    }

    void fixGrammar() {
        coordinator->run(PromptAction::builtIn(
            starterActions().at(static_cast<qsizetype>(TextAction::fixGrammar))));
        log->clear();
    }

    void answer(const QByteArray &text) {
        transport.answerText(text);
        EXPECT_TRUE(QTest::qWaitFor([this] { return !coordinator->isWorking(); }));
    }

    doubles::EventDispatcher dispatcher;
    doubles::Keychain keychain;
    doubles::Preferences preferences;
    fakes::FakeTransport transport{log};
    fakes::FakeTransport releases{log};
    Platform platform;
    fakes::FakePasteboard *generalPasteboard = nullptr;
    bool isPanelVisible = false;
    std::unique_ptr<AppCoordinator> coordinator;
};

TEST_F(SessionTest, replacesTheSelectionThroughAccessibility) {
    setText(u"Hello me goes there", CFRangeMake(6, 7));
    pressHotKey();
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("me goes"));
    fixGrammar();
    ASSERT_EQ(transport.requests.size(), 1);
    EXPECT_TRUE(transport.requests.first().body.contains("me goes"));
    answer("I go");
    EXPECT_EQ(
        *log,
        QStringList({
            QStringLiteral("AXUIElementCopyAttributeValue editor AXValue"),
            QStringLiteral("AXUIElementSetAttributeValue editor AXValue Hello I go there"),
            QStringLiteral("AXUIElementSetAttributeValue editor AXSelectedTextRange 6+4 of type 4"),
        }));
    EXPECT_EQ(value(), "Hello I go there");
    EXPECT_FALSE(isPanelVisible);
    EXPECT_EQ(coordinator->currentSession(), nullptr);
}

TEST_F(SessionTest, copiesAndPastesWithoutAccessibleText) {
    server.focused = nullptr;
    const QList<PasteboardItem> own = generalPasteboard->contents;
    std::optional<QString> pasted;
    events.onPost = [&](CGKeyCode keyCode, bool keyDown) {
        if (keyCode == keycode::c && keyDown)
            generalPasteboard->copyFromElsewhere(QStringLiteral("me goes"));
        if (keyCode == keycode::v && keyDown)
            pasted = generalPasteboard->text;
    };
    pressHotKey();
    EXPECT_EQ(generalPasteboard->contents, own);
    fixGrammar();
    answer("I go");
    EXPECT_EQ(pasted, QStringLiteral("I go"));
    EXPECT_EQ(generalPasteboard->contents, own);
    EXPECT_FALSE(isPanelVisible);
}

TEST_F(SessionTest, withoutTrustNothingIsRead) {
    server.trusted = false;
    calls();
    log->clear();
    pressHotKey();
    EXPECT_THAT(calls(), testing::ElementsAre("AXIsProcessTrusted"));
    EXPECT_TRUE(coordinator->errorMessage()->contains(QStringLiteral("Accessibility access")));

    server.grantsOnPrompt = true;
    setText(u"word", CFRangeMake(0, 4));
    coordinator->requestAccessibilityAccess();
    EXPECT_TRUE(QTest::qWaitFor([this] { return coordinator->currentSession() != nullptr; }));
    EXPECT_EQ(coordinator->selectedTextPreview(), QStringLiteral("word"));
}

TEST_F(SessionTest, withoutAKeyNothingIsSent) {
    keychain.items.clear();
    setText(u"word", CFRangeMake(0, 4));
    pressHotKey();
    fixGrammar();
    EXPECT_EQ(coordinator->errorMessage(),
              QStringLiteral("Add your OpenAI API key in Settings before using Quillmender."));
    EXPECT_TRUE(transport.requests.isEmpty());
}

TEST_F(SessionTest, aFailedWriteBackKeepsTheSession) {
    setText(u"word", CFRangeMake(0, 4));
    pressHotKey();
    editor->failWriting("AXValue", kAXErrorFailure);
    events.createsSources = false;
    fixGrammar();
    answer("new");
    EXPECT_EQ(
        coordinator->errorMessage(),
        QStringLiteral("Quillmender could not replace the selected text back in the source app."));
    EXPECT_TRUE(isPanelVisible);
    EXPECT_NE(coordinator->currentSession(), nullptr);
    EXPECT_EQ(value(), "word");
}

TEST_F(SessionTest, theHotKeyGoesWithTheCoordinator) {
    coordinator.reset();
    EXPECT_TRUE(dispatcher.handlers.empty());
    EXPECT_TRUE(dispatcher.hotKeys.empty());
}

} // namespace
} // namespace quillmender
