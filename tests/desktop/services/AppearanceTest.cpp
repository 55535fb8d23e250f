#include "FakePortal.h"
#include "platform/linux/services/LinuxPresence.h"
#include "platform/linux/services/StatusMenu.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace quillmender {

namespace {

constexpr int deadline = 10000;
const QString schemeKey = QStringLiteral("color-scheme");
const QString accentKey = QStringLiteral("accent-color");

} // namespace

TEST(AppearanceTest, IsReadAndFollowed) {
    FakePortal portal({{schemeKey, 1u}, {accentKey, FakePortal::accent(1, 0, 0.2)}});
    LinuxPresence presence(nullptr);
    int changes = 0;
    presence.onAppearanceChange([&changes] { ++changes; });
    EXPECT_EQ(presence.appearance(), Appearance()) << "nothing waits for the portal";
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 1; }, deadline));
    EXPECT_EQ(presence.appearance().colorScheme, ColorScheme::dark);
    EXPECT_EQ(presence.appearance().accentColor, 0xff0033u);

    portal.change(schemeKey, 2u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 2; }, deadline));
    EXPECT_EQ(presence.appearance().colorScheme, ColorScheme::light);
    EXPECT_EQ(presence.appearance().accentColor, 0xff0033u);

    portal.change(accentKey, FakePortal::accent(0, 1, 0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 3; }, deadline));
    EXPECT_EQ(presence.appearance().accentColor, 0x00ff00u);

    portal.change(QStringLiteral("contrast"), 1u);
    portal.change(accentKey, FakePortal::accent(-1, -1, -1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 4; }, deadline));
    EXPECT_EQ(presence.appearance().accentColor, std::nullopt);
}

TEST(AppearanceTest, MenuFollowsBeforeAnyWindowHasBeenShown) {
    FakePortal portal({{schemeKey, 1u}});
    LinuxPresence presence(nullptr);
    presence.showStatusItem({{}, {}, {}, {{QStringLiteral("Settings"), {}, 0, false, {}}}});
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto menu = std::find_if(widgets.begin(), widgets.end(), [](const QWidget *widget) {
        return qobject_cast<const StatusMenu *>(widget) != nullptr;
    });
    ASSERT_NE(menu, widgets.end());
    const auto surfaceWhenOpened = [&] {
        qobject_cast<StatusMenu *>(*menu)->popup({10, 10});
        const QColor surface = (*menu)->palette().color(QPalette::Window);
        (*menu)->close();
        return surface.lightness();
    };
    const auto hasScheme = [&](ColorScheme scheme) {
        return QTest::qWaitFor([&] { return presence.appearance().colorScheme == scheme; },
                               deadline);
    };
    EXPECT_TRUE(hasScheme(ColorScheme::dark));
    EXPECT_LT(surfaceWhenOpened(), 80);
    portal.change(schemeKey, 2u);
    EXPECT_TRUE(hasScheme(ColorScheme::light));
    EXPECT_GT(surfaceWhenOpened(), 180);
}

TEST(AppearanceTest, ValuesOfTheWrongTypeAreNoPreference) {
    FakePortal portal({{schemeKey, QStringLiteral("dark")}, {accentKey, 7u}});
    LinuxPresence presence(nullptr);
    int changes = 0;
    presence.onAppearanceChange([&changes] { ++changes; });
    portal.change(schemeKey, 99u);
    portal.change(schemeKey, 1u);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return presence.appearance().colorScheme == ColorScheme::dark; }, deadline));
    EXPECT_EQ(presence.appearance().accentColor, std::nullopt);
}

TEST(AppearanceTest, APortalThatComesLaterIsRead) {
    LinuxPresence presence(nullptr);
    int changes = 0;
    presence.onAppearanceChange([&changes] { ++changes; });
    QTest::qWait(0);
    EXPECT_EQ(presence.appearance(), Appearance());
    const FakePortal portal({{schemeKey, 1u}});
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 1; }, deadline));
    EXPECT_EQ(presence.appearance().colorScheme, ColorScheme::dark);
}

} // namespace quillmender
