#include "LookFixture.h"
#include "ui/ActionTile.h"
#include "ui/Spinner.h"
#include "ui/ToggleSwitch.h"
#include "ui/style/Look.h"

namespace quillmender {

namespace {

/// Rounded surfaces, compared with ones that are painted here.
class SurfaceTest : public PanelLookFixture {
  protected:
    ActionTile *tile(int index) const {
        return controller.panel()->findChildren<ActionTile *>().at(index);
    }

    QImage rounded(const QWidget &widget, const QPen &pen, const QBrush &brush, qreal radius,
                   qreal inset) const {
        return look::reference(widget, ground(), [&](QPainter &painter) {
            painter.setPen(pen);
            painter.setBrush(brush);
            painter.drawRoundedRect(QRectF(widget.rect()).adjusted(inset, inset, -inset, -inset),
                                    radius, radius);
        });
    }

    QColor ground() const { return theme.colors().window; }
    const Colors &colors() const { return theme.colors(); }

    static QColor blended(const QColor &under, const QColor &over, double opacity) {
        QImage pixel(1, 1, QImage::Format_ARGB32_Premultiplied);
        pixel.fill(under);
        QPainter painter(&pixel);
        painter.fillRect(pixel.rect(), withOpacity(over, opacity));
        painter.end();
        return pixel.pixelColor(0, 0);
    }
};

bool isNear(const QColor &a, const QColor &b) {
    return qAbs(a.red() - b.red()) <= 1 && qAbs(a.green() - b.green()) <= 1 &&
           qAbs(a.blue() - b.blue()) <= 1;
}

} // namespace

TEST_F(SurfaceTest, ATileIsAFaintAccentWithRoundCorners) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        appearance.become({scheme, 0xd02060});
        show();
        settle();
        button(QStringLiteral("Close"))->setFocus();
        ActionTile &first = *tile(0);
        const QImage image = look::painted(first, ground());
        EXPECT_TRUE(look::haveSameCorners(image,
                                          rounded(first, withOpacity(colors().accentMark, 0.12),
                                                  lookOf(Part::tile, State::rest, colors()).fill,
                                                  13.5, 0.5),
                                          15));
        // Between the text and the edge there is nothing but the surface.
        const QColor surface = image.pixelColor(first.width() - 8, first.height() / 2);
        EXPECT_TRUE(isNear(surface, blended(colors().card, colors().accent, 0.08)))
            << surface.name().toStdString();
    }
}

TEST_F(SurfaceTest, APressedTileIsStronger) {
    show();
    settle();
    button(QStringLiteral("Close"))->setFocus();
    ActionTile &first = *tile(0);
    const QPoint beside(first.width() - 8, first.height() / 2);
    const QColor atRest = look::painted(first, ground()).pixelColor(beside);
    first.setDown(true);
    const QColor pressed = look::painted(first, ground()).pixelColor(beside);
    EXPECT_TRUE(isNear(pressed, blended(colors().card, colors().accent, 0.22)));
    EXPECT_NE(pressed, atRest);
}

TEST_F(SurfaceTest, ATileThatCannotBePressedIsFaint) {
    show();
    settle();
    ActionTile &first = *tile(0);
    const int readable = look::count(look::painted(first, ground()), colors().text);
    EXPECT_GT(readable, 0);
    change([](auto &state) { state.working = true; });
    EXPECT_EQ(look::count(look::painted(first, ground()), colors().text), 0);
}

TEST_F(SurfaceTest, TheTilesFillTwoColumns) {
    show();
    settle();
    for (int index = 0; index < 7; ++index) {
        const QRect place = tile(index)->geometry();
        EXPECT_EQ(place, QRect(index % 2 == 0 ? 0 : 292, (index / 2) * 84, 280, 72)) << index;
    }
    EXPECT_EQ(tile(0)->parentWidget()->width(), 572);
    EXPECT_EQ(tile(0)->parentWidget()->height(), 4 * 84 - 12);
}

TEST_F(SurfaceTest, TheTitleOfATileIsBolderAndLargerThanItsSubtitle) {
    show();
    settle();
    const QImage image = look::painted(*tile(0), ground());
    EXPECT_GT(look::count(image, colors().text), 0);
    EXPECT_GT(look::count(image, colors().secondary), 0);
    EXPECT_EQ(look::count(image, colors().error), 0);
    int lastTitle = -1;
    int firstSubtitle = image.height();
    for (int y = 0; y < image.height(); ++y) {
        const QImage line = image.copy(0, y, image.width(), 1);
        if (look::count(line, colors().text) > 0)
            lastTitle = y;
        if (look::count(line, colors().secondary) > 0)
            firstSubtitle = std::min(firstSubtitle, y);
    }
    EXPECT_LT(lastTitle, firstSubtitle);
}

TEST_F(SurfaceTest, TheInstructionHasItsOutline) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        appearance.become({scheme, std::nullopt});
        show();
        settle();
        EXPECT_EQ(editor()->height(), 96);
        button(QStringLiteral("Close"))->setFocus();
        const QImage image = look::painted(*editor(), ground());
        const QImage outlined = look::reference(*editor(), ground(), [&](QPainter &painter) {
            const QRectF all = editor()->rect();
            // The line that can be seen is the edge.
            painter.setPen(QPen(colors().fieldOutline, 1));
            painter.setBrush(colors().textBackground);
            painter.drawRoundedRect(all.adjusted(0.5, 0.5, -0.5, -0.5), 11.5, 11.5);
            painter.setPen(QPen(withOpacity(colors().secondary, 0.15), 1));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(all.adjusted(1.5, 1.5, -1.5, -1.5), 10.5, 10.5);
        });
        EXPECT_TRUE(look::haveSameCorners(image, outlined, 13));
        EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() - 6).rgb(),
                  colors().textBackground.rgb());
        EXPECT_EQ(editor()->palette().color(QPalette::PlaceholderText), colors().secondary);
    }
}

TEST_F(SurfaceTest, CardsAreRounded) {
    show();
    settle();
    for (Card *card : controller.panel()->findChildren<Card *>()) {
        EXPECT_TRUE(look::haveSameCorners(
            look::painted(*card, ground()),
            rounded(*card, colors().cardOutline, colors().card, 13.5, 0.5), 15));
        const bool endsInAButton = card->isAncestorOf(button(QStringLiteral("Generate")));
        EXPECT_EQ(card->layout()->contentsMargins(), QMargins(16, 8, 16, endsInAButton ? 16 : 8));
    }
}

TEST_F(SurfaceTest, ButtonsAreRoundedAndTheProminentOneHasTheAccent) {
    change([](auto &state) { state.instruction = QStringLiteral("do it"); });
    show();
    settle();
    Button *close = button(QStringLiteral("Close"));
    EXPECT_TRUE(look::haveSameCorners(
        look::painted(*close, ground()),
        rounded(*close, colors().controlOutline, colors().control, 7.5, 0.5), 9));
    EXPECT_EQ(close->height(), 32);
    Button *generate = button(QStringLiteral("Generate"));
    EXPECT_TRUE(look::haveSameCorners(
        look::painted(*generate, ground()),
        rounded(*generate, colors().accentFill, colors().accentFill, 7.5, 0.5), 9));
    EXPECT_GT(look::count(look::painted(*generate, ground()), colors().onAccent), 0);
    EXPECT_GT(look::count(look::painted(*close, ground()), colors().text), 0);
}

TEST_F(SurfaceTest, WhatIsFocusedHasARingOfTheAccent) {
    show();
    settle();
    for (QWidget *control : {static_cast<QWidget *>(button(QStringLiteral("Close"))),
                             static_cast<QWidget *>(tile(0)), static_cast<QWidget *>(editor())}) {
        button(QStringLiteral("Settings"))->setFocus();
        EXPECT_EQ(look::count(look::painted(*control, ground()), colors().accentMark), 0);
        control->setFocus();
        EXPECT_GT(look::count(look::painted(*control, ground()), colors().accentMark),
                  2 * (control->width() + control->height()) - 80);
    }
}

TEST_F(SurfaceTest, ATileShowsItsSymbolBesideItsTitle) {
    symbols.drawsSymbols = true;
    show();
    settle();
    button(QStringLiteral("Close"))->setFocus();
    const auto tiles = controller.panel()->findChildren<ActionTile *>();
    for (ActionTile *each : tiles) {
        symbols.asked.clear();
        // The theme keeps what it has drawn once.
        appearance.become(appearance.current);
        const QImage image = look::painted(*each, ground());
        EXPECT_EQ(symbols.asked, QStringList(each->action().systemImage() + QStringLiteral(" 20")));
        EXPECT_EQ(look::count(image.copy(16, 0, 20, image.height()), colors().accentMark), 20 * 20);
        EXPECT_EQ(look::count(image.copy(0, 0, 16, image.height()), colors().text), 0);
        EXPECT_EQ(look::count(image.copy(36, 0, 12, image.height()), colors().text), 0);
    }
}

TEST_F(SurfaceTest, ATilesTextsAreInTheMiddleInTheirSizes) {
    symbols.drawsSymbols = true;
    appearance.become(appearance.current);
    show();
    settle();
    button(QStringLiteral("Close"))->setFocus();
    QFont title = fontFor(TextStyle::body);
    title.setWeight(QFont::DemiBold);
    const int titleHeight = QFontMetrics(title).height();
    const int subtitleHeight = QFontMetrics(fontFor(TextStyle::caption)).height();
    ActionTile &first = *tile(0);
    const QImage column = look::painted(first, ground()).copy(16, 0, 20, first.height());
    int top = 0;
    while (top < column.height() &&
           look::count(column.copy(0, top, 20, 1), colors().accentMark) == 0)
        ++top;
    // One line of each, and the symbol in the middle of the upper one.
    const int textTop = (72 - (titleHeight + 2 + subtitleHeight)) / 2;
    EXPECT_EQ(top, textTop + (titleHeight - 20) / 2);
    EXPECT_GT(titleHeight, subtitleHeight);
}

TEST_F(SurfaceTest, AFieldIsARoundedTextBackground) {
    TextField field(theme);
    field.resize(240, field.sizeHint().height());
    EXPECT_EQ(field.height(), 32);
    EXPECT_TRUE(look::haveSameCorners(
        look::painted(field, ground()),
        rounded(field, colors().fieldOutline, colors().textBackground, 7.5, 0.5), 8));
}

TEST_F(SurfaceTest, ASwitchHasTheAccentAndItsKnobAtTheEndWhileItIsOn) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        appearance.become({scheme, std::nullopt});
        ToggleSwitch toggle(theme, QStringLiteral("Switch"));
        toggle.resize(300, toggle.sizeHint().height());
        const QRect left(257, 0, 20, toggle.height());
        const QRect right(277, 0, 20, toggle.height());
        const QImage off = look::painted(toggle, ground());
        EXPECT_EQ(look::count(off, colors().trackOn), 0);
        EXPECT_GT(look::count(off, colors().trackOff), 300);
        EXPECT_GT(look::count(off.copy(left), QColor(Qt::white)),
                  look::count(off.copy(right), QColor(Qt::white)) + 100);
        toggle.setChecked(true);
        const QImage on = look::painted(toggle, ground());
        EXPECT_GT(look::count(on, colors().trackOn), 300);
        EXPECT_GT(look::count(on.copy(right), QColor(Qt::white)),
                  look::count(on.copy(left), QColor(Qt::white)) + 100);
        EXPECT_GT(look::count(on, colors().text), 0);
        toggle.setEnabled(false);
        const QImage idle = look::painted(toggle, ground());
        EXPECT_EQ(look::count(idle, colors().trackOn), 0);
        EXPECT_EQ(look::count(idle, colors().text), 0);
    }
}

TEST_F(SurfaceTest, TheProgressIsSmallAndHasTheAccent) {
    change([](auto &state) { state.working = true; });
    show();
    settle();
    auto *spinner = controller.panel()->findChild<Spinner *>();
    EXPECT_EQ(spinner->size(), QSize(16, 16));
    const QImage image = look::painted(*spinner, ground());
    EXPECT_NE(image, look::reference(*spinner, ground(), [](QPainter &) {}));
    const TextLabel *beside = look::label(controller.panel(), QStringLiteral("Processing\u2026"));
    EXPECT_EQ(beside->x() - spinner->geometry().right() - 1, 8);
}

} // namespace quillmender
