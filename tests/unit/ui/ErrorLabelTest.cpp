#include "ui/ErrorLabel.h"

#include "PanelFixture.h"

#include <QAccessible>
#include <QClipboard>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollArea>
#include <QToolTip>

namespace quillmender {

namespace {

const QString sentence = QStringLiteral("The provider went away. ");

class ErrorLabelTest : public PanelFixture {
  protected:
    void fail(const QString &message) {
        model.change([&](auto &state) { state.error = message; });
        show();
        settle();
        QGuiApplication::clipboard()->clear();
    }

    ErrorLabel *label() const { return controller.panel()->findChild<ErrorLabel *>(); }

    QString copied() const { return QGuiApplication::clipboard()->text(); }

    QString toolTip() const {
        QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), label()->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(label(), &event);
        return QToolTip::text();
    }

    const QString longMessage = sentence.repeated(200).trimmed();
};

} // namespace

TEST_F(ErrorLabelTest, IsCutAfterFourLinesWithAllOfItInToolTipAndName) {
    fail(longMessage);
    const int line = label()->fontMetrics().lineSpacing();
    EXPECT_LE(label()->contentsRect().height(), 4 * (line + 1));
    EXPECT_GE(label()->contentsRect().height(), 4 * line);
    EXPECT_TRUE(toolTip().contains(longMessage));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(label())->text(QAccessible::Name), longMessage);
    change([](auto &state) { state.error = sentence; });
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return label()->contentsRect().height() <= line + 1; }, 5000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return toolTip().isEmpty(); }, 5000));
}

TEST_F(ErrorLabelTest, EverythingStaysWithinReach) {
    model.change([](auto &state) { state.instruction = QStringLiteral("words"); });
    fail(longMessage);
    auto *area = controller.panel()->findChild<QScrollArea *>();
    for (Button *each : buttons()) {
        if (!area->widget()->isAncestorOf(each))
            continue;
        each->setFocus(Qt::TabFocusReason);
        const QRect place(each->mapTo(area->viewport(), QPoint()), each->size());
        EXPECT_TRUE(area->viewport()->rect().contains(place)) << each->caption().toStdString();
    }
}

TEST_F(ErrorLabelTest, IsCopiedByKeyboard) {
    fail(longMessage);
    label()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(label()->selectedText(), longMessage) << "one sees where the keyboard is";
    QTest::keyClick(label(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), longMessage);
    button(QStringLiteral("Close"))->setFocus();
    EXPECT_EQ(label()->selectedText(), QString());
}

TEST_F(ErrorLabelTest, APartIsCopiedWithTheMouse) {
    fail(QStringLiteral("Rate limit reached."));
    const auto at = [this](int characters) {
        return label()->contentsRect().topLeft() +
               QPoint(label()->fontMetrics().horizontalAdvance(label()->text().left(characters)),
                      5);
    };
    QTest::mousePress(label(), Qt::LeftButton, {}, at(5));
    QMouseEvent move(QEvent::MouseMove, at(10), label()->mapToGlobal(at(10)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(label(), &move);
    QTest::mouseRelease(label(), Qt::LeftButton, {}, at(10));
    EXPECT_EQ(label()->selectedText(), QStringLiteral("limit"));
    QTest::keyClick(label(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(copied(), QStringLiteral("limit"));
    change([](auto &state) { state.error = QStringLiteral("Another message."); });
    EXPECT_EQ(label()->selectedText(), QString());
}

TEST_F(ErrorLabelTest, TheEndOfWhatCanBeSeenStandsForTheRest) {
    fail(longMessage);
    QTest::mousePress(label(), Qt::LeftButton, {}, label()->contentsRect().topLeft());
    const QPoint end = label()->contentsRect().bottomRight();
    QMouseEvent move(QEvent::MouseMove, end, label()->mapToGlobal(end), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(label(), &move);
    QTest::mouseRelease(label(), Qt::LeftButton, {}, end);
    EXPECT_EQ(label()->selectedText(), longMessage);
}

TEST_F(ErrorLabelTest, TheMenuCopiesAll) {
    fail(longMessage);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 10),
                            label()->mapToGlobal(QPoint(5, 10)));
    QCoreApplication::sendEvent(label(), &event);
    auto *menu = label()->findChild<QMenu *>();
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->actions().first()->text(), QStringLiteral("Copy"));
    menu->actions().first()->trigger();
    menu->close();
    EXPECT_EQ(copied(), longMessage);
}

TEST_F(ErrorLabelTest, WhatIsTypedThereGoesToTheInstruction) {
    fail(sentence);
    label()->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(label(), QStringLiteral("x"));
    EXPECT_EQ(model.state().instruction, QStringLiteral("x"));
}

} // namespace quillmender
