#include "desktop/hostile/HostileFixture.h"

#include <QDir>
#include <QFile>

namespace quillmender {
namespace {

using harness::ClipboardOwner;
using harness::TestApplication;
using harness::waitUntil;

const QString password = QStringLiteral("correct-horse-battery");

/// A field with a password that is selected, and the hot key.
class PasswordTest : public HostileFixture {
  protected:
    void start() {
        startDesktop();
        startProgram({{QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("quillmender.*=true")}});
        allowLog();
    }

    /// Nothing of it anywhere.
    void expectSecretKept() {
        input().chord({XK_Control_L, XK_a});
        pressHotKey();
        waitForPanel(nothingSelected);
        EXPECT_FALSE(panelShows(password));
        expectClipboardNeverTaken();
        harness::ClipboardProbe primary(desktop().display(), "PRIMARY");
        if (primary.owner() != XCB_WINDOW_NONE && primary.owner() == ownerOfProgram())
            EXPECT_NE(primary.text(), password);
        click(QStringLiteral("Fix My Grammar"));
        waitForPanel(nothingSelected);
        EXPECT_TRUE(provider().requests().empty());
        EXPECT_FALSE(program().log().contains(password.toUtf8()));
    }

    xcb_window_t ownerOfProgram() { return desktop().windows().ofProcess(program().pid()); }
};

TEST_F(PasswordTest, OfAnEntryField) {
    start();
    const TestApplication field =
        TestApplication::sampleEditor(desktop(), QStringLiteral("password"), password);
    desktop().accessible().waitForFocusedText(field.pid());
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
    expectSecretKept();
}

} // namespace
} // namespace quillmender
