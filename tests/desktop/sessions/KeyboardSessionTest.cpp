#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/StatusMenuReader.h"
#include "desktop/sessions/TextKeys.h"
#include "support/StickyKeys.h"

#include <QFile>
#include <QProcess>

#include <string>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");

struct Layout {
    const char *name;
    QStringList arguments; ///< of setxkbmap
};

std::ostream &operator<<(std::ostream &stream, const Layout &layout) {
    return stream << layout.name;
}

/// One that is captured by the copy chord and answered by the paste chord.
TestApplication editorOffTheBus(harness::Desktop &desktop) {
    QFile file(desktop.folders().home() + QStringLiteral("/letter.txt"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(letter.toUtf8());
    file.close();
    return {desktop,
            QStringLiteral("env"),
            {QStringLiteral("NO_AT_BRIDGE=1"), QStringLiteral("mousepad"),
             QStringLiteral("--disable-server"), file.fileName()}};
}

/// Whole sessions through the copy and the paste chord on other people's keyboards.
class LayoutSessionTest : public SessionFixture, public testing::WithParamInterface<Layout> {
  protected:
    void setLayout(const QStringList &arguments) {
        const harness::Command command = desktop().command(QStringLiteral("setxkbmap"), arguments);
        QProcess process;
        process.setProcessEnvironment(command.environment);
        process.start(command.program, command.arguments);
        ASSERT_TRUE(process.waitForFinished(20'000));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }

    void runSession() {
        selectByKeyboard(input(), letter, wrong);
        waitUntilSelected(wrong);
        answerWith(QStringLiteral("receive"));
        pressHotKey();
        waitForPanel(wrong);
        click(QStringLiteral("Fix My Grammar"));
        EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
        waitUntilPanelIsGone();
        expectClipboardUntouched();
    }
};

TEST_P(LayoutSessionTest, CopiesAndPastes) {
    startDesktop();
    setLayout(GetParam().arguments);
    startProgram();
    const TestApplication editor = editorOffTheBus(desktop());
    runSession();
    // What stands there is asked for on a keyboard that the test can type on.
    setLayout({QStringLiteral("us"), QStringLiteral("-option"), QString()});
    expectTextByCopying(QStringLiteral("Hello, you receive it."));
}

TEST_P(LayoutSessionTest, FollowsAChangeWhileItRuns) {
    start();
    const TestApplication editor = editorOffTheBus(desktop());
    setLayout(GetParam().arguments);
    runSession();
    setLayout({QStringLiteral("us"), QStringLiteral("-option"), QString()});
    expectTextByCopying(QStringLiteral("Hello, you receive it."));
}

QStringList layout(const char *names, const QStringList &more = {}) {
    return QStringList{QStringLiteral("-layout"), QLatin1String(names)} + more;
}

INSTANTIATE_TEST_SUITE_P(
    Keyboards, LayoutSessionTest,
    testing::Values(
        Layout{"German", layout("de")}, Layout{"French", layout("fr")},
        Layout{"Russian", layout("ru,us")}, Layout{"Greek", layout("gr,us")},
        Layout{"Dvorak", layout("us", {QStringLiteral("-variant"), QStringLiteral("dvorak")})},
        Layout{"CapsIsEscape", layout("us", {QStringLiteral("-option"),
                                             QStringLiteral("caps:escape,ctrl:nocaps")})}),
    [](const auto &instance) { return std::string(instance.param.name); });

class HotKeyUseTest : public SessionFixture {};

TEST_F(HotKeyUseTest, PressedFiftyTimesCapturesWhatIsThere) {
    start();
    const auto editor = TestApplication::mousepad(desktop(), letter);
    const Accessible text = editor.focusedText();
    waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
    selectByKeyboard(input(), letter, wrong);
    waitUntil([&] { return text.selectedText() == wrong; }, QStringLiteral("it is selected"));
    constexpr int presses = 50;
    for (int i = 0; i < presses; ++i)
        pressHotKey();
    waitForPanel(wrong);
    answerWith(QStringLiteral("receive"));
    click(QStringLiteral("Fix My Grammar"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();
    EXPECT_EQ(text.text(), QStringLiteral("Hello, you receive it."));
    expectClipboardNeverTaken();
}

TEST_F(HotKeyUseTest, OneKeyAfterTheOtherWithStickyKeys) {
    start();
    const auto editor = editorOffTheBus(desktop());
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    answerWith(QStringLiteral("receive"));
    harness::XcbConnection keyboard(desktop().display());
    switchStickyKeysOn(keyboard.get());
    keyboard.roundTrip();
    for (const xcb_keysym_t key : {XK_Control_L, XK_Alt_L, XK_space})
        input().chord({key});
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();
    expectClipboardUntouched();
    EXPECT_TRUE(stickyKeysAreOn(keyboard.get()));
    expectTextByCopying(QStringLiteral("Hello, you receive it."));
}

TEST_F(HotKeyUseTest, AnOpenMenuKeepsTheKeyboardAndTheProgramWaits) {
    start();
    const auto editor = TestApplication::mousepad(desktop(), letter);
    const Accessible text = editor.focusedText();
    waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
    // Windows and menus that are on the screen, managed or not.
    const auto shown = [&] { return desktop().windows().viewable().size(); };
    const auto before = shown();
    input().chord({XK_Alt_L, XK_f});
    waitUntil([&] { return shown() > before; }, QStringLiteral("the menu is open"));
    pressHotKey();
    input().chord({XK_Escape});
    input().chord({XK_Escape});
    waitUntil([&] { return shown() == before; }, QStringLiteral("the menu is closed"));
    EXPECT_EQ(text.text(), letter);

    selectByKeyboard(input(), letter, wrong);
    waitUntil([&] { return text.selectedText() == wrong; }, QStringLiteral("it is selected"));
    pressHotKey();
    waitForPanel(wrong);
    expectClipboardNeverTaken();
}

TEST_F(HotKeyUseTest, TakenByAnotherProgramAndFreedLater) {
    startDesktop();
    std::optional<StatusMenuReader> menu(desktop().sessionBus().connection());
    std::optional<harness::XcbConnection> other(desktop().display());
    constexpr quint16 controlAndAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
    constexpr xcb_keycode_t space = 65;
    xcb_grab_key(other->get(), 1, other->root(), controlAndAlt, space, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    other->roundTrip();
    startProgram();
    const auto editor = TestApplication::mousepad(desktop(), letter);
    const Accessible text = editor.focusedText();
    waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
    selectByKeyboard(input(), letter, wrong);
    waitUntil([&] { return text.selectedText() == wrong; }, QStringLiteral("it is selected"));

    pressHotKey();
    EXPECT_EQ(program().log().trimmed(),
              "quillmender.x11: the hot key is taken by another program");
    menu->choose(QStringLiteral("Transform"));
    const xcb_window_t panel = waitForPanel(wrong);
    desktop().windows().close(panel);
    waitUntilPanelIsGone();
    allowLog();

    const auto isTaken = [&] {
        const auto cookie = xcb_grab_key_checked(other->get(), 1, other->root(), controlAndAlt,
                                                 space, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const harness::XcbPointer<xcb_generic_error_t> error(
            xcb_request_check(other->get(), cookie));
        xcb_ungrab_key(other->get(), space, other->root(), controlAndAlt);
        other->roundTrip();
        return error != nullptr;
    };
    EXPECT_FALSE(isTaken());
    // The user goes on in another window, and comes back.
    {
        // Of another program: mousepad asks what to do when a second one writes the same file.
        const auto second = TestApplication::sampleEditor(desktop(), QStringLiteral("plain"));
        bool isSecond = false;
        const auto isTakenAfterASwitch = [&] {
            isSecond = !isSecond;
            desktop().windows().activate(isSecond ? second.window() : editor.window());
            return isTaken();
        };
        waitUntil(isTakenAfterASwitch, QStringLiteral("the program has taken the freed key"));
    }
    desktop().windows().activate(editor.window());
    waitUntil([&] { return text.selectedText() == wrong; }, QStringLiteral("it is selected"));
    pressHotKey();
    waitForPanel(wrong);
}

} // namespace
} // namespace quillmender
