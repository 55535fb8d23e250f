#include "PanelFixture.h"
#include "ui/ErrorLabel.h"

#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

namespace quillmender {

namespace {

class FocusTest : public PanelFixture {
  protected:
    void SetUp() override {
        model.runsAtOnce = true;
        model.change([](auto &state) { state.instruction = QStringLiteral("words"); });
        show();
        settle();
    }

    void fail() {
        change([](auto &state) { state.working = false; });
        change([](auto &state) { state.error = QStringLiteral("It failed."); });
    }

    Button *focus(const char *caption) {
        Button *found = button(QString::fromLatin1(caption));
        found->setFocus(Qt::TabFocusReason);
        return found;
    }

    QScrollArea *area() const { return controller.panel()->findChild<QScrollArea *>(); }

    bool isInView(const QWidget *control) const {
        const QRect place(control->mapTo(area()->viewport(), QPoint()), control->size());
        return area()->viewport()->rect().contains(place);
    }

    /// Another window of somebody else's takes the keyboard, and gives it back.
    void leaveAndComeBack() {
        QApplication::setActiveWindow(nullptr);
        QApplication::setActiveWindow(controller.panel());
    }
};

} // namespace

TEST_F(FocusTest, StaysOnTheControlThatStartedTheRun) {
    for (const char *caption : {"Simplify", "Formalize"}) {
        const Button *starter = focus(caption);
        const QSignalSpy moves(qApp, &QApplication::focusChanged);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        EXPECT_FALSE(starter->isEnabled());
        fail();
        EXPECT_TRUE(starter->isEnabled());
        EXPECT_TRUE(starter->hasFocus()) << caption;
        EXPECT_EQ(moves.count(), 0) << caption;
    }
}

TEST_F(FocusTest, NoKeyPressesAnythingWhileARunIsUnderWay) {
    focus("Generate");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    settle();
    model.calls.clear();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Enter, Qt::Key_Escape})
        QTest::keyClick(QApplication::focusWidget(), key);
    EXPECT_EQ(model.calls, QStringList());
    EXPECT_TRUE(controller.isVisible());
    EXPECT_EQ(model.state().instruction, QStringLiteral("words"));
}

TEST_F(FocusTest, TabGoesOnFromTheDisabledControl) {
    focus("Simplify");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    settle();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), editor());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    fail();
    EXPECT_TRUE(button(QStringLiteral("Close"))->hasFocus()) << "the user went there";
}

TEST_F(FocusTest, AKeyThatAlreadyWaitsStartsNoSecondRun) {
    for (const char *caption : {"Generate", "Simplify"}) {
        model.calls.clear();
        QWidget *starter = focus(caption);
        // Without a turn of the event loop between them.
        QTest::keyClick(starter, Qt::Key_Return);
        QTest::keyClick(starter, Qt::Key_Return);
        EXPECT_EQ(model.calls.size(), 1) << caption;
        fail();
    }
}

TEST_F(FocusTest, ComesBackToAWindowThatWasLeftMeanwhile) {
    const Button *starter = focus("Simplify");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    settle();
    leaveAndComeBack();
    EXPECT_FALSE(button(QStringLiteral("Close"))->hasFocus());
    fail();
    EXPECT_TRUE(starter->hasFocus());
}

TEST_F(FocusTest, AControlThatGoesHandsItToTheInstruction) {
    change([](auto &state) {
        state.error = QStringLiteral("No access.");
        state.granted = false;
    });
    focus("Request Accessibility Access");
    change([](auto &state) { state.error.reset(); });
    EXPECT_TRUE(editor()->hasFocus());
    EXPECT_EQ(area()->verticalScrollBar()->value(), 0);

    focus("Fix My Grammar");
    change([](auto &state) { state.actions.removeLast(); });
    EXPECT_TRUE(editor()->hasFocus());
}

TEST_F(FocusTest, IsScrolledIntoViewWhoeverGivesIt) {
    QWidget *top = button(QStringLiteral("Formalize"));
    QWidget *end = button(QStringLiteral("Generate"));
    const std::function<void(QWidget *)> ways[] = {
        [](QWidget *control) { control->setFocus(Qt::OtherFocusReason); },
        [](QWidget *control) { control->setFocus(Qt::ShortcutFocusReason); },
        [](QWidget *control) {
            QAccessible::queryAccessibleInterface(control)->actionInterface()->doAction(
                QAccessibleActionInterface::setFocusAction());
        },
        [this](QWidget *control) {
            QApplication::setActiveWindow(nullptr);
            control->setFocus();
            QApplication::setActiveWindow(controller.panel());
        },
    };
    for (const auto &give : ways) {
        EXPECT_FALSE(isInView(end));
        give(end);
        EXPECT_TRUE(isInView(end));
        EXPECT_FALSE(isInView(top));
        give(top);
        EXPECT_TRUE(isInView(top));
    }
}

TEST_F(FocusTest, AWindowThatWasLeftIsScrolledAsItWas) {
    focus("Generate");
    area()->verticalScrollBar()->setValue(0);
    leaveAndComeBack();
    EXPECT_EQ(area()->verticalScrollBar()->value(), 0);
}

TEST_F(FocusTest, TheMouseScrollsOnlyWhenItsButtonIsReleased) {
    QWidget *generate = button(QStringLiteral("Generate"));
    constexpr int visiblePart = 16;
    area()->verticalScrollBar()->setValue(generate->mapTo(area()->widget(), QPoint()).y() +
                                          visiblePart - area()->viewport()->height());
    ASSERT_FALSE(isInView(generate));
    QWindow *window = controller.panel()->windowHandle();
    const QPoint place = generate->mapTo(controller.panel(), QPoint(40, visiblePart / 2));
    model.runsAtOnce = false;
    QTest::mousePress(window, Qt::LeftButton, {}, place);
    EXPECT_TRUE(generate->hasFocus());
    EXPECT_FALSE(isInView(generate)) << "the release would miss it";
    QTest::mouseRelease(window, Qt::LeftButton, {}, place);
    EXPECT_EQ(model.calls.size(), 1);
    settle();
    EXPECT_TRUE(isInView(generate));
}

TEST_F(FocusTest, StartsWhereOneSeesItAlsoWithoutAnActionToPress) {
    struct {
        const char *control;
        bool granted;
    } const cases[] = {{"Request Accessibility Access", false}, {"Capture Again", true}};
    for (const auto &expected : cases) {
        controller.orderOut();
        model.change([&](auto &state) {
            state.preview.clear();
            state.error = QStringLiteral("It failed.");
            state.granted = expected.granted;
        });
        show();
        settle();
        const Button *control = button(QString::fromLatin1(expected.control));
        ASSERT_TRUE(control) << expected.control;
        EXPECT_TRUE(control->hasFocus()) << expected.control;
        EXPECT_TRUE(!area()->isAncestorOf(control) || isInView(control));
        EXPECT_EQ(area()->verticalScrollBar()->value(), 0) << "the news are seen as well";
    }
    // While a request runs, what is typed is for the instruction.
    controller.orderOut();
    model.change([](auto &state) { state.working = true; });
    show();
    settle();
    EXPECT_TRUE(editor()->hasFocus());
    EXPECT_TRUE(isInView(editor()));
}

TEST_F(FocusTest, WhatIsScrolledIntoViewHasAirAroundIt) {
    constexpr int air = 8;
    const auto place = [this](const QWidget *control) {
        return QRect(control->mapTo(area()->viewport(), QPoint()), control->size());
    };
    const Button *generate = focus("Generate");
    EXPECT_LE(place(generate).bottom() + air, area()->viewport()->height() - 1);
    change([](auto &state) { state.preview = QString(60, u'\n'); });
    area()->verticalScrollBar()->setValue(area()->verticalScrollBar()->maximum());
    const Button *first = focus("Formalize");
    EXPECT_GE(place(first).top(), air);
}

TEST_F(FocusTest, ProgressIsShownAndAKeyBringsTheControlBack) {
    Button *generate = focus("Generate");
    EXPECT_TRUE(isInView(generate));
    model.runsAtOnce = false;
    change([](auto &state) { state.working = true; });
    EXPECT_EQ(area()->verticalScrollBar()->value(), 0);
    EXPECT_FALSE(isInView(generate));
    change([](auto &state) { state.working = false; });
    QTest::keyClick(generate, Qt::Key_Control);
    EXPECT_EQ(area()->verticalScrollBar()->value(), 0);
    QTest::keyClick(generate, Qt::Key_Space);
    EXPECT_TRUE(isInView(generate));
}

TEST_F(FocusTest, AnErrorThatLeavesNoRoomForTheControlGetsIt) {
    focus("Generate");
    fail();
    EXPECT_EQ(area()->verticalScrollBar()->value(), 0);
    const QWidget *error = QApplication::focusWidget();
    EXPECT_TRUE(qobject_cast<const ErrorLabel *>(error));
    EXPECT_TRUE(isInView(error));
}

TEST_F(FocusTest, AnErrorDoesNotTakeItFromSomebodyWhoWrites) {
    editor()->setFocus();
    fail();
    EXPECT_TRUE(editor()->hasFocus());
    change([](auto &state) { state.error.reset(); });
    change([](auto &state) { state.instruction.clear(); });
    fail();
    EXPECT_FALSE(editor()->hasFocus());
}

TEST_F(FocusTest, TheNextCaptureBeginsAtTheFirstActionWhereItsPlaceWentAway) {
    focus("Generate");
    fail();
    change([](auto &state) { state.error.reset(); });
    EXPECT_TRUE(editor()->hasFocus()) << "a key does no harm there";
    show();
    EXPECT_TRUE(button(QStringLiteral("Formalize"))->hasFocus());
    EXPECT_EQ(area()->verticalScrollBar()->value(), 0);

    editor()->setFocus();
    show();
    EXPECT_TRUE(editor()->hasFocus()) << "the user went there";
}

TEST_F(FocusTest, TheNextCaptureTakesItFromNobodyWhoTypes) {
    focus("Generate");
    fail();
    change([](auto &state) { state.error.reset(); });
    QTest::keyClick(editor(), Qt::Key_A);
    show();
    EXPECT_TRUE(editor()->hasFocus());
}

} // namespace quillmender
