#include "SettingsFixture.h"
#include "model/ActionDocuments.h"

namespace quillmender {
namespace {

class ActionListTest : public SettingsFixture {
  protected:
    QList<BuiltInActionConfig> storedBuiltIns() {
        return decodeBuiltInActions(
            defaults.data(QStringLiteral("settings.builtInActions")).value_or(QByteArray()));
    }
    QList<CustomAction> storedCustom() {
        return decodeCustomActions(
            defaults.data(QStringLiteral("settings.customActions")).value_or(QByteArray()));
    }
};

TEST_F(ActionListTest, HidesAndShowsAgain) {
    store().hideBuiltInAction(TextAction::casual);
    EXPECT_EQ(store().visibleBuiltInActions().size(), 6);
    ASSERT_EQ(store().hiddenBuiltInActionItems().size(), 1);
    EXPECT_EQ(store().hiddenBuiltInActionItems().first().action, TextAction::casual);
    EXPECT_TRUE(storedBuiltIns().at(2).isHidden);
    restart();
    EXPECT_EQ(store().hiddenBuiltInActionItems().size(), 1);
}

TEST_F(ActionListTest, HidingEverythingLeavesTheCustomActions) {
    for (const TextAction action : allTextActions)
        store().hideBuiltInAction(action);
    EXPECT_TRUE(store().visibleActions().isEmpty());
    store().addCustomAction(QStringLiteral("Mine"), QStringLiteral("Do it"));
    ASSERT_EQ(store().visibleActions().size(), 1);
    EXPECT_EQ(store().visibleActions().first().title(), QStringLiteral("Mine"));
}

TEST_F(ActionListTest, RestoresTheStarterListAndKeepsCustomActions) {
    store().addCustomAction(QStringLiteral("Mine"), QStringLiteral("Do it"));
    store().updateBuiltInAction(
        {TextAction::simplify, QStringLiteral("S"), QStringLiteral("T"), true});
    EXPECT_EQ(store().builtInActions().at(1).title, QStringLiteral("S"));
    store().restoreAllBuiltInActions();
    EXPECT_EQ(store().builtInActions(), starterActions());
    EXPECT_EQ(storedBuiltIns(), starterActions());
    EXPECT_EQ(store().customActions().size(), 1);
}

TEST_F(ActionListTest, CustomActionsFollowTheBuiltInOnes) {
    store().addCustomAction(QStringLiteral(" Mine "), QStringLiteral("Do it"));
    const QList<PromptAction> actions = store().visibleActions();
    ASSERT_EQ(actions.size(), 8);
    EXPECT_EQ(actions.last().title(), QStringLiteral(" Mine "));
    EXPECT_EQ(storedCustom(), store().customActions());
}

TEST_F(ActionListTest, RemovesACustomActionForGood) {
    store().addCustomAction(QStringLiteral("A"), QStringLiteral("a"));
    store().addCustomAction(QStringLiteral("B"), QStringLiteral("b"));
    store().removeCustomAction(store().customActions().first().id);
    ASSERT_EQ(store().customActions().size(), 1);
    store().restoreAllBuiltInActions();
    restart();
    ASSERT_EQ(store().customActions().size(), 1);
    EXPECT_EQ(store().customActions().first().title, QStringLiteral("B"));
}

TEST_F(ActionListTest, RemovingAnUnknownActionRewritesTheDocument) {
    EXPECT_EQ(defaults.data(QStringLiteral("settings.customActions")), std::nullopt);
    store().removeCustomAction(QUuid::createUuid());
    EXPECT_EQ(defaults.data(QStringLiteral("settings.customActions")), QByteArray("[]"));
}

TEST_F(ActionListTest, EveryActionWithTheIdentifierIsRemoved) {
    const CustomAction twin{QUuid::createUuid(), QStringLiteral("A"), QStringLiteral("a")};
    const CustomAction other{QUuid::createUuid(), QStringLiteral("A"), QStringLiteral("a")};
    store().setCustomActions({twin, other, twin});
    store().removeCustomAction(twin.id);
    EXPECT_EQ(store().customActions(), QList<CustomAction>({other}));
    EXPECT_EQ(storedCustom(), QList<CustomAction>({other}));
}

TEST_F(ActionListTest, ANewActionIsTheLastWithAnIdentifierOfItsOwn) {
    store().addCustomAction(QStringLiteral(" A\n"), QStringLiteral(" {{text}} "));
    store().addCustomAction(QStringLiteral(" A\n"), QStringLiteral(" {{text}} "));
    const QList<CustomAction> actions = store().customActions();
    ASSERT_EQ(actions.size(), 2);
    EXPECT_NE(actions.first().id, actions.last().id);
    EXPECT_FALSE(actions.first().id.isNull());
    EXPECT_EQ(actions.last().title, QStringLiteral(" A\n"));
    EXPECT_EQ(actions.last().promptTemplate, QStringLiteral(" {{text}} "));
    store().addCustomAction(QStringLiteral("B"), QStringLiteral("b"));
    EXPECT_EQ(store().customActions().mid(0, 2), actions);
}

TEST_F(ActionListTest, AnUpdateReplacesTheWholeEntryInItsPlace) {
    const BuiltInActionConfig changed{TextAction::translateFrench, QStringLiteral(" T "),
                                      QStringLiteral(" P "), true};
    store().updateBuiltInAction(changed);
    auto expected = starterActions();
    expected[3] = changed;
    EXPECT_EQ(store().builtInActions(), expected);
    EXPECT_EQ(storedBuiltIns(), expected);
    store().updateBuiltInAction(starterActions().at(3));
    EXPECT_EQ(store().builtInActions(), starterActions());
    EXPECT_EQ(storedBuiltIns(), starterActions());
}

TEST_F(ActionListTest, HidingChangesNothingElse) {
    store().hideBuiltInAction(TextAction::fixGrammar);
    auto expected = starterActions();
    expected.last().isHidden = true;
    EXPECT_EQ(store().builtInActions(), expected);
    EXPECT_EQ(storedBuiltIns(), expected);
    store().hideBuiltInAction(TextAction::formalize);
    expected.first().isHidden = true;
    EXPECT_EQ(store().hiddenBuiltInActionItems(),
              QList<BuiltInActionConfig>({expected.first(), expected.last()}));
    EXPECT_EQ(store().visibleBuiltInActions(), expected.mid(1, 5));
}

TEST_F(ActionListTest, EachOperationWritesItsOwnListThoughItIsUnchanged) {
    const QString builtIns = QStringLiteral("settings.builtInActions");
    const QString custom = QStringLiteral("settings.customActions");
    store().restoreAllBuiltInActions();
    store().updateBuiltInAction(starterActions().first());
    store().hideBuiltInAction(TextAction::casual);
    store().hideBuiltInAction(TextAction::casual);
    EXPECT_TRUE(store().builtInActions().at(2).isHidden);
    store().removeCustomAction(QUuid::createUuid());
    EXPECT_EQ(defaults.writes, QStringList({builtIns, builtIns, builtIns, builtIns, custom}));
}

TEST_F(ActionListTest, OneEntryOfTwoIsUpdatedAndHidden) {
    const BuiltInActionConfig first{TextAction::casual, QStringLiteral("1"), QString(), false};
    const BuiltInActionConfig second{TextAction::casual, QStringLiteral("2"), QString(), false};
    store().setBuiltInActions({first, second});
    store().hideBuiltInAction(TextAction::casual);
    EXPECT_TRUE(store().builtInActions().first().isHidden);
    EXPECT_EQ(store().builtInActions().last(), second);
    store().updateBuiltInAction(first);
    EXPECT_EQ(store().builtInActions(), QList<BuiltInActionConfig>({first, second}));
}

TEST_F(ActionListTest, AnUnreadableDocumentStaysUntilTheNextChange) {
    defaults.setData(QStringLiteral("settings.builtInActions"), "{broken");
    defaults.setData(QStringLiteral("settings.customActions"), "[{\"title\":\"no id\"}]");
    EXPECT_EQ(store().builtInActions(), starterActions());
    EXPECT_TRUE(store().customActions().isEmpty());
    EXPECT_EQ(defaults.data(QStringLiteral("settings.builtInActions")), QByteArray("{broken"));
    store().hideBuiltInAction(TextAction::formalize);
    EXPECT_TRUE(storedBuiltIns().first().isHidden);
}

TEST_F(ActionListTest, UpdatingAnActionThatIsNotListedWritesNothing) {
    QList<BuiltInActionConfig> actions = starterActions();
    actions.removeLast();
    store().setBuiltInActions(actions);
    const auto document = defaults.data(QStringLiteral("settings.builtInActions"));
    store().updateBuiltInAction(
        {TextAction::fixGrammar, QStringLiteral("x"), QStringLiteral("y"), false});
    store().hideBuiltInAction(TextAction::fixGrammar);
    EXPECT_EQ(defaults.data(QStringLiteral("settings.builtInActions")), document);
    EXPECT_EQ(store().builtInActions(), actions);
}

} // namespace
} // namespace quillmender
