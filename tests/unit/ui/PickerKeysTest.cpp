#include "PanelFixture.h"
#include "ui/ErrorLabel.h"
#include "ui/ScrollRegion.h"

#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBlock>

namespace quillmender {

namespace {

class PickerKeysTest : public PanelFixture {
  protected:
    static void send(QEvent::Type type, Qt::Key key, const QString &text = {}, bool repeats = false,
                     quint64 time = 0) {
        QKeyEvent event(type, key, Qt::NoModifier, text, repeats);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    }

    /// As a held key does: each time a release and a press.
    static void repeat(Qt::Key key, const QString &text) {
        for (int i = 0; i < 5; ++i) {
            send(QEvent::KeyRelease, key, text, true);
            send(QEvent::KeyPress, key, text, true);
        }
    }

    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    std::string after(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            press(key);
        return QApplication::focusWidget()->accessibleName().toStdString();
    }

    void focus(const char *caption) { button(QString::fromLatin1(caption))->setFocus(); }
};

} // namespace

TEST_F(PickerKeysTest, TheFirstKeyMayComeBeforeTheWindowIsActive) {
    show();
    QWidget *const focus = controller.panel()->focusWidget();
    QApplication::setActiveWindow(nullptr);
    ASSERT_EQ(QApplication::focusWidget(), nullptr);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QCoreApplication::sendEvent(focus, &key);
    EXPECT_EQ(editor()->exactText(), QStringLiteral("a"));
}

TEST_F(PickerKeysTest, ArrowsMoveInTheGridAsTheEyeDoes) {
    show();
    using enum Qt::Key;
    EXPECT_EQ(after({Key_Down}), "Make It Casual");
    EXPECT_EQ(after({Key_Right}), "Translate to French");
    EXPECT_EQ(after({Key_Right}), "Translate to French") << "it does not go round";
    EXPECT_EQ(after({Key_Up}), "Simplify");
    EXPECT_EQ(after({Key_Up}), "Simplify");
    EXPECT_EQ(after({Key_Left}), "Formalize");
    EXPECT_EQ(after({Key_Left}), "Formalize");
    EXPECT_EQ(after({Key_Down, Key_Down, Key_Down}), "Fix My Grammar");
    EXPECT_EQ(after({Key_Right}), "Fix My Grammar");
    EXPECT_EQ(model.calls, QStringList());
}

TEST_F(PickerKeysTest, DownFromTheLastRowLeadsToTheInstructionAndUpBackToTheColumn) {
    show();
    using enum Qt::Key;
    EXPECT_EQ(after({Key_Down, Key_Down, Key_Down, Key_Down}), "Generate From Prompt");
    EXPECT_EQ(after({Key_Up}), "Fix My Grammar");
    focus("Translate to English");
    EXPECT_EQ(after({Key_Down}), "Generate From Prompt");
    EXPECT_EQ(after({Key_Up}), "Translate to English") << "right stays right";
}

TEST_F(PickerKeysTest, UpLeavesTheInstructionFromItsFirstLineOnly) {
    model.change([](auto &state) { state.instruction = QStringLiteral("one\ntwo"); });
    show();
    using enum Qt::Key;
    editor()->setFocus();
    editor()->moveCursor(QTextCursor::End);
    EXPECT_EQ(after({Key_Up}), "Generate From Prompt");
    send(QEvent::KeyPress, Key_Up);
    EXPECT_EQ(after({}), "Fix My Grammar");
    editor()->setFocus();
    editor()->moveCursor(QTextCursor::End);
    send(QEvent::KeyPress, Key_Up);
    repeat(Key_Up, {});
    EXPECT_EQ(after({}), "Generate From Prompt") << "a held key stops at the edge";
    EXPECT_EQ(after({Key_Down, Key_Down, Key_Right, Key_Left}), "Generate From Prompt");
}

TEST_F(PickerKeysTest, AnArrowWithAnotherKeyMovesAsTheEyeDoesToo) {
    show();
    for (const auto modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
        button(QStringLiteral("Formalize"))->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down, modifier);
        EXPECT_TRUE(button(QStringLiteral("Make It Casual"))->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, modifier);
        EXPECT_TRUE(button(QStringLiteral("Make It Casual"))->hasFocus()) << "there is nothing";
    }
    editor()->setFocus();
    QTest::keyClick(editor(), Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_TRUE(editor()->hasFocus()) << "the text's own";
}

TEST_F(PickerKeysTest, ArrowsGoOnBesidesTheGrid) {
    model.change([](auto &state) {
        state.instruction = QStringLiteral("words");
        state.error = QStringLiteral("It failed.");
        state.granted = false;
    });
    show();
    using enum Qt::Key;
    EXPECT_EQ(after({Key_Up}), "Request Accessibility Access");
    press(Key_Up);
    EXPECT_TRUE(controller.panel()->findChild<ErrorLabel *>()->hasFocus());
    EXPECT_EQ(after({Key_Down, Key_Down}), "Formalize");
    focus("Generate");
    EXPECT_EQ(after({Key_Down}), "Close");
    EXPECT_EQ(after({Key_Right}), "Close");
    EXPECT_EQ(after({Key_Left}), "Settings");
    EXPECT_EQ(after({Key_Left, Key_Left}), "Capture Again");
    EXPECT_EQ(after({Key_Down}), "Capture Again");
    EXPECT_EQ(after({Key_Up}), "Generate From Prompt");
}

TEST_F(PickerKeysTest, UpFromTheFirstRowShowsTheTop) {
    show();
    settle();
    QScrollBar *bar = controller.panel()->findChild<QScrollArea *>()->verticalScrollBar();
    bar->setValue(40);
    press(Qt::Key_Up);
    EXPECT_EQ(bar->value(), 0);
}

TEST_F(PickerKeysTest, APageMovesTheFocusSoThatItStaysInView) {
    show();
    controller.panel()->setFixedHeight(400);
    settle();
    auto *region = controller.panel()->findChild<ScrollRegion *>();
    ASSERT_LT(region->viewport()->height(), 300);
    using enum Qt::Key;
    focus("Simplify");
    EXPECT_EQ(after({Key_PageDown}), "Translate to English");
    EXPECT_TRUE(region->shows(QApplication::focusWidget()));
    EXPECT_EQ(after({Key_PageDown}), "Generate From Prompt");
    EXPECT_EQ(after({Key_PageDown}), "Generate From Prompt") << "the text's own";
    EXPECT_TRUE(region->shows(editor()));
    EXPECT_EQ(after({Key_PageUp}), "Translate to English") << "right stays right";
    EXPECT_TRUE(region->shows(QApplication::focusWidget()));
    EXPECT_EQ(after({Key_PageUp}), "Simplify");
    press(Key_PageUp);
    EXPECT_EQ(region->verticalScrollBar()->value(), 0) << "nothing precedes it but the text";
}

TEST_F(PickerKeysTest, APageLeadsToTheNextControlThoughItIsFartherAway) {
    model.change([](auto &state) { state.instruction = QStringLiteral("words"); });
    show();
    controller.panel()->setFixedHeight(300);
    settle();
    using enum Qt::Key;
    focus("Formalize");
    EXPECT_EQ(after({Key_PageDown}), "Make It Casual");
    focus("Generate");
    EXPECT_EQ(after({Key_PageDown}), "Close");
    EXPECT_EQ(after({Key_PageDown}), "Close");
}

TEST_F(PickerKeysTest, WhatIsTypedOnAButtonGoesToTheInstruction) {
    show();
    for (const char *caption : {"Formalize", "Capture Again", "Close"}) {
        focus(caption);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("a"));
        EXPECT_TRUE(editor()->hasFocus()) << caption;
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("b "));
    }
    EXPECT_EQ(model.state().instruction, QStringLiteral("ab ab ab "));
    EXPECT_EQ(model.calls, QStringList());
}

TEST_F(PickerKeysTest, AHeldLetterRepeatsFromTheFirstOn) {
    show();
    send(QEvent::KeyPress, Qt::Key_A, QStringLiteral("a"));
    repeat(Qt::Key_A, QStringLiteral("a"));
    send(QEvent::KeyRelease, Qt::Key_A, QStringLiteral("a"));
    EXPECT_EQ(model.state().instruction, QStringLiteral("aaaaaa"));
}

TEST_F(PickerKeysTest, ChordsAreNotTyped) {
    show();
    for (const auto modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, modifier);
    press(Qt::Key_Escape);
    press(Qt::Key_Backspace);
    press(Qt::Key_F5);
    EXPECT_EQ(model.state().instruction, QString());
    EXPECT_TRUE(button(QStringLiteral("Formalize"))->hasFocus());
}

TEST_F(PickerKeysTest, WhatIsTypedDuringARunGoesToTheInstruction) {
    model.runsAtOnce = true;
    show();
    press(Qt::Key_Return);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Space, Qt::Key_Return})
        press(key);
    EXPECT_TRUE(button(QStringLiteral("Formalize"))->hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
    EXPECT_TRUE(editor()->hasFocus());
    EXPECT_EQ(model.state().instruction, QStringLiteral("x"));
    button(QStringLiteral("Formalize"))->setFocus();
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("\u00e9"));
    QCoreApplication::sendEvent(QApplication::focusWidget(), &composed);
    EXPECT_EQ(model.state().instruction, QStringLiteral("x\u00e9"));
    EXPECT_EQ(model.calls.size(), 1);
}

TEST_F(PickerKeysTest, ThePanelStaysWhileSomethingIsTypedIntoIt) {
    model.runsAtOnce = true;
    show();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
    controller.orderOut();
    EXPECT_TRUE(controller.panel()->isVisible());
    EXPECT_FALSE(controller.isVisible()) << "for everybody else it has gone";
    const QString before = model.state().instruction;
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("y"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space})
        press(key);
    controller.orderOut();
    EXPECT_TRUE(controller.panel()->isVisible()) << "a blank is typed too";
    EXPECT_EQ(model.state().instruction, before);
    QTest::mouseClick(button(QStringLiteral("Settings")), Qt::LeftButton);
    EXPECT_EQ(model.calls.size(), 0) << "what closes takes no click";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !controller.panel()->isVisible(); }, 20000));

    show();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("z"));
    controller.orderOut();
    show();
    EXPECT_TRUE(controller.isVisible()) << "it was called for again";
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("z"));
    EXPECT_TRUE(model.state().instruction.endsWith(QStringLiteral("zz")));
}

TEST_F(PickerKeysTest, ThePanelThatIsClosedByAKeyOrAClickGoesAtOnce) {
    show();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
    press(Qt::Key_Escape);
    controller.orderOut();
    EXPECT_FALSE(controller.panel()->isVisible());
    show();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("x"));
    QTest::mouseClick(button(QStringLiteral("Settings")), Qt::LeftButton);
    controller.orderOut();
    EXPECT_FALSE(controller.panel()->isVisible());
    show();
    QInputMethodEvent nothing;
    QCoreApplication::sendEvent(button(QStringLiteral("Formalize")), &nothing);
    controller.orderOut();
    EXPECT_FALSE(controller.panel()->isVisible());
}

TEST_F(PickerKeysTest, AKeyThatWasDownWhenThePanelCamePressesNothing) {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_A}) {
        const QString text = key == Qt::Key_A ? QStringLiteral("a") : QStringLiteral(" ");
        show();
        repeat(key, text);
        send(QEvent::KeyRelease, key, text);
        EXPECT_EQ(model.calls, QStringList()) << key;
        editor()->setFocus();
        repeat(key, text);
        EXPECT_EQ(model.state().instruction, QString()) << key;
        controller.orderOut();
    }
    show();
    press(Qt::Key_Space);
    EXPECT_EQ(model.calls.size(), 1) << "a new press counts";
}

TEST_F(PickerKeysTest, ARepeatThatComesInTwoPartsIsNoNewPress) {
    constexpr quint32 spaceKey = 65;
    ownWindows.keysDown = {spaceKey};
    ownWindows.keysDownNow = {spaceKey};
    show();
    const auto strike = [](QEvent::Type type) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, spaceKey, 0, 0, QStringLiteral(" "));
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    };
    for (int i = 0; i < 3; ++i) {
        strike(QEvent::KeyRelease);
        strike(QEvent::KeyPress);
    }
    EXPECT_EQ(model.calls, QStringList());
    ownWindows.keysDownNow = {};
    strike(QEvent::KeyRelease);
    EXPECT_EQ(model.calls, QStringList());
    strike(QEvent::KeyPress);
    strike(QEvent::KeyRelease);
    EXPECT_EQ(model.calls.size(), 1) << "it began here";
}

TEST_F(PickerKeysTest, AKeyThatTheServerHasSaidToBeDownIsNotPressed) {
    constexpr quint32 returnKey = 36;
    constexpr quint32 letterKey = 38;
    ownWindows.keysDown = {returnKey};
    show();
    const auto strike = [](QEvent::Type type, Qt::Key key, quint32 code, const QString &text) {
        QKeyEvent event(type, key, Qt::NoModifier, code, 0, 0, text);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    };
    const QString line = QStringLiteral("\r");
    // As the toolkit takes it that has not seen the press.
    for (int i = 0; i < 3; ++i)
        strike(QEvent::KeyPress, Qt::Key_Return, returnKey, line);
    EXPECT_EQ(model.calls, QStringList());
    strike(QEvent::KeyPress, Qt::Key_A, letterKey, QStringLiteral("a"));
    strike(QEvent::KeyPress, Qt::Key_Return, returnKey, line);
    EXPECT_EQ(model.state().instruction, QStringLiteral("a"));
    strike(QEvent::KeyRelease, Qt::Key_Return, returnKey, line);
    strike(QEvent::KeyPress, Qt::Key_Return, returnKey, line);
    EXPECT_EQ(model.state().instruction, QStringLiteral("a\n")) << "a new press counts";
}

TEST_F(PickerKeysTest, AKeyThatWasPressedBeforeThePanelWasLeftCountsNoMore) {
    show();
    send(QEvent::KeyPress, Qt::Key_Space, QStringLiteral(" "));
    QApplication::setActiveWindow(nullptr);
    QApplication::setActiveWindow(controller.panel());
    repeat(Qt::Key_Space, QStringLiteral(" "));
    send(QEvent::KeyRelease, Qt::Key_Space, QStringLiteral(" "));
    EXPECT_EQ(model.calls, QStringList());
    send(QEvent::KeyPress, Qt::Key_A, QStringLiteral("a"));
    QApplication::setActiveWindow(nullptr);
    QApplication::setActiveWindow(controller.panel());
    repeat(Qt::Key_A, QStringLiteral("a"));
    EXPECT_EQ(model.state().instruction, QStringLiteral("a"));
}

TEST_F(PickerKeysTest, AnInputMethodComposesIntoTheInstruction) {
    show();
    QWidget *tile = QApplication::focusWidget();
    QInputMethodQueryEvent query(Qt::ImEnabled | Qt::ImCursorRectangle);
    QCoreApplication::sendEvent(tile, &query);
    EXPECT_TRUE(query.value(Qt::ImEnabled).toBool());
    const QRect caret = query.value(Qt::ImCursorRectangle).toRectF().toRect();
    const QRect field(tile->mapFromGlobal(editor()->mapToGlobal(QPoint())), editor()->size());
    EXPECT_TRUE(field.contains(caret));

    QInputMethodEvent composing(QStringLiteral("\u3131"), {});
    QCoreApplication::sendEvent(tile, &composing);
    EXPECT_TRUE(tile->hasFocus()) << "a change would end the composition";
    EXPECT_EQ(editor()->textCursor().block().layout()->preeditAreaText(), QStringLiteral("\u3131"));
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("\uac00"));
    QCoreApplication::sendEvent(tile, &composed);
    EXPECT_TRUE(editor()->hasFocus());
    EXPECT_EQ(model.state().instruction, QStringLiteral("\uac00"));
    EXPECT_EQ(model.calls, QStringList());
}

TEST_F(PickerKeysTest, WhatAClickHasEndedIsNotComposedTwice) {
    const QString syllable = QStringLiteral("\uac00");
    QInputMethodEvent composing(syllable, {});
    QInputMethodEvent commit;
    commit.setCommitString(syllable);
    // By the click itself, before the focus moves, or by the focus.
    for (const bool isEndedBefore : {true, false}) {
        show();
        editor()->setFocus();
        QCoreApplication::sendEvent(editor(), &composing);
        if (isEndedBefore)
            QCoreApplication::sendEvent(editor(), &commit);
        const QString before = model.state().instruction;
        QAbstractButton *tile = button(QStringLiteral("Formalize"));
        tile->setFocus(Qt::MouseFocusReason);

        QInputMethodEvent nothing;
        QCoreApplication::sendEvent(tile, &nothing);
        QCoreApplication::sendEvent(tile, &commit);
        EXPECT_TRUE(tile->hasFocus()) << "it is being pressed";
        EXPECT_EQ(model.state().instruction, before);

        // Once: the same may be composed again.
        QCoreApplication::sendEvent(tile, &composing);
        QCoreApplication::sendEvent(tile, &commit);
        EXPECT_TRUE(editor()->hasFocus());
        EXPECT_EQ(model.state().instruction, before + syllable);
    }
}

TEST_F(PickerKeysTest, AWideBlankOfAnInputMethodPressesAsSpaceDoes) {
    show();
    QInputMethodEvent blank;
    blank.setCommitString(QStringLiteral("\u3000"));
    QCoreApplication::sendEvent(QApplication::focusWidget(), &blank);
    EXPECT_EQ(model.calls, QStringList(QStringLiteral("run builtin-formalize")));
    EXPECT_EQ(model.state().instruction, QString());
}

} // namespace quillmender
