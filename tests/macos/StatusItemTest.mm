#include "FrameworksTest.h"
#include "doubles/appkit/StatusArea.h"
#include "platform/macos/MacStatusItem.h"

namespace quillmender {

namespace {

using doubles::StatusArea;
using testing::ElementsAre;

class StatusItemTest : public FrameworksTest {
  protected:
    StatusItemContents contents() {
        StatusItemContents made;
        made.symbol = QStringLiteral("text.quote");
        made.accessibilityDescription = QStringLiteral("Quillmender");
        made.toolTip = QStringLiteral("The tip");
        made.menu = {
            {QStringLiteral("Transform"),
             QKeyCombination(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space), false,
             [this] { chosen.append(0); }},
            {QStringLiteral("Settings"), QKeyCombination(Qt::MetaModifier, Qt::Key_Comma), false,
             [this] { chosen.append(1); }},
            {QStringLiteral("Download"), std::nullopt, true, {}},
            {QStringLiteral("Quit"), QKeyCombination(Qt::MetaModifier, Qt::Key_Q), false, {}}};
        return made;
    }

    StatusArea &area = StatusArea::shared();
    MacStatusItem item;
    QList<int> chosen;
};

} // namespace

TEST_F(StatusItemTest, IsMadeWithVariableLengthThenItsImageThenItsMenu) {
    item.show(contents());
    EXPECT_THAT(calls(), ElementsAre("NSStatusBar statusItemWithLength -1",
                                     "NSImage imageWithSystemSymbolName text.quote Quillmender",
                                     "NSStatusItem setMenu 4"));
    EXPECT_EQ(area.itemCount(), 1);
    EXPECT_EQ(area.length(), -1);
    EXPECT_EQ(area.symbol(), "text.quote");
    EXPECT_EQ(area.accessibilityDescription(), "Quillmender");
    EXPECT_EQ(area.toolTip(), "The tip");
}

TEST_F(StatusItemTest, MenuHasItsKeysModifiersAndHiddenItem) {
    item.show(contents());
    const auto menu = area.menu();
    ASSERT_EQ(menu.size(), 4U);
    EXPECT_EQ(menu[0].title, "Transform");
    EXPECT_EQ(menu[0].keyEquivalent, " ");
    EXPECT_EQ(menu[0].modifiers, 0xC0000U);
    EXPECT_FALSE(menu[0].hidden);
    EXPECT_EQ(menu[1].keyEquivalent, ",");
    EXPECT_EQ(menu[1].modifiers, 0x100000U);
    EXPECT_EQ(menu[2].keyEquivalent, "");
    EXPECT_EQ(menu[2].modifiers, 0U);
    EXPECT_TRUE(menu[2].hidden);
    EXPECT_EQ(menu[3].keyEquivalent, "q") << "a capital letter would want Shift";
    EXPECT_EQ(menu[3].modifiers, 0x100000U);
}

TEST_F(StatusItemTest, ChosenItemRunsItsOwnHandler) {
    item.show(contents());
    EXPECT_TRUE(area.choose(1));
    EXPECT_TRUE(area.choose(0));
    EXPECT_TRUE(area.choose(2)) << "without a handler nothing happens";
    EXPECT_EQ(chosen, QList<int>({1, 0}));
}

TEST_F(StatusItemTest, HandlerMayReplaceTheMenuThatItIsIn) {
    {
        StatusItemContents first = contents();
        first.menu[0].handler = [this, own = QList<int>({7, 8})] {
            item.show(contents());
            chosen = own;
        };
        item.show(first);
    }
    EXPECT_TRUE(area.choose(0));
    EXPECT_EQ(chosen, QList<int>({7, 8}));
    EXPECT_EQ(area.itemCount(), 1);
}

TEST_F(StatusItemTest, UpdateRetitlesAndShowsOneItem) {
    item.updateMenuItem(2, QStringLiteral("early"), false);
    item.show(contents());
    item.updateMenuItem(2, QStringLiteral("Download Quillmender 2.0"), false);
    item.updateMenuItem(4, QStringLiteral("beyond"), false);
    item.updateMenuItem(-1, QStringLiteral("before"), false);
    EXPECT_EQ(area.menu()[2].title, "Download Quillmender 2.0");
    EXPECT_FALSE(area.menu()[2].hidden);
    EXPECT_EQ(area.menu()[0].title, "Transform");
}

TEST_F(StatusItemTest, ItemWithoutButtonStillHasItsMenu) {
    area.hasNoButtons = true;
    item.show(contents());
    EXPECT_THAT(calls(),
                ElementsAre("NSStatusBar statusItemWithLength -1", "NSStatusItem setMenu 4"));
    EXPECT_EQ(area.menu().size(), 4U);
}

TEST_F(StatusItemTest, AnotherItemTakesThePlaceOfTheFirst) {
    item.show(contents());
    StatusItemContents other = contents();
    other.toolTip = QStringLiteral("Other");
    calls();
    item.show(other);
    const auto made = calls();
    ASSERT_GE(made.size(), 2U);
    EXPECT_EQ(made[0], "NSStatusBar removeStatusItem");
    EXPECT_EQ(made[1], "NSStatusBar statusItemWithLength -1");
    EXPECT_EQ(area.itemCount(), 1);
    EXPECT_EQ(area.toolTip(), "Other");
}

TEST_F(StatusItemTest, GoesWithItsObject) {
    {
        MacStatusItem shortLived;
        shortLived.show(contents());
        EXPECT_EQ(area.itemCount(), 1);
        calls();
    }
    EXPECT_THAT(calls(), ElementsAre("NSStatusBar removeStatusItem"));
    EXPECT_EQ(area.itemCount(), 0);
}

} // namespace quillmender
