#include "AccessibleTree.h"
#include "PanelFixture.h"

#include <QAccessible>
#include <QScrollArea>

namespace quillmender {

namespace {

class AccessibilityTest : public PanelFixture {
  protected:
    static QAccessibleInterface *accessible(QWidget *widget) {
        return QAccessible::queryAccessibleInterface(widget);
    }
};

} // namespace

TEST_F(AccessibilityTest, ActionIsAButtonWithTitleAndSubtitle) {
    show();
    for (const PromptAction &action : model.state().actions) {
        QAccessibleInterface *interface = accessible(button(action.title()));
        EXPECT_EQ(interface->role(), QAccessible::PushButton);
        EXPECT_EQ(interface->text(QAccessible::Name), action.title());
        EXPECT_EQ(interface->text(QAccessible::Description), action.subtitle());
    }
}

TEST_F(AccessibilityTest, EveryVisibleTextIsAName) {
    model.change([](auto &state) {
        state.error = QStringLiteral("It failed.");
        state.granted = false;
    });
    show();
    for (auto *label : controller.panel()->findChildren<TextLabel *>())
        EXPECT_EQ(accessible(label)->text(QAccessible::Name), label->text());
    for (const char *caption :
         {"Request Accessibility Access", "Generate", "Capture Again", "Settings", "Close"})
        EXPECT_EQ(accessible(button(QString::fromLatin1(caption)))->text(QAccessible::Name),
                  QString::fromLatin1(caption));
    EXPECT_EQ(accessible(editor())->role(), QAccessible::EditableText);
    EXPECT_EQ(accessible(editor())->text(QAccessible::Name).toStdString(), "Generate From Prompt");
}

TEST_F(AccessibilityTest, AChildThatHasGoneIsNoChild) {
    show();
    EXPECT_GT(expectBoundedTree(accessible(controller.panel())), 40);
    controller.orderOut();
    EXPECT_GT(expectBoundedTree(accessible(controller.panel())), 40);
}

TEST_F(AccessibilityTest, TheScrollRegionHasTheSameChildrenWhileThePanelIsHidden) {
    show();
    QAccessibleInterface *region = accessible(controller.panel()->findChild<QScrollArea *>());
    const int shown = region->childCount();
    QAccessibleInterface *last = region->child(shown - 1);
    EXPECT_EQ(region->indexOfChild(last), shown - 1);
    controller.orderOut();
    EXPECT_EQ(region->childCount(), shown);
    EXPECT_EQ(region->child(shown - 1), last);
}

TEST_F(AccessibilityTest, PressThroughTheBusRunsTheAction) {
    show();
    QAccessibleInterface *interface = accessible(button(QStringLiteral("Simplify")));
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !model.calls.isEmpty(); }, 5000));
    EXPECT_EQ(model.calls, QStringList(QStringLiteral("run builtin-simplify")));
}

TEST_F(AccessibilityTest, DisabledStateIsTold) {
    show();
    EXPECT_FALSE(accessible(button(QStringLiteral("Simplify")))->state().disabled);
    change([](auto &state) { state.working = true; });
    EXPECT_TRUE(accessible(button(QStringLiteral("Simplify")))->state().disabled);
}

} // namespace quillmender
