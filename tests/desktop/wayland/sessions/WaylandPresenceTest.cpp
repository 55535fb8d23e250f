#include "desktop/presence/StatusHost.h"
#include "desktop/services/FakePortal.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

namespace quillmender {
namespace {

using harness::CompositorKind;
using harness::waitUntil;

const QString settingsTitle = QStringLiteral("Quillmender Settings");
const QString aboutTitle = QStringLiteral("About Quillmender");
enum Line { transform, settings, update, about, quit };

/// The program's status item and colours, which come to it over the bus on every compositor.
class WaylandPresenceTest : public WaylandSessionFixture,
                            public testing::WithParamInterface<CompositorKind> {
  protected:
    CompositorKind kind() const override { return GetParam(); }

    harness::WindowId waitForWindow(const QString &title) {
        waitUntil(
            [&] {
                const harness::WindowId active = desktop().windows().active();
                return active != 0 && desktop().windows().title(active) == title;
            },
            title + QStringLiteral(" is in front"));
        return desktop().windows().active();
    }

    void close(harness::WindowId window) {
        desktop().windows().close(window);
        waitUntil([&] { return !desktop().windows().all().contains(window); },
                  QStringLiteral("the window is gone"));
    }
};

TEST_P(WaylandPresenceTest, EachLineOfTheStatusItemDoesWhatItSays) {
    startDesktop();
    const StatusHost host(desktop().sessionBus().address());
    startProgram();
    const QString item = host.waitForItem();
    EXPECT_EQ(host.menu(item).size(), 5);
    const auto pick = [&](Line line) { host.pick(item, line); };
    pick(settings);
    const auto settingsWindow = waitForWindow(settingsTitle);
    pick(about);
    close(waitForWindow(aboutTitle));
    close(settingsWindow);
    pick(transform);
    waitForPanel();
    EXPECT_TRUE(program().process().isRunning());
    pick(quit);
    waitUntil([&] { return host.items().isEmpty() && !program().process().isRunning(); },
              QStringLiteral("the program and its item are gone"));
    EXPECT_EQ(program().process().exitCode(), 0);
}

// A menu that the program opened would be a window like others, somewhere.
TEST_P(WaylandPresenceTest, AClickOnTheStatusItemOpensThePanelAndNoMenu) {
    startDesktop();
    const StatusHost host(desktop().sessionBus().address());
    startProgram();
    host.activate(host.waitForItem());
    waitForPanel();
    QStringList titles;
    for (const harness::WindowId window : desktop().windows().all())
        titles.append(desktop().windows().title(window));
    titles.removeAll(QStringLiteral("Quillmender"));
    EXPECT_EQ(titles.join(u'|').toStdString(), "");
}

TEST_P(WaylandPresenceTest, AWindowFollowsTheColoursOfTheDesktop) {
    startDesktop();
    const QString bus = desktop().sessionBus().address();
    const QString scheme = QStringLiteral("color-scheme");
    FakePortal portal({{scheme, 1U}}, bus);
    const StatusHost host(bus);
    startProgram();
    host.pick(host.waitForItem(), settings);
    waitForWindow(settingsTitle);
    const QPoint middle = QRect(QPoint(), desktop().compositor().screen()).center();
    const auto isDark = [&] { return desktop().screenshot().pixelColor(middle).lightness() < 128; };
    waitUntil(isDark, QStringLiteral("the window is dark"));
    portal.change(scheme, 2U);
    waitUntil([&] { return !isDark(); }, QStringLiteral("the window is light"));
}

INSTANTIATE_TEST_SUITE_P(On, WaylandPresenceTest, harness::everyCompositor(),
                         harness::compositorName);

} // namespace
} // namespace quillmender
