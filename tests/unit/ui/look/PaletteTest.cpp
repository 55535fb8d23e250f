#include "LookFixture.h"
#include "ui/style/Look.h"

#include <QToolTip>

namespace quillmender {

namespace {

struct Named {
    const char *name;
    QColor Colors::*role;
    QRgb light;
    QRgb dark;
};

const Named palette[] = {
    {"window", &Colors::window, 0xfff3f3f6, 0xff1d1d21},
    {"card", &Colors::card, 0xfffcfcfd, 0xff28282d},
    {"cardOutline", &Colors::cardOutline, 0x12000000, 0x12ffffff},
    {"textBackground", &Colors::textBackground, 0xffffffff, 0xff19191c},
    {"text", &Colors::text, 0xff1c1c21, 0xfff3f3f6},
    {"secondary", &Colors::secondary, 0xff656570, 0xffa6a6b0},
    {"error", &Colors::error, 0xffc41c25, 0xffff7b72},
    {"success", &Colors::success, 0xff177031, 0xff5ccb7c},
    {"control", &Colors::control, 0xffffffff, 0xff36363c},
    {"controlOutline", &Colors::controlOutline, 0x24000000, 0x1cffffff},
    {"fieldOutline", &Colors::fieldOutline, 0xff8a8a94, 0xff80808a},
    {"lifted", &Colors::lifted, 0xffffffff, 0xff303036},
    {"accent", &Colors::accent, 0xff4a5bd4, 0xff4a5bd4},
    {"accentFill", &Colors::accentFill, 0xff4a5bd4, 0xff4a5bd4},
};

class PaletteTest : public PanelLookFixture {};

} // namespace

TEST(ColorTableTest, TheColoursAreThose) {
    for (const bool dark : {false, true}) {
        const Colors colors = Colors::make(dark, std::nullopt);
        for (const Named &named : palette)
            EXPECT_EQ((colors.*named.role).rgba(), dark ? named.dark : named.light)
                << named.name << (dark ? ", dark" : ", light");
        EXPECT_EQ(colors.onAccent.rgb(), QColor(Qt::white).rgb());
    }
}

TEST(ColorTableTest, ErrorsAreRedAndSuccessIsGreen) {
    for (const bool dark : {false, true}) {
        const Colors colors = Colors::make(dark, std::nullopt);
        EXPECT_TRUE(colors.error.hue() >= 345 || colors.error.hue() <= 15) << dark;
        EXPECT_GT(colors.error.saturation(), 128);
        EXPECT_TRUE(colors.success.hue() >= 100 && colors.success.hue() <= 150) << dark;
        EXPECT_GT(colors.success.saturation(), 128);
        EXPECT_LT(colors.secondary.saturation(), 32) << "no colour of its own";
        EXPECT_GT(contrast(colors.text, colors.window), contrast(colors.secondary, colors.window));
        EXPECT_EQ(colors.window.lightness() < 128, dark);
    }
}

TEST(ColorTableTest, OpacityMultiplies) {
    EXPECT_EQ(withOpacity(QColor(10, 20, 30), 0.08).alpha(), 20);
    EXPECT_EQ(withOpacity(QColor(10, 20, 30, 128), 0.5).alpha(), 64);
    EXPECT_EQ(withOpacity(QColor(10, 20, 30), 0.5).rgb(), QColor(10, 20, 30).rgb());
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(ColorTableTest, TheMarkIsTheAccentWhereItIsSeen) {
    const Colors seen = Colors::make(false, 0x1a1a90);
    EXPECT_EQ(seen.accentMark, seen.accent);
    const Colors pale = Colors::make(false, 0xffff00);
    EXPECT_LT(pale.accentMark.lightness(), pale.accent.lightness());
    EXPECT_GE(contrast(pale.accentMark, pale.window), 4.5);
    EXPECT_LT(pale.onAccent.lightness(), 128);
    const Colors deep = Colors::make(true, 0x000080);
    EXPECT_GT(deep.accentMark.lightness(), deep.accent.lightness());
    EXPECT_GE(contrast(deep.accentMark, deep.card), 4.5);
}

TEST_F(PaletteTest, TheWishForContrastIsFollowedWhileTheProgramRuns) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        appearance.become({scheme, std::nullopt});
        const QColor usual = theme.colors().secondary;
        appearance.become({scheme, std::nullopt, ContrastPreference::higher});
        EXPECT_NE(theme.colors().secondary, usual);
        EXPECT_EQ(QApplication::palette().color(QPalette::PlaceholderText),
                  theme.colors().secondary);
        EXPECT_GE(contrast(theme.colors().secondary, theme.colors().card), 7);
        appearance.become({scheme, std::nullopt});
        EXPECT_EQ(theme.colors().secondary, usual);
    }
}

TEST_F(PaletteTest, TheToolkitHasOurColours) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        appearance.become({scheme, 0x3584e4});
        const Colors &colors = theme.colors();
        EXPECT_EQ(colors.accent, QColor(0x35, 0x84, 0xe4)) << "the desktop's";
        const QPalette used = QApplication::palette();
        const std::pair<QPalette::ColorRole, QColor> roles[] = {
            {QPalette::Window, colors.window},
            {QPalette::WindowText, colors.text},
            {QPalette::Base, colors.textBackground},
            {QPalette::AlternateBase, colors.card},
            {QPalette::Text, colors.text},
            {QPalette::PlaceholderText, colors.secondary},
            {QPalette::Button, colors.control},
            {QPalette::ButtonText, colors.text},
            {QPalette::ToolTipBase, colors.lifted},
            {QPalette::ToolTipText, colors.text},
            {QPalette::Highlight, colors.accentFill},
            {QPalette::HighlightedText, colors.onAccent},
            {QPalette::Link, colors.accentMark}};
        for (const auto &[role, color] : roles)
            EXPECT_EQ(used.color(QPalette::Active, role), color) << role;
        EXPECT_EQ(used.color(QPalette::Disabled, QPalette::Text),
                  lookOf(Part::field, State::disabled, colors).text);
        EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipText), colors.text);
    }
}

TEST(ThemeChoiceTest, ADesktopWithoutAPreferenceDecidesByItsOwnColours) {
    for (const bool dark : {true, false}) {
        QApplication::setPalette(QPalette(dark ? QColor(Qt::black) : QColor(Qt::white)));
        fakes::FakeAppearance appearance;
        fakes::FakeSymbols symbols;
        appearance.current = {ColorScheme::noPreference, std::nullopt};
        const Theme theme(appearance, symbols);
        EXPECT_EQ(theme.colors().window, Colors::make(dark, std::nullopt).window) << dark;
        appearance.become({dark ? ColorScheme::light : ColorScheme::dark, std::nullopt});
        EXPECT_EQ(theme.colors().window, Colors::make(!dark, std::nullopt).window) << dark;
        appearance.become({ColorScheme::noPreference, std::nullopt});
        EXPECT_EQ(theme.colors().window, Colors::make(dark, std::nullopt).window) << dark;
    }
}

} // namespace quillmender
