#include "ui/Colors.h"

#include "PanelFixture.h"

#include <QSignalSpy>

namespace quillmender {

namespace {

const quint32 accents[] = {0x000000, 0xffffff, 0xffff00, 0x00ff00, 0x3584e4, 0x4a5bd4, 0x808080};

class ThemeTest : public PanelFixture {};

} // namespace

TEST(ColorsTest, TextStandsOutInBothSchemes) {
    for (const bool dark : {false, true}) {
        const Colors colors = Colors::make(dark, std::nullopt);
        for (const QColor &ground : {colors.window, colors.card}) {
            EXPECT_GE(contrast(colors.text, ground), 7);
            EXPECT_GE(contrast(colors.secondary, ground), 4.5);
            EXPECT_GE(contrast(colors.error, ground), 4.5);
        }
        EXPECT_GE(contrast(colors.secondary, colors.textBackground), 4.5);
        EXPECT_GE(contrast(colors.text, colors.control), 7);
    }
}

TEST(ColorsTest, AnyAccentIsSeenAndCarriesText) {
    for (const bool dark : {false, true}) {
        for (const quint32 accent : accents) {
            const Colors colors = Colors::make(dark, accent);
            EXPECT_EQ(colors.accent.rgb() & 0xffffff, accent);
            EXPECT_GE(contrast(colors.accentMark, colors.window), 4.5) << dark << accent;
            EXPECT_GE(contrast(colors.accentMark, colors.card), 4.5) << dark << accent;
            EXPECT_GE(contrast(colors.onAccent, colors.accentFill), 4.5) << dark << accent;
        }
    }
}

TEST_F(ThemeTest, FollowsTheDesktopWhileTheProgramRuns) {
    show();
    const QSignalSpy changed(&theme, &Theme::changed);
    const QColor light = QApplication::palette().color(QPalette::Window);
    appearance.become({ColorScheme::dark, 0xff0000});
    EXPECT_EQ(changed.count(), 1);
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), light.lightness());
    EXPECT_EQ(theme.colors().accent, QColor(255, 0, 0));
    appearance.become({ColorScheme::light, std::nullopt});
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), light);
    EXPECT_EQ(theme.colors().accent, Colors::make(false, std::nullopt).accent);
}

TEST_F(ThemeTest, ThePanelIsPaintedInTheNewColours) {
    show();
    for (const ColorScheme scheme : {ColorScheme::dark, ColorScheme::light}) {
        appearance.become({scheme, std::nullopt});
        settle();
        EXPECT_EQ(controller.panel()->grab().toImage().pixelColor(2, 2).name().toStdString(),
                  theme.colors().window.name().toStdString());
    }
}

} // namespace quillmender
