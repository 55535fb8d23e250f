#include "desktop/wayland/clipboard/ClipboardTest.h"
#include "desktop/wayland/clipboard/ScriptedCompositor.h"
#include "platform/Clock.h"

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

constexpr auto text = "UTF8_STRING";
const auto severalLines = QStringLiteral("one\ntwo\tthree\n");

/// What a text has to go through before it is pasted into a terminal.
class ClipboardTerminalTest : public ClipboardTest {
  protected:
    void SetUp() override {
        ClipboardTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        selecting_ = std::make_unique<ForeignClient>(server().display(), Selection::primary);
        selecting_->clear();
        settle();
    }

    void settle() {
        ClipboardTest::settle();
        selecting_->settle();
        settleOwn();
    }

    /// The obstacle, empty for none.
    std::string lendToTerminal(const QString &answer, PasteText::TakesLineEnds takesLineEnds) {
        lent_ = lend(answer);
        EXPECT_NE(lent_, nullptr);
        const Obstacle obstacle = wait(lent_->lendToTerminal(std::move(takesLineEnds)));
        settle();
        return obstacle.value_or(QString()).toStdString();
    }

    std::string lendToShell(const QString &answer) {
        return lendToTerminal(answer, [] { return false; });
    }

    void expectText(const QByteArray &expected) {
        EXPECT_EQ(other_->fetch(text), expected) << "as clipboard";
        EXPECT_EQ(selecting_->fetch(text), expected) << "as PRIMARY";
    }

    std::unique_ptr<ForeignClient> selecting_; ///< another application, with PRIMARY
    std::shared_ptr<WaylandLentText> lent_;
};

TEST_F(ClipboardTerminalTest, WhatPressesEnterIsLeftOut) {
    for (const char *answer : {"touch it", "touch it\n", "touch it\r\n\r\n", "touch it\r",
                               "touch it\xc2\x85", "touch it\xe2\x80\xa8", "touch it\x0f"}) {
        EXPECT_EQ(lendToShell(QString::fromUtf8(answer)), "") << answer;
        EXPECT_TRUE(lent_->isLentToTerminal());
        expectText("touch it");
    }
}

TEST_F(ClipboardTerminalTest, WhatEndsAPasteIsLeftOut) {
    EXPECT_EQ(lendToShell(QStringLiteral("\x1b[201~touch it\n")), "");
    const QByteArray pasted = other_->fetch(text).value();
    EXPECT_FALSE(pasted.contains('\x1b')) << pasted.toStdString();
    EXPECT_EQ(selecting_->fetch(text), pasted);
}

TEST_F(ClipboardTerminalTest, ATabIsASpaceToAShell) {
    EXPECT_EQ(lendToShell(QStringLiteral("echo\tword")), "");
    expectText("echo word");
}

TEST_F(ClipboardTerminalTest, SeveralLinesAreNotForAShell) {
    selecting_->offer(text, "the user's selection");
    for (const char *answer : {"one\ntwo", "one\rtwo", "one\xe2\x80\xa9two"}) {
        EXPECT_EQ(lendToShell(QString::fromUtf8(answer)),
                  "the terminal does not take several lines");
        EXPECT_FALSE(lent_->isLentToTerminal());
    }
    EXPECT_EQ(selecting_->fetch(text), "the user's selection");
    EXPECT_TRUE(selecting_->isOwner());
}

TEST_F(ClipboardTerminalTest, WhatHasNoTextIsNotLent) {
    EXPECT_EQ(lendToShell(QStringLiteral("\n\n")), "the terminal does not take what is no text");
    EXPECT_FALSE(lent_->isLentToTerminal());
}

TEST_F(ClipboardTerminalTest, AnEditorGetsItsLinesUntilItIsSeenToHaveEnded) {
    bool isEditor = true;
    int questions = 0;
    EXPECT_EQ(lendToTerminal(severalLines,
                             [&] {
                                 ++questions;
                                 return isEditor;
                             }),
              "");
    expectText("one\ntwo\tthree");
    const int before = questions;
    EXPECT_GE(before, 3) << "at the loan, and for each who asks";
    isEditor = false;
    expectText("one two three");
    isEditor = true;
    expectText("one two three");
    EXPECT_EQ(questions, before + 1) << "the first no is the last word";
}

TEST_F(ClipboardTerminalTest, APasteOfEitherSelectionIsAReading) {
    for (const bool isPrimary : {false, true}) {
        EXPECT_EQ(lendToShell(QStringLiteral("answer")), "");
        EXPECT_EQ((isPrimary ? selecting_ : other_)->fetch(text), "answer") << "before the chord";
        settle();
        chords_.note();
        auto isRead = lent_->wasRead(1min);
        finishTurn();
        EXPECT_FALSE(isRead.isReady());
        EXPECT_EQ((isPrimary ? selecting_ : other_)->fetch(text), "answer");
        EXPECT_TRUE(wait(std::move(isRead)));
    }
}

TEST_F(ClipboardTerminalTest, NeitherSelectionServesWhoComesTooLate) {
    EXPECT_EQ(lendToShell(QStringLiteral("answer")), "");
    chords_.note();
    EXPECT_FALSE(wait(lent_->wasRead(50ms)));
    expectText("");
}

TEST_F(ClipboardTerminalTest, BothSelectionsAreGivenBack) {
    other_->declare("text/html", "<b>user's</b>");
    other_->own();
    selecting_->declare(text, "user's selection");
    selecting_->declare("text/html", "<i>selection</i>");
    selecting_->own();
    settle();
    const auto before = wait(pasteboard().items());
    EXPECT_EQ(lendToShell(QStringLiteral("answer")), "");
    // Once more, as after a refusal: what was the user's is so still.
    EXPECT_EQ(lendToShell(QStringLiteral("another")), "");
    pasteboard().replaceContents(before);
    settle();
    EXPECT_EQ(other_->fetch("text/html"), "<b>user's</b>");
    EXPECT_EQ(selecting_->fetch(text), "user's selection");
    EXPECT_EQ(selecting_->fetch("text/html"), "<i>selection</i>");
    EXPECT_FALSE(lent_->isLentToTerminal());
}

TEST_F(ClipboardTerminalTest, NothingSelectedStaysSo) {
    EXPECT_EQ(lendToShell(QStringLiteral("answer")), "");
    pasteboard().replaceContents({});
    settle();
    EXPECT_THAT(selecting_->types(), IsEmpty());
}

TEST_F(ClipboardTerminalTest, WhatTheUserSelectsMeanwhileStaysSelected) {
    EXPECT_EQ(lendToShell(QStringLiteral("answer")), "");
    selecting_->offer(text, "newer");
    settle();
    EXPECT_FALSE(lent_->isLentToTerminal());
    pasteboard().replaceContents({});
    settle();
    EXPECT_TRUE(selecting_->isOwner());
    EXPECT_EQ(selecting_->fetch(text), "newer");
}

TEST_F(ClipboardTerminalTest, WhoTakesTheClipboardEndsTheLoan) {
    EXPECT_EQ(lendToShell(QStringLiteral("answer")), "");
    other_->offer(text, "newer");
    settle();
    EXPECT_FALSE(lent_->isLentToTerminal());
    EXPECT_EQ(wait(lent_->lendToTerminal([] { return false; })).value_or(QString()).toStdString(),
              "somebody else took a selection");
    EXPECT_EQ(other_->fetch(text), "newer");
}

TEST_F(ClipboardTerminalTest, ReplacementMeanwhileLeavesThePrimarySelection) {
    const auto pipes = std::make_shared<std::vector<Descriptor>>();
    selecting_->declareSpecially(text,
                                 [pipes](Descriptor pipe) { pipes->push_back(std::move(pipe)); });
    selecting_->own();
    settle();
    lent_ = lend(QStringLiteral("answer"));
    auto lending = lent_->lendToTerminal([] { return false; });
    ASSERT_TRUE(waitFor([&] { return !pipes->empty(); })) << "what is selected is read before";
    EXPECT_FALSE(lending.isReady());
    pasteboard().replaceContents({});
    pipes->clear();
    EXPECT_EQ(wait(std::move(lending)).value_or(QString()).toStdString(),
              "the pasteboard was replaced meanwhile");
    settle();
    EXPECT_TRUE(selecting_->isOwner());
    EXPECT_FALSE(lent_->isLentToTerminal());
}

TEST_F(ClipboardTerminalTest, AnOwnerOfThePrimarySelectionThatIsSilentHoldsNothingUp) {
    const auto pipes = std::make_shared<std::vector<Descriptor>>();
    selecting_->declareSpecially("image/png",
                                 [pipes](Descriptor pipe) { pipes->push_back(std::move(pipe)); });
    selecting_->declare(text, "user's selection");
    selecting_->own();
    settle();
    EXPECT_EQ(lendToShell(QStringLiteral("answer")), "");
    EXPECT_TRUE(lent_->isLentToTerminal());
    pasteboard().replaceContents({});
    settle();
    EXPECT_EQ(selecting_->fetch(text), "user's selection");
}

TEST_F(ClipboardTerminalTest, EndOfTheProgramMeanwhileCancelsIt) {
    const auto pipes = std::make_shared<std::vector<Descriptor>>();
    selecting_->declareSpecially(text,
                                 [pipes](Descriptor pipe) { pipes->push_back(std::move(pipe)); });
    selecting_->own();
    settle();
    lent_ = lend(QStringLiteral("answer"));
    auto lending = lent_->lendToTerminal([] { return false; });
    ASSERT_TRUE(waitFor([&] { return !pipes->empty(); }));
    pasteboard_.reset();
    lent_.reset();
    control_.reset();
    connection_.reset();
    EXPECT_TRUE(waitFor([&] { return lending.isReady(); })) << "long before its limit";
    EXPECT_THROW(wait(std::move(lending)), CancellationError);
}

TEST(ClipboardWithoutPrimaryTest, IsNotForTerminals) {
    ScriptedCompositor compositor({ScriptedCompositor::wlr(1)});
    const auto connection = openPatiently(compositor.display());
    const auto control = DataControl::create(*connection);
    const ChordMoment chords;
    const CopyWatch copies;
    WaylandPasteboard pasteboard(*control, chords, copies);
    QCoro::waitFor(control->catchUp());
    const auto lent = std::dynamic_pointer_cast<WaylandLentText>(
        pasteboard.lend(QStringLiteral("answer"), nullptr));
    ASSERT_NE(lent, nullptr);
    EXPECT_EQ(QCoro::waitFor(lent->lendToTerminal([] { return false; }))
                  .value_or(QString())
                  .toStdString(),
              "this compositor does not let the text be a selection");
    EXPECT_FALSE(lent->isLentToTerminal());
}

} // namespace

} // namespace quillmender::wayland

int main(int argc, char **argv) {
    return quillmender::wayland::runClipboardTests(argc, argv);
}
