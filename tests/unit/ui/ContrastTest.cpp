#include "ui/style/Look.h"

#include <gtest/gtest.h>

namespace quillmender {

namespace {

constexpr double textContrast = 4.5;
constexpr double lineContrast = 3;
constexpr double disabledContrast = 2.5;

/// The accents that two large desktops offer, and the ends of every scale.
const QRgb offered[] = {0x3584e4, 0x2190a4, 0x3a944a, 0xc88800, 0xed5b00, 0xe62d42, 0xd56199,
                        0x9141ac, 0x6f8396, 0x3daee9, 0xe93a9a, 0xe93d58, 0xe8cb2d, 0xd35f5f,
                        0x926ee4, 0x3dd425, 0x00d3b8, 0xffff00, 0x000000, 0xffffff, 0x808080};

QList<std::optional<QColor>> accents() {
    constexpr int step = 17;
    QList<std::optional<QColor>> all{std::nullopt};
    for (const QRgb color : offered)
        all.append(QColor::fromRgb(color));
    for (int red = 0; red <= 255; red += step)
        for (int green = 0; green <= 255; green += step)
            for (int blue = 0; blue <= 255; blue += step)
                all.append(QColor(red, green, blue));
    return all;
}

QString nameOf(const Colors &colors, Part part, State state, const char *role) {
    return QStringLiteral("%1 of part %2 in state %3, accent %4, %5%6")
        .arg(QLatin1String(role))
        .arg(int(part))
        .arg(int(state))
        .arg(colors.accent.name(), colors.window.lightness() < 128 ? u"dark" : u"light",
             colors.moreContrast ? u", more contrast" : u"");
}

/// Every look, with all that can lie beneath or beside it.
template <typename Check> void forEveryLook(Check check) {
    for (const std::optional<QColor> &accent : accents())
        for (const bool dark : {false, true})
            for (const auto preference :
                 {ContrastPreference::noPreference, ContrastPreference::higher}) {
                const Colors colors = Colors::make(dark, accent, preference);
                for (int part = 0; part <= int(lastPart); ++part)
                    for (int state = 0; state <= int(lastState); ++state)
                        check(colors, Part(part), State(state));
            }
}

class Judge {
  public:
    Judge(const Colors &colors, Part part, State state)
        : colors_(colors),
          part_(part),
          state_(state) {}

    void atLeast(double wanted, const char *role, const QColor &color,
                 const QList<QColor> &against) const {
        if (!color.isValid())
            return;
        for (const QColor &ground : against) {
            const double ratio = contrast(composited(color, ground), ground);
            if (ratio < wanted)
                ADD_FAILURE() << ratio << " on " << ground.name().toStdString() << ": "
                              << color.name().toStdString() << ", "
                              << nameOf(colors_, part_, state_, role).toStdString();
        }
    }

  private:
    const Colors &colors_;
    Part part_;
    State state_;
};

struct TextRole {
    const char *name;
    QColor Look::*color;
};

const TextRole textRoles[] = {{"text", &Look::text},
                              {"secondary text", &Look::secondaryText},
                              {"placeholder", &Look::placeholder},
                              {"error", &Look::error},
                              {"success", &Look::success}};

QList<QColor> beneath(const Look &look, Part part, const Colors &colors) {
    return look.fill.isValid() ? QList<QColor>{look.fill} : groundsOf(part, colors);
}

} // namespace

TEST(ContrastTest, TextIsReadInEveryState) {
    forEveryLook([](const Colors &colors, Part part, State state) {
        if (state == State::disabled)
            return;
        const Look look = lookOf(part, state, colors);
        for (const TextRole &role : textRoles)
            Judge(colors, part, state)
                .atLeast(textContrast, role.name, look.*role.color, beneath(look, part, colors));
    });
}

TEST(ContrastTest, WhatTellsWhereAControlIsAndWhatItIsIsSeen) {
    forEveryLook([](const Colors &colors, Part part, State state) {
        if (state == State::disabled)
            return;
        const Look look = lookOf(part, state, colors);
        const Judge judge(colors, part, state);
        const QList<QColor> grounds = groundsOf(part, colors);
        judge.atLeast(lineContrast, "symbol", look.symbol, beneath(look, part, colors));
        if (look.ringPlace != RingPlace::around)
            judge.atLeast(lineContrast, "ring", look.ring, beneath(look, part, colors));
        if (look.ringPlace != RingPlace::inside)
            judge.atLeast(lineContrast, "ring beside", look.ring, grounds);
        if (look.outlineTells)
            judge.atLeast(lineContrast, "outline beside", look.outline, grounds);
        if (look.fillTells)
            judge.atLeast(lineContrast, "fill", look.fill, grounds);
    });
}

TEST(ContrastTest, FieldsAndSwitchesAreSeenByTheirOutlines) {
    const Colors colors = Colors::make(false, std::nullopt);
    for (const Part part : {Part::field, Part::editor, Part::popUpButton})
        EXPECT_TRUE(lookOf(part, State::rest, colors).outlineTells);
    for (const Part part : {Part::switchOff, Part::switchOn, Part::scrollThumb})
        EXPECT_TRUE(lookOf(part, State::rest, colors).fillTells);
    for (const Part part :
         {Part::button, Part::prominentButton, Part::field, Part::editor, Part::popUpButton,
          Part::switchOff, Part::switchOn, Part::tile, Part::row})
        EXPECT_TRUE(lookOf(part, State::rest, colors).ring.isValid()) << int(part);
}

TEST(ContrastTest, WhatIsDisabledIsReadAndSeenToBeDisabled) {
    forEveryLook([](const Colors &colors, Part part, State state) {
        if (state != State::disabled)
            return;
        const Look look = lookOf(part, State::disabled, colors);
        const Look enabled = lookOf(part, State::rest, colors);
        const QList<QColor> grounds = beneath(look, part, colors);
        for (const TextRole &role : textRoles) {
            if (!(look.*role.color).isValid() || !(enabled.*role.color).isValid() ||
                role.color == &Look::error || role.color == &Look::success)
                continue;
            Judge(colors, part, state)
                .atLeast(disabledContrast, role.name, look.*role.color, grounds);
            const double weak = contrast(look.*role.color, grounds.first());
            const double strong =
                contrast(enabled.*role.color, beneath(enabled, part, colors).first());
            if (weak * 1.4 > strong)
                ADD_FAILURE() << weak << " of " << strong << ": "
                              << nameOf(colors, part, state, role.name).toStdString();
        }
        EXPECT_FALSE(look.ring.isValid());
    });
}

TEST(ContrastTest, PointingAndPressingAreSeen) {
    forEveryLook([](const Colors &colors, Part part, State state) {
        const bool answers = part == Part::button || part == Part::destructiveButton ||
                             part == Part::prominentButton || part == Part::popUpButton ||
                             part == Part::tile || part == Part::menuItem;
        if (!answers || (state != State::hovered && state != State::pressed))
            return;
        if (lookOf(part, state, colors).fill == lookOf(part, State::rest, colors).fill)
            ADD_FAILURE() << nameOf(colors, part, state, "fill").toStdString();
    });
}

TEST(ContrastTest, TilesLiftFromADarkWindow) {
    for (const std::optional<QColor> &accent : accents()) {
        const Colors colors = Colors::make(true, accent);
        const QColor fill = lookOf(Part::tile, State::rest, colors).fill;
        EXPECT_GT(qGray(fill.rgb()), qGray(colors.window.rgb()) + 5)
            << colors.accent.name().toStdString();
        const QColor knob = lookOf(Part::switchOn, State::rest, colors).symbol;
        EXPECT_GT(knob.lightness(), 200);
        EXPECT_GT(lookOf(Part::switchOff, State::rest, colors).symbol.lightness(), 200);
    }
}

TEST(ContrastTest, ASelectionIsSeen) {
    forEveryLook([](const Colors &colors, Part part, State state) {
        if (part == Part::selection && state == State::rest)
            Judge(colors, part, state)
                .atLeast(1.5, "fill", lookOf(part, state, colors).fill, groundsOf(part, colors));
        if (part == Part::menuItem && state == State::hovered)
            Judge(colors, part, state)
                .atLeast(1.5, "fill", lookOf(part, state, colors).fill, groundsOf(part, colors));
    });
}

TEST(ContrastTest, TheWishForContrastMakesTextsAndLinesStronger) {
    for (const bool dark : {false, true}) {
        const Colors usual = Colors::make(dark, std::nullopt);
        const Colors strong = Colors::make(dark, std::nullopt, ContrastPreference::higher);
        const auto ratio = [](const Colors &colors, const QColor &color) {
            return contrast(composited(color, colors.card), colors.card);
        };
        EXPECT_GE(ratio(strong, strong.secondary), 7);
        EXPECT_LT(ratio(usual, usual.secondary), 7);
        EXPECT_GE(ratio(strong, strong.fieldOutline), 7);
        EXPECT_GE(ratio(strong, strong.cardOutline), 3);
        EXPECT_GE(ratio(strong, strong.controlOutline), 3);
        EXPECT_GE(ratio(strong, lookOf(Part::tile, State::rest, strong).outline), 3);
        EXPECT_LT(ratio(usual, usual.cardOutline), 1.5);
    }
}

TEST(ContrastTest, TheRingIsAnotherColourThanTheOutlineOfATile) {
    for (const bool dark : {false, true}) {
        const Colors strong = Colors::make(dark, std::nullopt, ContrastPreference::higher);
        const Look tile = lookOf(Part::tile, State::rest, strong);
        EXPECT_GE(tile.ring.hslSaturation(), tile.outline.hslSaturation() + 100);
        EXPECT_GE(contrast(tile.ring, tile.outline), 1.5) << dark;
    }
}

} // namespace quillmender
