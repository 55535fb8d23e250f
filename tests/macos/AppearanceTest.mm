#include "FrameworksTest.h"
#include "doubles/appkit/SystemColors.h"
#include "platform/macos/MacPresence.h"

namespace quillmender {

namespace {

using doubles::AccentColor;

class AppearanceTest : public FrameworksTest {
  protected:
    doubles::SystemColors &system = doubles::SystemColors::shared();
    MacPresence presence;
};

} // namespace

TEST_F(AppearanceTest, SchemeIsTheApplications) {
    EXPECT_EQ(presence.appearance().colorScheme, ColorScheme::light);
    system.isDark = true;
    EXPECT_EQ(presence.appearance().colorScheme, ColorScheme::dark);
    system.hasNoAppearance = true;
    EXPECT_EQ(presence.appearance().colorScheme, ColorScheme::noPreference);
}

TEST_F(AppearanceTest, AccentIsRoundedIntoBytes) {
    EXPECT_EQ(presence.appearance().accentColor, std::nullopt);
    system.accent = AccentColor{0.0, 122.4 / 255, 1.0};
    EXPECT_EQ(presence.appearance().accentColor, 0x007affU);
    system.accent = AccentColor{1.02, -0.01, 0.5};
    EXPECT_EQ(presence.appearance().accentColor, 0xff0080U);
}

TEST_F(AppearanceTest, ListenerIsToldOfEachChangeAndReadsTheNewColors) {
    system.becomeDark(true);
    QList<Appearance> seen;
    presence.onAppearanceChange([&] { seen.append(presence.appearance()); });
    system.becomeDark(false);
    system.changeAccent(AccentColor{1, 0, 0});
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen[0].colorScheme, ColorScheme::light);
    EXPECT_EQ(seen[1].accentColor, 0xff0000U);
    presence.onAppearanceChange({});
    system.becomeDark(true);
    EXPECT_EQ(seen.size(), 2);
}

TEST_F(AppearanceTest, NobodyIsToldOnceThePresenceHasGone) {
    int told = 0;
    {
        MacPresence shortLived;
        shortLived.onAppearanceChange([&] { ++told; });
    }
    system.becomeDark(true);
    system.changeAccent(std::nullopt);
    EXPECT_EQ(told, 0);
}

} // namespace quillmender
