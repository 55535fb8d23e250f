#include "platform/linux/wayland/sway/SwayBindings.h"

#include <gmock/gmock.h>

namespace quillmender::sway {

namespace {

constexpr QKeyCombination controlAltSpace(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);
constexpr QKeyCombination superShiftC(Qt::MetaModifier | Qt::ShiftModifier, Qt::Key_C);

bool isBound(const char *line, QKeyCombination keys = controlAltSpace) {
    return bindingOf(keys, QString::fromUtf8(line).split(u'\n')).has_value();
}

TEST(SwayBindingsTest, SpellsCombinations) {
    EXPECT_EQ(spelled(controlAltSpace), QStringLiteral("Ctrl+Mod1+space"));
    EXPECT_EQ(spelled(superShiftC), QStringLiteral("Shift+Mod4+c"));
    EXPECT_EQ(spelled(QKeyCombination(Qt::ControlModifier, Qt::Key_Percent)),
              QStringLiteral("Ctrl+percent"));
    EXPECT_EQ(spelled(QKeyCombination(Qt::ControlModifier, Qt::Key_F5)), QString());
}

class EverySpelling : public testing::TestWithParam<const char *> {};

TEST_P(EverySpelling, IsSeen) {
    EXPECT_TRUE(isBound(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    SwayBindings, EverySpelling,
    testing::Values(
        "bindsym Ctrl+Mod1+space exec foot", "bindsym Control+Alt+space exec foot",
        "bindsym Mod1+Control+space exec foot", "bindsym space+Ctrl+Alt exec foot",
        "bindsym CTRL+alt+SPACE exec foot", "BindSym Ctrl+Mod1+Space exec foot",
        "bindsym --release Ctrl+Mod1+space exec foot",
        "bindsym --locked --no-repeat --input-device=1:1:board Ctrl+Alt+space exec foot",
        "bindsym --to-code Ctrl+Alt+space exec foot", "bindsym \"Ctrl+Alt+space\" exec foot",
        "bindsym Ctrl+Alt+Group1+space exec foot", "bindsym Ctrl+Alt+Mod2+space exec foot",
        "bindsym Ctrl+Alt+Lock+space exec foot", "bindsym Ctrl+Alt+0x0020 exec foot",
        "bindcode Ctrl+Mod1+65 exec foot", "bindcode --locked Control+Alt+65 exec foot",
        "mode \"resize\" {\nbindsym Ctrl+Alt+space mode default\n}",
        "mode resize bindsym Ctrl+Alt+space mode default",
        "bindsym {\nMod4+a exec foot\nCtrl+Alt+space exec foot\n}",
        "bindsym --locked {\nCtrl+Alt+space exec foot\n}",
        "exec_always swaymsg 'bindsym Ctrl+Alt+space exec foot'",
        "bindsym Mod4+b exec foot; bindsym Ctrl+Alt+space exec foot"));

class NoneOfThem : public testing::TestWithParam<const char *> {};

TEST_P(NoneOfThem, IsTaken) {
    EXPECT_FALSE(isBound(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(
    SwayBindings, NoneOfThem,
    testing::Values("bindsym Ctrl+space exec foot", "bindsym Ctrl+Alt+Shift+space exec foot",
                    "bindsym Mod4+space exec foot", "bindsym Ctrl+Alt+a+space exec foot",
                    "bindsym Ctrl+Alt+Return exec foot", "bindcode Ctrl+Mod1+66 exec foot",
                    "bindcode 65 exec foot", "bindsym Mod4+d exec echo Ctrl+Alt+space",
                    "bindgesture swipe:right exec foot", "input * {\nxkb_layout us\n}",
                    "mode Ctrl+Alt+space {\n}", "bindsym", "bindsym --locked", "bindsym +++ x",
                    "bindsym {\nMod4+a exec foot\n}\nCtrl+Alt+space exec foot"));

TEST(SwayBindingsTest, TellsTheLine) {
    const QStringList lines{QStringLiteral("bindsym Mod4+d exec foot"),
                            QStringLiteral("bindsym Ctrl+Alt+space exec foot")};
    EXPECT_EQ(bindingOf(controlAltSpace, lines), lines[1]);
}

TEST(SwayBindingsTest, LettersAreTheSameInEitherCase) {
    EXPECT_TRUE(isBound("bindsym Super+Shift+C exec foot", superShiftC));
    EXPECT_TRUE(isBound("bindsym Mod4+Shift+c exec foot", superShiftC));
    EXPECT_FALSE(isBound("bindsym Mod4+c exec foot", superShiftC));
}

TEST(SwayBindingsTest, KnowsKeyCodesOfTheLayoutsThatAreUsed) {
    const QKeyCombination controlY(Qt::ControlModifier, Qt::Key_Y);
    EXPECT_TRUE(isBound("bindcode Ctrl+29 exec foot", controlY));
    EXPECT_FALSE(isBound("bindcode Ctrl+52 exec foot", controlY));
    EXPECT_TRUE(isBound("input * xkb_layout \"de\"\nbindcode Ctrl+52 exec foot", controlY));
    EXPECT_TRUE(isBound("input * {\nxkb_layout de\n}\nbindcode Ctrl+52 exec foot", controlY));
}

} // namespace

} // namespace quillmender::sway
