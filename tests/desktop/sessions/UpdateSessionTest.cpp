#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/StatusMenuReader.h"

#include <QFile>

namespace quillmender {
namespace {

using harness::Accessible;
using harness::AccessibleState;
using harness::waitUntil;

const QString alertTitle = QStringLiteral("Quillmender 1.4.2 is available");
const QString informativeText = QStringLiteral(
    "A newer version of Quillmender has been published. Do you want to download it now?");
const QString download = QStringLiteral("https://127.0.0.1:9/quillmender-1.4.2");
const QStringList plainMenu{QStringLiteral("Transform"), QStringLiteral("Settings"),
                            QStringLiteral("About"), QStringLiteral("Quit Quillmender")};
const QStringList menuWithUpdate{QStringLiteral("Transform"), QStringLiteral("Settings"),
                                 QStringLiteral("Download Quillmender 1.4.2"),
                                 QStringLiteral("About"), QStringLiteral("Quit Quillmender")};

/// A program whose release host is on the loopback.
class UpdateSessionTest : public SessionFixture {
  protected:
    void SetUp() override {
        SessionFixture::SetUp();
        startDesktop();
        menu_.emplace(desktop().sessionBus().connection());
    }

    void publish(const QByteArray &version) {
        provider().setAnswer(test::ScriptedAnswer::http(200, R"({"version":")" + version +
                                                                 R"(","download_url":")" +
                                                                 download.toUtf8() + R"("})"));
    }

    /// In the browser's place stands a program that notes what it is to open.
    void launch() {
        const QString folder = desktop().folders().home() + QStringLiteral("/bin");
        QDir().mkpath(folder);
        QFile browser(folder + QStringLiteral("/xdg-open"));
        ASSERT_TRUE(browser.open(QIODevice::WriteOnly));
        browser.write("#!/bin/sh\necho \"$1\" >> \"$HOME/opened\"\n");
        browser.setPermissions(browser.permissions() | QFile::ExeOwner);
        harness::ProductProcess::Setup setup;
        setup.program = QStringLiteral(QUILLMENDER_UPDATING_PROGRAM);
        setup.arguments = {provider().baseUrl() + QStringLiteral("/latest.json")};
        setup.environment[QStringLiteral("PATH")] =
            folder + u':' + desktop().environment().value(QStringLiteral("PATH"));
        startProgram(setup);
        waitUntil([&] { return !menu().entries().isEmpty(); },
                  QStringLiteral("the status item has its menu"));
    }

    QString opened() {
        QFile file(desktop().folders().home() + QStringLiteral("/opened"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll().trimmed())
                                              : QString();
    }

    void waitForAlert() {
        waitUntil(
            [&] {
                const xcb_window_t alert = desktop().windows().titled(alertTitle);
                return alert != XCB_WINDOW_NONE && desktop().windows().active() == alert;
            },
            QStringLiteral("the alert is shown and active"));
    }
    void waitUntilAlertIsGone() {
        waitUntil([&] { return desktop().windows().titled(alertTitle) == XCB_WINDOW_NONE; },
                  QStringLiteral("the alert is gone"));
    }

    void openAbout() {
        menu().choose(QStringLiteral("About"));
        waitUntil(
            [&] {
                return desktop().windows().titled(QStringLiteral("About Quillmender")) !=
                       XCB_WINDOW_NONE;
            },
            QStringLiteral("About is shown"));
    }

    const StatusMenuReader &menu() const { return *menu_; }

  private:
    std::optional<StatusMenuReader> menu_;
};

TEST_F(UpdateSessionTest, LaterKeepsTheMenuItemWhichOpensTheDownload) {
    publish("1.4.2");
    launch();
    waitForAlert();
    EXPECT_EQ(waitForRequest().target, "/latest.json");
    EXPECT_EQ(menu().visibleTitles(), menuWithUpdate);
    const auto information = desktop().accessible().find(
        program().pid(), [](const Accessible &each) { return each.name() == informativeText; });
    EXPECT_TRUE(information && information->hasState(AccessibleState::showing));

    click(QStringLiteral("Later"));
    waitUntilAlertIsGone();
    EXPECT_TRUE(program().process().isRunning());
    EXPECT_EQ(opened(), QString());
    EXPECT_EQ(menu().visibleTitles(), menuWithUpdate);

    menu().choose(QStringLiteral("Download Quillmender 1.4.2"));
    waitUntil([&] { return opened() == download; }, QStringLiteral("the download is opened"));
}

TEST_F(UpdateSessionTest, ReturnDownloads) {
    publish("1.4.2");
    launch();
    waitForAlert();
    input().chord({XK_Return});
    waitUntilAlertIsGone();
    waitUntil([&] { return opened() == download; }, QStringLiteral("the download is opened"));
    EXPECT_EQ(menu().visibleTitles(), menuWithUpdate);
}

TEST_F(UpdateSessionTest, TheProgramWorksWhileTheAlertWaits) {
    publish("1.4.2");
    launch();
    waitForAlert();
    pressHotKey();
    waitForPanel();
    openAbout();
    EXPECT_NE(desktop().windows().titled(alertTitle), XCB_WINDOW_NONE);
    menu().choose(QStringLiteral("Quit Quillmender"));
    waitUntil([&] { return !program().process().isRunning(); }, QStringLiteral("it has ended"));
}

TEST_F(UpdateSessionTest, WithoutANewerReleaseTheMenuIsPlain) {
    publish("1.0");
    launch();
    waitForRequest();
    // By then the answer has been dealt with.
    openAbout();
    EXPECT_EQ(desktop().windows().titled(alertTitle), XCB_WINDOW_NONE);
    EXPECT_EQ(menu().visibleTitles(), plainMenu);
}

} // namespace
} // namespace quillmender
