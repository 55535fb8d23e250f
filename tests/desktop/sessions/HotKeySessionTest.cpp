#include "desktop/sessions/KeyRecorder.h"
#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

#include <QFile>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::TestApplication;
using harness::waitUntil;
using harness::XcbPointer;

const QString wrong = QStringLiteral("recieve");
const QString letter = QStringLiteral("Hello, you recieve it.");

class HotKeySessionTest : public SessionFixture {
  protected:
    /// What the server thinks of the modifier keys, the locks included.
    quint16 modifiersDown() {
        xcb_connection_t *connection = desktop().connection().get();
        const auto cookie = xcb_query_pointer(connection, desktop().connection().root());
        const XcbPointer<xcb_query_pointer_reply_t> reply(
            xcb_query_pointer_reply(connection, cookie, nullptr));
        return reply ? reply->mask & 0xff : 0xff;
    }

    QString writeLetter() {
        QFile file(desktop().folders().home() + QStringLiteral("/letter.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(letter.toUtf8());
        return file.fileName();
    }
};

TEST_F(HotKeySessionTest, HeldDuringTheChordsWithLocksOn) {
    start();
    const TestApplication mousepad(desktop(), QStringLiteral("env"),
                                   {QStringLiteral("NO_AT_BRIDGE=1"), QStringLiteral("mousepad"),
                                    QStringLiteral("--disable-server"), writeLetter()});
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    input().chord({XK_Caps_Lock});
    input().chord({XK_Num_Lock});
    const quint16 locks = modifiersDown();
    ASSERT_EQ(locks, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
    answerWith(QStringLiteral("receive"));

    input().press(XK_Control_L);
    input().press(XK_Alt_L);
    input().press(XK_space);
    waitForPanel(wrong);
    EXPECT_EQ(modifiersDown(), locks);
    EXPECT_FALSE(panelShows(QStringLiteral("c")));
    // The hand leaves the keyboard now.
    input().release(XK_space);
    input().release(XK_Alt_L);
    input().release(XK_Control_L);
    EXPECT_EQ(modifiersDown(), locks);

    click(QStringLiteral("Fix My Grammar"));
    EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
    waitUntilPanelIsGone();
    EXPECT_EQ(modifiersDown(), locks);
    expectClipboardUntouched();
    input().chord({XK_Caps_Lock});
    input().chord({XK_Num_Lock});
    EXPECT_EQ(modifiersDown(), 0);
    expectTextByCopying(QStringLiteral("Hello, you receive it."));
}

TEST_F(HotKeySessionTest, HeldKeysNeverReachAnApplicationAsTheChord) {
    start();
    KeyRecorder application(desktop());
    input().press(XK_Control_L);
    input().press(XK_Alt_L);
    input().press(XK_space);
    waitForPanel();
    EXPECT_EQ(application.presses(), QStringList{QStringLiteral("Control+c")});
    input().release(XK_space);
    input().release(XK_Alt_L);
    input().release(XK_Control_L);
    EXPECT_EQ(modifiersDown(), 0);
    expectClipboardUntouched();
}

TEST_F(HotKeySessionTest, PressedWhileARequestRuns) {
    start();
    auto editor = TestApplication::mousepad(desktop(), letter);
    const Accessible text = editor.focusedText();
    waitUntil([&] { return text.text() == letter; }, QStringLiteral("the letter is open"));
    selectByKeyboard(input(), letter, wrong);
    waitUntil([&] { return text.selectedText() == wrong; }, QStringLiteral("it is selected"));
    answerLater(QStringLiteral("receive"));
    pressHotKey();
    waitForPanel(wrong);
    click(QStringLiteral("Fix My Grammar"));
    waitForRequest();

    editor.activate();
    selectByKeyboard(input(), letter, QStringLiteral("Hello"));
    waitUntil([&] { return text.selectedText() == QStringLiteral("Hello"); },
              QStringLiteral("something else is selected"));
    pressHotKey();
    waitForPanel(QStringLiteral("Hello"));
    EXPECT_FALSE(panelShows(wrong));

    provider().release();
    waitUntilPanelIsGone();
    EXPECT_EQ(text.text(), QStringLiteral("Hello, you receive it."));
    EXPECT_EQ(provider().requests().size(), 1);
    expectClipboardNeverTaken();
}

} // namespace
} // namespace quillmender
