#include "WholeSessionTest.h"

#include "SessionCalls.h"

namespace quillmender {

WholeSessionTest::WholeSessionTest() {
    doubles::CallLog::shared().onCall = [log = log](const std::string &call) {
        log->append(QString::fromStdString(call));
    };
    accessibility.focused = editor->ref();
    applications.frontmost = editorProcess;
    pasteboard.items = usersOwn;
    keychain.items = {{"genp", "com.quillmender.openAI", "api-key", "key", "ck"}};

    platform = makePlatform();
    platform->clock = std::make_unique<fakes::FakeClock>(log);

    WindowFactory windows;
    windows.pickerPanel = [this](ActionPickerModel &) {
        return std::make_unique<RecordedPanel>(log);
    };
    windows.showSettings = [] {};
    windows.showAbout = [] {};
    windows.terminate = [] {};
    windows.showAlert = [](const Alert &, const std::function<void(int)> &) {};
    coordinator = std::make_unique<AppCoordinator>(
        *platform, LLMClient(transport), UpdateChecker(releases),
        ReleaseSource{QStringLiteral("1.0.0"),
                      QUrl(QStringLiteral("https://releases.test/latest.json"))},
        std::move(windows));
}

WholeSessionTest::~WholeSessionTest() {
    releases.fail(QStringLiteral("the end"));
    QCoreApplication::sendPostedEvents();
    coordinator.reset();
    platform.reset();
    doubles::CallLog::shared().onCall = nullptr;
    CFRelease(editor->ref());
}

void WholeSessionTest::select(const std::u16string &text, CFIndex location, CFIndex length) {
    editor->give("AXValue", doubles::makeString(text));
    editor->give("AXSelectedText", doubles::makeString(text.substr(static_cast<size_t>(location),
                                                                   static_cast<size_t>(length))));
    editor->give("AXSelectedTextRange", doubles::makeRange(location, length));
}

void WholeSessionTest::copyYields(const std::string &text) {
    events.onPost = [this, text](CGKeyCode keyCode, bool keyDown) {
        if (!keyDown)
            return;
        if (keyCode == kVK_ANSI_V)
            pasted.push_back(pasteboard.text().value_or("nothing"));
        else
            pasteboard.copyFromElsewhere(
                {{{"public.utf8-plain-text", text}, {"public.html", "<b>"}}});
    };
}

void WholeSessionTest::pressHotKey() {
    constexpr UInt32 space = 49;
    constexpr UInt32 controlAndOption = 0x1800;
    EXPECT_EQ(dispatcher.press(space, controlAndOption), noErr);
}

QStringList WholeSessionTest::capture(const std::function<void()> &begin) {
    taken();
    begin();
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return log->contains(QStringLiteral("panel makeKeyAndOrderFront")); }));
    return taken();
}

QStringList WholeSessionTest::capture() {
    return capture([this] { pressHotKey(); });
}

QStringList WholeSessionTest::run(const QByteArray &answer) {
    coordinator->run(coordinator->actions().first());
    transport.answerText(answer);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !coordinator->isWorking(); }));
    return taken();
}

QStringList WholeSessionTest::taken() {
    QStringList calls = *log;
    log->clear();
    return calls;
}

} // namespace quillmender
