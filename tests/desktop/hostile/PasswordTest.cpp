#include "desktop/hostile/HostileFixture.h"

#include <QDir>
#include <QFile>

namespace quillmender {
namespace {

using harness::TestApplication;
using harness::waitUntil;

const QString password = QStringLiteral("correct-horse-battery");

/// A field with a password that is selected, and the hot key.
class PasswordTest : public HostileFixture {
  protected:
    void start() override {
        startDesktop();
        startProgram({{QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("quillmender.*=true")}});
        allowLog();
        watchResponsiveness();
    }

    void selectAll() { input().chord({XK_Control_L, XK_a}); }

    /// Nothing of it anywhere.
    void expectSecretKept() {
        const harness::ClipboardContents primary = readPrimary();
        pressHotKey();
        waitForPanel(nothingSelected);
        EXPECT_FALSE(panelShows(password));
        EXPECT_EQ(readPrimary().owner, primary.owner);
        expectClipboardNeverTaken();
        EXPECT_TRUE(provider().requests().empty());
        EXPECT_FALSE(program().log().contains(password.toUtf8()));
    }

    harness::ClipboardContents readPrimary() {
        return harness::ClipboardProbe(desktop().display(), "PRIMARY").read();
    }
};

TEST_F(PasswordTest, OfAnEntryField) {
    start();
    const TestApplication field =
        TestApplication::sampleEditor(desktop(), QStringLiteral("password"), password);
    desktop().accessible().waitForFocusedText(field.pid());
    selectAll();
    expectSecretKept();
}

TEST_F(PasswordTest, OfABrowser) {
    start();
    const TestApplication field = TestApplication::chromium(
        desktop(), QStringLiteral("<input type=password value=%1 autofocus "
                                  "onfocus=\"document.title='ready'\">")
                       .arg(password));
    waitUntil([&] { return field.title().startsWith(QStringLiteral("ready")); },
              QStringLiteral("the field has the focus"));
    desktop().accessible().waitForFocusedText(field.pid());
    selectAll();
    // The browser itself puts it there, for everybody to read.
    waitUntil([&] { return readPrimary().owner != XCB_WINDOW_NONE; },
              QStringLiteral("all of it is selected"));
    expectSecretKept();
}

} // namespace
} // namespace quillmender
