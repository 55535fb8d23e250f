#include "SettingsWindowFixture.h"

namespace quillmender {

namespace {

class ActionListFocusTest : public SettingsWindowFixture {
  protected:
    static void press(Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        settle();
    }

    static bool isOnAButton() {
        return qobject_cast<QAbstractButton *>(QApplication::focusWidget()) != nullptr;
    }
};

} // namespace

TEST_F(ActionListFocusTest, RepeatedKeysRemoveOneAction) {
    show();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
        const auto before = rows().size();
        rows().at(1)->removeButton()->setFocus();
        for (int i = 0; i < 4; ++i)
            press(key);
        EXPECT_EQ(rows().size(), before - 1);
        EXPECT_EQ(QApplication::focusWidget(), rows().at(1));
        EXPECT_FALSE(isOnAButton());
    }
}

TEST_F(ActionListFocusTest, TabGoesOnWithTheActionInItsPlace) {
    show();
    rows().at(2)->removeButton()->setFocus();
    press(Qt::Key_Space);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), rows().at(2)->editButton());
    rows().at(2)->removeButton()->setFocus();
    press(Qt::Key_Space);
    press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), rows().at(1)->removeButton());
}

TEST_F(ActionListFocusTest, TheLastOnesHandItUpAndThenToWhatIsSaid) {
    show();
    rows().last()->removeButton()->setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), rows().last());
    while (!rows().isEmpty()) {
        rows().last()->removeButton()->setFocus();
        press(Qt::Key_Space);
        ASSERT_TRUE(QApplication::focusWidget());
        EXPECT_FALSE(isOnAButton());
        press(Qt::Key_Space);
        press(Qt::Key_Return);
        EXPECT_TRUE(window()->isVisible());
        EXPECT_FALSE(sheet());
    }
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), button("New Action"));
}

TEST_F(ActionListFocusTest, RestoringClosesNothing) {
    for (const bool isEmpty : {false, true}) {
        show();
        do {
            rows().first()->removeButton()->click();
            settle();
        } while (isEmpty && !rows().isEmpty());
        button("Restore Starter Actions")->setFocus();
        for (int i = 0; i < 3; ++i)
            press(Qt::Key_Space);
        EXPECT_TRUE(window()->isVisible());
        EXPECT_FALSE(sheet());
        EXPECT_TRUE(rows().contains(QApplication::focusWidget()));
    }
}

TEST_F(ActionListFocusTest, ARemovalWithoutTheKeyboardLeavesItWhereItIs) {
    show();
    field("OpenAI Model")->setFocus();
    rows().first()->removeButton()->click();
    settle();
    EXPECT_TRUE(field("OpenAI Model")->hasFocus());
}

} // namespace quillmender
