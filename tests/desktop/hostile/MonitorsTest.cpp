#include "desktop/hostile/HostileFixture.h"

namespace quillmender {
namespace {

using harness::waitUntil;

/// Two monitors side by side on one screen.
class MonitorsTest : public HostileFixture {
  protected:
    void start() override {
        harness::Desktop::Options options;
        options.screen = QSize(2000, 900);
        startDesktop(options);
        defineMonitor(QStringLiteral("left"), QStringLiteral("1000/250x900/225+0+0"),
                      QStringLiteral("screen"));
        defineMonitor(QStringLiteral("right"), QStringLiteral("1000/250x900/225+1000+0"),
                      QStringLiteral("none"));
        startProgram();
        watchResponsiveness();
    }

    void expectPanelIn(const QRect &monitor) {
        const QRect panel = desktop().windows().geometry(waitForPanel(wrong));
        EXPECT_TRUE(monitor.contains(panel.center()))
            << panel.x() << ',' << panel.y() << ' ' << panel.width() << 'x' << panel.height();
        EXPECT_NEAR(panel.center().x(), monitor.center().x(), 40);
    }

  private:
    void defineMonitor(const QString &name, const QString &geometry, const QString &output) {
        harness::ChildProcess xrandr(desktop().command(
            QStringLiteral("xrandr"), {QStringLiteral("--setmonitor"), name, geometry, output}));
        waitUntil([&] { return !xrandr.isRunning(); }, QStringLiteral("xrandr has ended"));
        ASSERT_EQ(xrandr.exitCode(), 0) << xrandr.log().toStdString();
    }
};

TEST_F(MonitorsTest, PanelStandsOnTheOneWithTheText) {
    start();
    openLetter(Route::accessibility);
    const QRect left(0, 0, 1000, 900);
    const QRect rightOne(1000, 0, 1000, 900);
    for (const QRect &monitor : {rightOne, left}) {
        desktop().windows().move(source().window(), monitor.topLeft() + QPoint(100, 100));
        source().activate();
        pressHotKey();
        expectPanelIn(monitor);
        click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
    }
}

} // namespace
} // namespace quillmender
