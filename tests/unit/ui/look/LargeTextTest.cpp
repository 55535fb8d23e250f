#include "LookFixture.h"
#include "ui/ActionTile.h"
#include "ui/ErrorLabel.h"
#include "ui/PopUpButton.h"
#include "ui/SymbolView.h"
#include "ui/ToggleSwitch.h"

#include <QHelpEvent>
#include <QScrollArea>
#include <QStyleOptionComboBox>
#include <QToolTip>

namespace quillmender {

namespace {

/// A desktop with texts of 16 points, from before the first window on.
struct LargeFont {
    explicit LargeFont(int pixels = 21) {
        QFont large = before;
        large.setPixelSize(pixels);
        QApplication::setFont(large);
    }
    ~LargeFont() { QApplication::setFont(before); }
    LargeFont(const LargeFont &) = delete;
    LargeFont &operator=(const LargeFont &) = delete;

    QFont before = QApplication::font();
};

class TileTextTest : public PanelLookFixture {
  protected:
    QList<ActionTile *> tiles() const { return controller.panel()->findChildren<ActionTile *>(); }

    /// What the tile says of its texts because it does not show them in full.
    static QString hidden(ActionTile *tile) {
        QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), tile->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(tile, &help);
        const QString text = QToolTip::isVisible() ? QToolTip::text() : QString();
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 5000));
        return text;
    }

    void addAction(const char *title) {
        change([title](auto &state) {
            state.actions.append(PromptAction::custom(
                {QUuid::createUuid(), QString::fromUtf8(title), QStringLiteral("{{text}}")}));
        });
    }
};

class LargeTileTextTest : private LargeFont, public TileTextTest {};

/// With texts of 26 points.
struct HugeFont : LargeFont {
    HugeFont() : LargeFont(35) {}
};

class HugePanelTest : private HugeFont, public PanelLookFixture {};
class HugeSettingsTest : private HugeFont, public SettingsWindowFixture {};
class LargeSettingsTest : private LargeFont, public SettingsWindowFixture {};

} // namespace

TEST_F(TileTextTest, ATitleTakesTwoLinesBeforeItIsCut) {
    show();
    addAction("Rewrite as a release note for version 12");
    addAction("Rewrite as a release note for version 12 with highlights, fixes, known issues & "
              "thanks to everybody");
    EXPECT_EQ(hidden(tiles().at(7)).toStdString(), "");
    EXPECT_THAT(hidden(tiles().at(8)).toStdString(), testing::HasSubstr("everybody"));
    EXPECT_EQ(tiles().at(7)->height(), 72);
}

TEST_F(LargeTileTextTest, EveryStarterActionIsReadInFull) {
    show();
    settle();
    for (ActionTile *tile : tiles())
        EXPECT_EQ(hidden(tile).toStdString(), "") << tile->action().title().toStdString();
}

TEST_F(LargeTileTextTest, TheTileAndItsSymbolGrowWithTheText) {
    symbols.drawsSymbols = true;
    appearance.become(appearance.current);
    show();
    settle();
    QFont title = fontFor(TextStyle::body);
    title.setWeight(QFont::DemiBold);
    const int line = QFontMetrics(title).height();
    EXPECT_GT(line, 24);
    EXPECT_TRUE(symbols.asked.contains(QStringLiteral("globe %1").arg(line)));
    const int text =
        QFontMetrics(title).height() + 2 * QFontMetrics(fontFor(TextStyle::caption)).height();
    EXPECT_GE(tiles().first()->height(), text + 20);
}

TEST_F(HugePanelTest, AnErrorBeneathALongTextIsScrolledIntoView) {
    show();
    // It does not get the focus, with which it would be followed.
    button(QStringLiteral("Close"))->setFocus();
    change([](auto &state) {
        state.preview = QStringLiteral("some words that go on ").repeated(8);
        state.working = true;
    });
    change([](auto &state) {
        state.working = false;
        state.error = QStringLiteral("It failed. ").repeated(60);
    });
    const auto *error = controller.panel()->findChild<ErrorLabel *>();
    const QWidget *view = controller.panel()->findChild<QScrollArea *>()->viewport();
    EXPECT_TRUE(view->rect().contains(QRect(error->mapTo(view, QPoint()), error->size())));
}

TEST_F(HugeSettingsTest, TheChosenProviderIsReadInFull) {
    show();
    const auto *provider = window()->findChild<PopUpButton *>();
    QStyleOptionComboBox option;
    option.initFrom(provider);
    const QRect text = provider->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                         QStyle::SC_ComboBoxEditField, provider);
    EXPECT_GE(text.width(), provider->fontMetrics().horizontalAdvance(provider->currentText()));
}

TEST_F(LargeSettingsTest, SymbolsAndSwitchesGrowWithTheText) {
    show();
    const auto symbols = window()->findChildren<SymbolView *>();
    ASSERT_FALSE(symbols.isEmpty());
    EXPECT_EQ(symbols.first()->width(), QFontMetrics(fontFor(TextStyle::body)).height());
    auto *toggle = window()->findChild<ToggleSwitch *>();
    toggle->setChecked(false);
    const QImage image = look::painted(*toggle, theme.colors().window);
    int highest = 0;
    for (int x = image.width() - 40; x < image.width(); ++x)
        highest = std::max(
            highest, look::count(image.copy(x, 0, 1, image.height()), theme.colors().trackOff));
    EXPECT_GE(highest, 34);
}

} // namespace quillmender
