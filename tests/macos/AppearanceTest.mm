#include "FrameworksTest.h"
#include "doubles/appkit/SystemColors.h"
#include "platform/macos/MacAppearance.h"

namespace quillmender {

namespace {

using doubles::AccentColor;

class AppearanceTest : public FrameworksTest {
  protected:
    doubles::SystemColors &system = doubles::SystemColors::shared();
    MacAppearance appearance;
};

} // namespace

TEST_F(AppearanceTest, SchemeIsTheApplications) {
    EXPECT_EQ(appearance.colors().scheme, ColorScheme::light);
    system.isDark = true;
    EXPECT_EQ(appearance.colors().scheme, ColorScheme::dark);
    system.hasNoAppearance = true;
    EXPECT_EQ(appearance.colors().scheme, ColorScheme::noPreference);
}

TEST_F(AppearanceTest, AccentIsRoundedIntoBytes) {
    EXPECT_EQ(appearance.colors().accent, std::nullopt);
    system.accent = AccentColor{0.0, 122.4 / 255, 1.0};
    EXPECT_EQ(appearance.colors().accent, QColor(0x007aff));
    system.accent = AccentColor{1.02, -0.01, 0.5};
    EXPECT_EQ(appearance.colors().accent, QColor(0xff0080));
}

TEST_F(AppearanceTest, ListenerIsToldOfEachChangeAndReadsTheNewColors) {
    system.becomeDark(true);
    QList<DesktopColors> seen;
    appearance.onChange([&] { seen.append(appearance.colors()); });
    system.becomeDark(false);
    system.changeAccent(AccentColor{1, 0, 0});
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen[0].scheme, ColorScheme::light);
    EXPECT_EQ(seen[1].accent, QColor(0xff0000));
    appearance.onChange({});
    system.becomeDark(true);
    EXPECT_EQ(seen.size(), 2);
}

TEST_F(AppearanceTest, NobodyIsToldOnceItHasGone) {
    int told = 0;
    {
        MacAppearance shortLived;
        shortLived.onChange([&] { ++told; });
    }
    system.becomeDark(true);
    system.changeAccent(std::nullopt);
    EXPECT_EQ(told, 0);
}

} // namespace quillmender
