#include "desktop/presence/PresenceFixture.h"
#include "desktop/presence/Trays.h"

namespace quillmender {
namespace {

using harness::waitUntil;

const QString settingsTitle = QStringLiteral("Quillmender Settings");
constexpr int rightButton = 3;

/// The program in trays that people have.
class TrayTest : public PresenceFixture {
  protected:
    /// With the mouse; the menu has four lines of the same height.
    void pickSettings() {
        const QRect menu = waitForMenu();
        keepPicture();
        const QPoint place(menu.center().x(), menu.y() + menu.height() * 3 / 8);
        const QImage before = desktop().screenshot().copy(menu);
        int step = 1;
        // A hand moves more than once, and a menu that has only just opened wants that.
        const auto isChosen = [&] {
            desktop().input().movePointer(place + QPoint(step = -step, 0));
            return desktop().screenshot().copy(menu) != before;
        };
        waitUntil(isChosen, QStringLiteral("a line of the menu is chosen"));
        desktop().input().click(place);
        waitForWindow(settingsTitle);
        EXPECT_EQ(this->menu(), std::nullopt);
    }

    /// For whoever wants to see it; see $QUILLMENDER_PICTURES.
    void keepPicture() {
        const QString folder = qEnvironmentVariable("QUILLMENDER_PICTURES");
        const auto *test = testing::UnitTest::GetInstance()->current_test_info();
        if (!folder.isEmpty())
            desktop().screenshot().save(folder + u'/' + QString::fromUtf8(test->name()) +
                                        QStringLiteral(".png"));
    }
};

TEST_F(TrayTest, WindowTrayShowsTheIconAndAClickOpensTheMenu) {
    const WindowTray tray(desktop(), WindowTray::Shade::light);
    startProgram();
    desktop().input().click(waitForIcon());
    pickSettings();
}

TEST_F(TrayTest, WindowTrayMenuOpensByTheOtherButtonToo) {
    const WindowTray tray(desktop(), WindowTray::Shade::dark);
    startProgram();
    desktop().input().click(waitForIcon(), rightButton);
    pickSettings();
}

TEST_F(TrayTest, WindowTrayThatComesLaterAndAgainHasTheIcon) {
    startProgram();
    std::optional<WindowTray> tray;
    tray.emplace(desktop(), WindowTray::Shade::light);
    waitForIcon();
    tray.reset();
    waitUntil([this] { return !icon(); }, QStringLiteral("the icon is gone"));
    tray.emplace(desktop(), WindowTray::Shade::light);
    waitForIcon();
    EXPECT_EQ(desktop().windows().ofProcess(program().pid()), XCB_WINDOW_NONE);
}

TEST_F(TrayTest, BusPanelShowsTheIconAndAClickOpensTheMenu) {
    const BusPanel panel(desktop());
    startProgram();
    desktop().input().click(waitForIcon());
    pickSettings();
}

TEST_F(TrayTest, BusPanelShowsTheMenuItself) {
    const BusPanel panel(desktop());
    startProgram();
    desktop().input().click(waitForIcon(), rightButton);
    pickSettings();
}

} // namespace
} // namespace quillmender
