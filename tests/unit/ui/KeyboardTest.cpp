#include "PanelFixture.h"
#include "ui/ErrorLabel.h"

#include <QKeyEvent>
#include <QScrollArea>

namespace quillmender {

namespace {

class KeyboardTest : public PanelFixture {
  protected:
    static QString focusName() {
        const QWidget *focus = QApplication::focusWidget();
        const auto *label = qobject_cast<const QLabel *>(focus);
        return label ? label->text() : (focus ? focus->accessibleName() : QString());
    }

    std::string walk(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QStringList names;
        const QWidget *start = QApplication::focusWidget();
        do {
            QTest::keyClick(QApplication::focusWidget(), key, modifiers);
            names.append(focusName());
        } while (QApplication::focusWidget() != start && names.size() < 100);
        return names.join(u'|').toStdString();
    }
};

} // namespace

TEST_F(KeyboardTest, StartsOnTheFirstActionAtEachShow) {
    show();
    EXPECT_EQ(focusName(), QStringLiteral("Formalize"));
    button(QStringLiteral("Close"))->setFocus();
    controller.orderOut();
    show();
    EXPECT_EQ(focusName(), QStringLiteral("Formalize"));
}

TEST_F(KeyboardTest, StartsInTheInstructionWhereThereIsNoAction) {
    model.change([](auto &state) { state.actions.clear(); });
    show();
    EXPECT_EQ(QApplication::focusWidget(), editor());
}

TEST_F(KeyboardTest, TabWalksEverythingInOrder) {
    model.change([](auto &state) {
        state.error = QStringLiteral("failed");
        state.granted = false;
        state.instruction = QStringLiteral("do it");
    });
    show();
    QStringList expected = {QStringLiteral("failed"),
                            QStringLiteral("Request Accessibility Access")};
    for (const PromptAction &action : model.state().actions)
        expected.append(action.title());
    expected.append({QStringLiteral("Generate From Prompt"), QStringLiteral("Generate"),
                     QStringLiteral("Capture Again"), QStringLiteral("Settings"),
                     QStringLiteral("Close")});
    controller.panel()->findChild<ErrorLabel *>()->setFocus();
    QStringList forwards = expected.mid(1);
    forwards.append(expected.first());
    EXPECT_EQ(walk(Qt::Key_Tab, Qt::NoModifier), forwards.join(u'|').toStdString());

    const QStringList backwards(expected.crbegin(), expected.crend());
    EXPECT_EQ(walk(Qt::Key_Backtab, Qt::ShiftModifier), backwards.join(u'|').toStdString());
}

TEST_F(KeyboardTest, TabWalksActionsThatCameLater) {
    show();
    change([](auto &state) {
        state.actions.append(
            PromptAction::custom({QUuid::createUuid(), QStringLiteral("Mine"), QString()}));
    });
    EXPECT_THAT(walk(Qt::Key_Tab, Qt::NoModifier),
                testing::HasSubstr("Fix My Grammar|Mine|Generate From Prompt"));
}

TEST_F(KeyboardTest, SpaceAndEnterPressTheFocusedButton) {
    show();
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        model.calls.clear();
        button(QStringLiteral("Simplify"))->setFocus();
        QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_EQ(model.calls, QStringList(QStringLiteral("run builtin-simplify"))) << key;
    }
}

TEST_F(KeyboardTest, HeldEnterPressesOnce) {
    show();
    Button *simplify = button(QStringLiteral("Simplify"));
    for (int i = 0; i < 5; ++i) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), i > 0);
        QCoreApplication::sendEvent(simplify, &press);
    }
    EXPECT_EQ(model.calls.size(), 1);
}

TEST_F(KeyboardTest, EnterInTheInstructionIsALineBreak) {
    show();
    QTest::keyClicks(editor(), QStringLiteral("a"));
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(model.state().instruction, QStringLiteral("a\n"));
    EXPECT_EQ(model.calls, QStringList());
}

TEST_F(KeyboardTest, NoKeyClosesThePanel) {
    show();
    QTest::keyClick(editor(), Qt::Key_Escape);
    QTest::keyClick(button(QStringLiteral("Settings")), Qt::Key_Escape);
    EXPECT_TRUE(controller.isVisible());
    EXPECT_EQ(model.calls, QStringList());
}

TEST_F(KeyboardTest, TitlesMakeNoShortcuts) {
    model.change([](auto &state) {
        state.actions = {PromptAction::custom(
            {QUuid::createUuid(), QStringLiteral("Research &Development"), QString()})};
    });
    show();
    QTest::keyClick(button(QStringLiteral("Close")), Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(model.calls, QStringList());
    EXPECT_TRUE(button(QStringLiteral("Research &Development")));
}

TEST_F(KeyboardTest, TypingBringsTheInstructionIntoView) {
    show();
    settle();
    const auto bottom = [this] {
        return editor()->mapTo(controller.panel(), QPoint(0, editor()->height())).y();
    };
    const int edge = controller.panel()->findChild<QScrollArea *>()->geometry().bottom() + 1;
    EXPECT_TRUE(QTest::qWaitFor([&] { return bottom() > edge; }, 5000));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
    EXPECT_LE(bottom(), edge);
}

} // namespace quillmender
