#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/TextKeys.h"

#include <QFile>

namespace quillmender {
namespace {

using harness::Desktop;
using harness::TestApplication;
using harness::waitUntil;

const QString wrong = QStringLiteral("recieve");
const QString right = QStringLiteral("receive \u00e7a \U0001F389");
const QString letter = QStringLiteral("Gr\u00fc\u00dfe \U0001F600: you recieve it.");
const QString mended = QStringLiteral("Gr\u00fc\u00dfe \U0001F600: you %1 it.").arg(right);

/// Applications whose text the accessibility bus does not know: it is copied out and pasted in.
class CopySessionTest : public SessionFixture {
  protected:
    /// Starts an application before accessibility is switched on, and the program after that.
    template <typename Start> TestApplication startOffTheBus(const Start &startApplication) {
        Desktop::Options options;
        options.accessibilityEnabled = false;
        startDesktop(options);
        TestApplication application = startApplication(desktop());
        desktop().accessibilityBus()->setEnabled(true);
        startProgram();
        return application;
    }

    void runSession(const TestApplication &application) {
        EXPECT_FALSE(desktop().accessible().application(application.pid()).has_value());
        runCopySession(application);
    }

    void runCopySession(const TestApplication &application) {
        answerWith(right);
        pressHotKey();
        waitForPanel(wrong);
        EXPECT_TRUE(panelShows(QStringLiteral("Using only the highlighted text.")));
        expectClipboardUntouched();
        click(QStringLiteral("Fix My Grammar"));
        EXPECT_TRUE(promptOf(waitForRequest()).endsWith(wrong));
        waitUntilPanelIsGone();
        EXPECT_EQ(desktop().windows().active(), application.window());
        expectClipboardUntouched();
    }
};

TEST_F(CopySessionTest, GtkEditor) {
    start();
    QFile file(desktop().folders().home() + QStringLiteral("/letter.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(letter.toUtf8());
    file.close();
    const TestApplication mousepad(desktop(), QStringLiteral("env"),
                                   {QStringLiteral("NO_AT_BRIDGE=1"), QStringLiteral("mousepad"),
                                    QStringLiteral("--disable-server"), file.fileName()});
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    runSession(mousepad);
    expectTextByCopying(mended);
}

TEST_F(CopySessionTest, QtEditor) {
    start();
    const auto editor =
        TestApplication::sampleEditorOffTheBus(desktop(), QStringLiteral("plain"), letter);
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    runSession(editor);
    expectTextByCopying(mended);
}

TEST_F(CopySessionTest, FieldThatCarriesOutCommandsWithTheNextKey) {
    start();
    const TestApplication field =
        TestApplication::sampleEditor(desktop(), QStringLiteral("commands"), wrong);
    waitUntil([&] { return desktop().accessible().application(field.pid()).has_value(); },
              QStringLiteral("the application shows its keys to the accessibility bus"));
    runCopySession(field);
    EXPECT_EQ(field.title(), right);
}

TEST_F(CopySessionTest, ChromiumTextarea) {
    const TestApplication chromium = startOffTheBus([](Desktop &desktop) {
        return TestApplication::chromium(
            desktop, QStringLiteral("<textarea autofocus rows=5 cols=60 "
                                    "oninput=\"document.title=value\" "
                                    "onfocus=\"document.title='ready'\">%1</textarea>")
                         .arg(letter));
    });
    waitUntil([&] { return chromium.title().startsWith(QStringLiteral("ready")); },
              QStringLiteral("the text area has the focus"));
    selectByKeyboard(input(), letter, wrong);
    waitUntilSelected(wrong);
    runSession(chromium);
    waitUntil([&] { return chromium.title().startsWith(mended); },
              QStringLiteral("the page has the new text"));
}

TEST_F(CopySessionTest, XtermGetsTheAnswerAtItsPrompt) {
    start();
    const QString typed = desktop().folders().home() + QStringLiteral("/typed.txt");
    const TestApplication xterm(desktop(), QStringLiteral("xterm"),
                                {QStringLiteral("-fa"), QStringLiteral("Monospace"),
                                 QStringLiteral("-fs"), QStringLiteral("14"), QStringLiteral("-e"),
                                 QStringLiteral("sh"), QStringLiteral("-c"),
                                 QStringLiteral("echo recieve it; exec cat > %1").arg(typed)});
    constexpr QPoint insideFirstWord(20, 12);
    harness::ClipboardProbe primary(desktop().display(), "PRIMARY");
    waitUntil(
        [&] {
            // The shell may not have written its line when the first click comes.
            input().doubleClick(xterm.geometry().topLeft() + insideFirstWord);
            return harness::becomesTrue(
                [&] { return primary.owner() != XCB_WINDOW_NONE && primary.text() == wrong; },
                std::chrono::seconds(1));
        },
        QStringLiteral("the word in the terminal is selected"));
    const QString selected = primary.text();

    runSession(xterm);
    EXPECT_EQ(primary.text(), selected);
    input().chord({XK_Return});
    const QByteArray line = right.toUtf8() + '\n';
    QFile file(typed);
    waitUntil([&] { return file.size() >= line.size(); },
              QStringLiteral("the terminal has got its line"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), line);
}

} // namespace
} // namespace quillmender
