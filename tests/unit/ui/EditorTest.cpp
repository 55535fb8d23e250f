#include "PanelFixture.h"

#include <QSignalSpy>

namespace quillmender {

namespace {

class EditorTest : public PanelFixture {};

} // namespace

TEST_F(EditorTest, TypingReachesTheModelAndKeepsTheCursor) {
    show();
    QTest::keyClicks(editor(), QStringLiteral("formal"));
    QTest::keyClick(editor(), Qt::Key_Left);
    QTest::keyClick(editor(), Qt::Key_Left);
    QTest::keyClicks(editor(), QStringLiteral("X"));
    settle();
    EXPECT_EQ(model.state().instruction.toStdString(), "formXal");
    EXPECT_EQ(editor()->textCursor().position(), 5);
    QTest::keyClicks(editor(), QStringLiteral("Y"));
    settle();
    EXPECT_EQ(model.state().instruction.toStdString(), "formXYal");
}

TEST_F(EditorTest, UndoWorksAfterRendering) {
    show();
    QTest::keyClicks(editor(), QStringLiteral("one"));
    settle();
    QTest::keyClick(editor(), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(model.state().instruction.toStdString(), "");
}

TEST_F(EditorTest, TheModelsTextIsShown) {
    show();
    change([](auto &state) { state.instruction = QStringLiteral("a\nb\u00a0c"); });
    EXPECT_EQ(editor()->document()->blockCount(), 2);
    change([](auto &state) { state.instruction.clear(); });
    EXPECT_TRUE(editor()->document()->isEmpty());
    EXPECT_EQ(model.state().instruction, QString()) << "rendering is no edit";
}

TEST_F(EditorTest, RenderingIsNoEdit) {
    show();
    const QSignalSpy edits(editor(), &InstructionEditor::edited);
    change([](auto &state) { state.instruction = QStringLiteral("a"); });
    change([](auto &state) { state.instruction = QStringLiteral("b"); });
    change([](auto &state) { state.instruction.clear(); });
    EXPECT_EQ(edits.count(), 0);
    QTest::keyClicks(editor(), QStringLiteral("xy"));
    EXPECT_EQ(edits.count(), 2);
}

TEST_F(EditorTest, LineBreaksAndNoBreakSpacesArriveUnchanged) {
    show();
    editor()->insertPlainText(QStringLiteral("un\ndeux\u00a0!"));
    EXPECT_EQ(model.state().instruction, QStringLiteral("un\ndeux\u00a0!"));
}

TEST_F(EditorTest, RightToLeftInstructionStandsAtTheRight) {
    show();
    change([](auto &state) { state.instruction = QStringLiteral("\u0627\u0643\u062a\u0628"); });
    EXPECT_EQ(editor()->document()->defaultTextOption().alignment(), Qt::AlignRight);
    change([](auto &state) { state.instruction = QStringLiteral("write"); });
    EXPECT_EQ(editor()->document()->defaultTextOption().alignment(), Qt::AlignLeft);
}

} // namespace quillmender
