#include "FrameworksTest.h"
#include "doubles/appkit/StatusArea.h"
#include "platform/macos/MacPresence.h"

namespace quillmender {

namespace {

using doubles::StatusArea;
using testing::ElementsAre;

class StatusItemTest : public FrameworksTest {
  protected:
    StatusItem item() {
        StatusItem made;
        made.symbol = QStringLiteral("text.quote");
        made.accessibilityDescription = QStringLiteral("Quillmender");
        made.toolTip = QStringLiteral("The tip");
        made.menu = {{QStringLiteral("Transform"), QStringLiteral(" "),
                      controlModifier | optionModifier, false, [this] { chosen.append(0); }},
                     {QStringLiteral("Settings"), QStringLiteral(","), commandModifier, false,
                      [this] { chosen.append(1); }},
                     {QStringLiteral("Download"), {}, 0, true, {}}};
        return made;
    }

    StatusArea &area = StatusArea::shared();
    MacPresence presence;
    QList<int> chosen;
};

} // namespace

TEST_F(StatusItemTest, AccessoryPolicyIsSet) {
    presence.setAccessoryPolicy();
    EXPECT_THAT(calls(), ElementsAre("NSApplication setActivationPolicy 1"));
}

TEST_F(StatusItemTest, IsMadeWithVariableLengthThenItsImageThenItsMenu) {
    presence.showStatusItem(item());
    EXPECT_THAT(calls(), ElementsAre("NSStatusBar statusItemWithLength -1",
                                     "NSImage imageWithSystemSymbolName text.quote Quillmender",
                                     "NSStatusItem setMenu 3"));
    EXPECT_EQ(area.itemCount(), 1);
    EXPECT_EQ(area.length(), -1);
    EXPECT_EQ(area.symbol(), "text.quote");
    EXPECT_EQ(area.accessibilityDescription(), "Quillmender");
    EXPECT_EQ(area.toolTip(), "The tip");
}

TEST_F(StatusItemTest, MenuHasItsKeysModifiersAndHiddenItem) {
    presence.showStatusItem(item());
    const auto menu = area.menu();
    ASSERT_EQ(menu.size(), 3U);
    EXPECT_EQ(menu[0].title, "Transform");
    EXPECT_EQ(menu[0].keyEquivalent, " ");
    EXPECT_EQ(menu[0].modifiers, 0xC0000U);
    EXPECT_FALSE(menu[0].hidden);
    EXPECT_EQ(menu[1].keyEquivalent, ",");
    EXPECT_EQ(menu[1].modifiers, 0x100000U);
    EXPECT_EQ(menu[2].keyEquivalent, "");
    EXPECT_EQ(menu[2].modifiers, 0U);
    EXPECT_TRUE(menu[2].hidden);
}

TEST_F(StatusItemTest, ChosenItemRunsItsOwnHandler) {
    presence.showStatusItem(item());
    EXPECT_TRUE(area.choose(1));
    EXPECT_TRUE(area.choose(0));
    EXPECT_TRUE(area.choose(2)) << "without a handler nothing happens";
    EXPECT_EQ(chosen, QList<int>({1, 0}));
}

TEST_F(StatusItemTest, HandlerMayReplaceTheMenuThatItIsIn) {
    {
        StatusItem first = item();
        first.menu[0].handler = [this, own = QList<int>({7, 8})] {
            presence.showStatusItem(item());
            chosen = own;
        };
        presence.showStatusItem(first);
    }
    EXPECT_TRUE(area.choose(0));
    EXPECT_EQ(chosen, QList<int>({7, 8}));
    EXPECT_EQ(area.itemCount(), 1);
}

TEST_F(StatusItemTest, UpdateRetitlesAndShowsOneItem) {
    presence.updateStatusMenuItem(2, QStringLiteral("early"), false);
    presence.showStatusItem(item());
    presence.updateStatusMenuItem(2, QStringLiteral("Download Quillmender 2.0"), false);
    presence.updateStatusMenuItem(3, QStringLiteral("beyond"), false);
    presence.updateStatusMenuItem(-1, QStringLiteral("before"), false);
    EXPECT_EQ(area.menu()[2].title, "Download Quillmender 2.0");
    EXPECT_FALSE(area.menu()[2].hidden);
    EXPECT_EQ(area.menu()[0].title, "Transform");
}

TEST_F(StatusItemTest, ItemWithoutButtonStillHasItsMenu) {
    area.hasNoButtons = true;
    presence.showStatusItem(item());
    EXPECT_THAT(calls(),
                ElementsAre("NSStatusBar statusItemWithLength -1", "NSStatusItem setMenu 3"));
    EXPECT_EQ(area.menu().size(), 3U);
}

TEST_F(StatusItemTest, AnotherItemTakesThePlaceOfTheFirst) {
    presence.showStatusItem(item());
    StatusItem other = item();
    other.toolTip = QStringLiteral("Other");
    presence.showStatusItem(other);
    EXPECT_EQ(area.itemCount(), 1);
    EXPECT_EQ(area.toolTip(), "Other");
}

TEST_F(StatusItemTest, GoesWithThePresence) {
    {
        MacPresence shortLived;
        shortLived.showStatusItem(item());
        EXPECT_EQ(area.itemCount(), 1);
        calls();
    }
    EXPECT_THAT(calls(), ElementsAre("NSStatusBar removeStatusItem"));
    EXPECT_EQ(area.itemCount(), 0);
}

} // namespace quillmender
