#include "SettingsWindowFixture.h"
#include "ui/SymbolView.h"

#include <QSignalSpy>

namespace quillmender {

namespace {

class ActionListWindowTest : public SettingsWindowFixture {
  protected:
    void removeRow(qsizetype row) {
        rows().at(row)->removeButton()->click();
        settle();
    }
};

} // namespace

TEST_F(ActionListWindowTest, EachActionHasItsRow) {
    store().addCustomAction(QStringLiteral("Mine"), QStringLiteral("x"));
    show();
    ASSERT_EQ(rows().size(), 8);
    for (qsizetype i = 0; i < 8; ++i) {
        const ActionRow *row = rows().at(i);
        EXPECT_EQ(row->item().id(), store().visibleActions().at(i).id());
        EXPECT_EQ(row->findChild<SymbolView *>()->symbol(), row->item().systemImage());
        QStringList shownTexts = {actionTitle(row->item().record())};
        if (i < 7)
            shownTexts.append(QStringLiteral("Starter"));
        EXPECT_EQ(texts(rows().at(i)), shownTexts);
        EXPECT_EQ(row->editButton()->accessibleDescription(), shownTexts.first());
        EXPECT_EQ(row->removeButton()->accessibleDescription(), shownTexts.first());
    }
    EXPECT_FALSE(shows("No actions available."));
}

TEST_F(ActionListWindowTest, RemovingEverythingSaysSoAndRestoringBringsTheStartersBack) {
    store().addCustomAction(QStringLiteral("Mine"), QStringLiteral("x"));
    show();
    EXPECT_FALSE(button("Restore Starter Actions"));
    removeRow(0);
    EXPECT_TRUE(button("Restore Starter Actions"));
    while (!rows().isEmpty())
        removeRow(rows().size() - 1);
    EXPECT_TRUE(shows("No actions available."));
    button("Restore Starter Actions")->click();
    settle();
    EXPECT_FALSE(shows("No actions available."));
    EXPECT_FALSE(button("Restore Starter Actions"));
    EXPECT_EQ(titles().size(), 7) << "the custom action is gone for good";
    EXPECT_EQ(store().builtInActions(), starterActions());
}

TEST_F(ActionListWindowTest, RemoveHidesAStarterAndDeletesACustomAction) {
    store().addCustomAction(QStringLiteral("Mine"), QStringLiteral("x"));
    show();
    removeRow(1);
    auto hidden = starterActions().at(1);
    hidden.isHidden = true;
    EXPECT_EQ(store().hiddenBuiltInActionItems(), QList<BuiltInActionConfig>({hidden}));
    removeRow(6);
    EXPECT_TRUE(store().customActions().isEmpty());
}

TEST_F(ActionListWindowTest, ADoubleClickRemovesOnlyOne) {
    show();
    QWidget *remove = rows().at(2)->removeButton();
    QTest::mouseClick(remove, Qt::LeftButton);
    settle();
    QTest::mouseDClick(remove, Qt::LeftButton);
    QTest::mouseRelease(remove, Qt::LeftButton);
    settle();
    EXPECT_EQ(rows().size(), 6);
    QTest::mouseClick(remove, Qt::LeftButton);
    settle();
    EXPECT_EQ(rows().size(), 5);
}

TEST_F(ActionListWindowTest, TypingElsewhereMakesAndChangesNoRow) {
    for (int i = 0; i < 100; ++i)
        store().addCustomAction(QStringLiteral("Custom %1").arg(i), QStringLiteral("{{text}}"));
    show();
    const QList<ActionRow *> before = rows();
    EXPECT_EQ(before.size(), 107);
    const QSignalSpy rendered(controller().view(), &SettingsView::rendered);
    replaceText(field("OpenAI Model"), QStringLiteral("abc"));
    EXPECT_GE(rendered.count(), 1);
    EXPECT_EQ(rows(), before);
    store().removeCustomAction(store().customActions().at(50).id);
    settle();
    EXPECT_EQ(rows(), before.mid(0, 106));
    EXPECT_EQ(titles().at(57).toStdString(), "Custom 51");
}

} // namespace quillmender
