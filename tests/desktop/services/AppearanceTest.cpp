#include "FakePortal.h"
#include "PrivateSession.h"
#include "platform/linux/services/PortalAppearance.h"
#include "platform/linux/services/TrayMenu.h"
#include "platform/linux/services/TrayStatusItem.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace quillmender {

namespace {

const QString schemeKey = QStringLiteral("color-scheme");
const QString contrastKey = QStringLiteral("contrast");
const QString accentKey = QStringLiteral("accent-color");

} // namespace

TEST(AppearanceTest, IsReadAndFollowed) {
    FakePortal portal({{schemeKey, 1u}, {accentKey, FakePortal::accent(1, 0, 0.2)}});
    PortalAppearance appearance;
    int changes = 0;
    appearance.onChange([&changes] { ++changes; });
    EXPECT_EQ(appearance.colors(), DesktopColors()) << "nothing waits for the portal";
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 1; }, deadline));
    EXPECT_EQ(appearance.colors().scheme, ColorScheme::dark);
    EXPECT_EQ(appearance.colors().accent, QColor(0xff0033));

    portal.change(schemeKey, 2u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 2; }, deadline));
    EXPECT_EQ(appearance.colors().scheme, ColorScheme::light);
    EXPECT_EQ(appearance.colors().accent, QColor(0xff0033));

    portal.change(accentKey, FakePortal::accent(0, 1, 0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 3; }, deadline));
    EXPECT_EQ(appearance.colors().accent, QColor(0x00ff00));

    portal.change(QStringLiteral("reduced-motion"), 1u);
    portal.change(accentKey, FakePortal::accent(-1, -1, -1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 4; }, deadline));
    EXPECT_EQ(appearance.colors().accent, std::nullopt);
}

TEST(AppearanceTest, TheWishForContrastIsReadAndFollowed) {
    FakePortal portal({{schemeKey, 1u}, {contrastKey, 1u}});
    PortalAppearance appearance;
    const auto becomes = [&](ContrastPreference preference) {
        return QTest::qWaitFor([&] { return appearance.colors().contrast == preference; },
                               deadline);
    };
    EXPECT_EQ(appearance.colors().contrast, ContrastPreference::noPreference);
    EXPECT_TRUE(becomes(ContrastPreference::higher));
    EXPECT_EQ(appearance.colors().scheme, ColorScheme::dark);
    int changes = 0;
    appearance.onChange([&changes] { ++changes; });
    portal.change(contrastKey, 0u);
    EXPECT_TRUE(becomes(ContrastPreference::noPreference));
    portal.change(contrastKey, 1u);
    EXPECT_TRUE(becomes(ContrastPreference::higher));
    EXPECT_EQ(changes, 2);
    portal.change(contrastKey, QStringLiteral("much"));
    EXPECT_TRUE(becomes(ContrastPreference::noPreference)) << "nonsense is no wish";
    portal.change(contrastKey, 1u);
    EXPECT_TRUE(becomes(ContrastPreference::higher));
    portal.change(contrastKey, 2u);
    EXPECT_TRUE(becomes(ContrastPreference::noPreference)) << "a value of the future is no wish";
}

TEST(AppearanceTest, MenuFollowsBeforeAnyWindowHasBeenShown) {
    FakePortal portal({{schemeKey, 1u}});
    PortalAppearance appearance;
    TrayStatusItem item(appearance, nullptr);
    item.show({{}, {}, {}, {{QStringLiteral("Settings"), std::nullopt, false, {}}}});
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto menu = std::find_if(widgets.begin(), widgets.end(), [](const QWidget *widget) {
        return qobject_cast<const TrayMenu *>(widget) != nullptr;
    });
    ASSERT_NE(menu, widgets.end());
    const auto surfaceWhenOpened = [&] {
        qobject_cast<TrayMenu *>(*menu)->popup({10, 10});
        const QColor surface = (*menu)->palette().color(QPalette::Window);
        (*menu)->close();
        return surface.lightness();
    };
    const auto hasScheme = [&](ColorScheme scheme) {
        return QTest::qWaitFor([&] { return appearance.colors().scheme == scheme; }, deadline);
    };
    EXPECT_TRUE(hasScheme(ColorScheme::dark));
    EXPECT_LT(surfaceWhenOpened(), 80);
    portal.change(schemeKey, 2u);
    EXPECT_TRUE(hasScheme(ColorScheme::light));
    EXPECT_GT(surfaceWhenOpened(), 180);
}

TEST(AppearanceTest, ValuesOfTheWrongTypeAreNoPreference) {
    FakePortal portal({{schemeKey, QStringLiteral("dark")}, {accentKey, 7u}});
    PortalAppearance appearance;
    int changes = 0;
    appearance.onChange([&changes] { ++changes; });
    portal.change(schemeKey, 99u);
    portal.change(schemeKey, 1u);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return appearance.colors().scheme == ColorScheme::dark; }, deadline));
    EXPECT_EQ(appearance.colors().accent, std::nullopt);
}

TEST(AppearanceTest, APortalThatComesLaterIsRead) {
    PortalAppearance appearance;
    int changes = 0;
    appearance.onChange([&changes] { ++changes; });
    QTest::qWait(0);
    EXPECT_EQ(appearance.colors(), DesktopColors());
    const FakePortal portal({{schemeKey, 1u}});
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 1; }, deadline));
    EXPECT_EQ(appearance.colors().scheme, ColorScheme::dark);
}

} // namespace quillmender
