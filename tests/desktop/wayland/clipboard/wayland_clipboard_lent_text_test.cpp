#include "desktop/wayland/clipboard/ClipboardTest.h"

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;

class LentTextTest : public ClipboardTest {
  protected:
    void SetUp() override {
        ClipboardTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        lent_ = lend(QStringLiteral("text"));
        ASSERT_NE(lent_, nullptr);
        settle();
    }

    std::shared_ptr<WaylandLentText> lent_;
};

TEST_F(LentTextTest, WasReadWhenATextIsAskedForAfterTheChord) {
    for (const char *type :
         {"text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "STRING", "TEXT"}) {
        chords_.note();
        auto isRead = lent_->wasRead(1min);
        finishTurn();
        EXPECT_FALSE(isRead.isReady());
        EXPECT_EQ(other_->fetch(type), "text");
        EXPECT_TRUE(waitFor([&] { return isRead.isReady(); })) << type;
        EXPECT_TRUE(wait(std::move(isRead)));
    }
}

TEST_F(LentTextTest, WasNotReadByWhoAskedBeforeTheChord) {
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text") << "as a clipboard manager does at once";
    chords_.note();
    EXPECT_FALSE(wait(lent_->wasRead(100ms)));
}

TEST_F(LentTextTest, WasNotReadWithoutAChord) {
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text");
    settle();
    EXPECT_FALSE(wait(lent_->wasRead(100ms)));
}

TEST_F(LentTextTest, WasNotReadByWhoAsksForTheMark) {
    chords_.note();
    EXPECT_EQ(other_->fetch("x-kde-passwordManagerHint"), "secret");
    EXPECT_EQ(other_->fetch("image/png"), "");
    EXPECT_FALSE(wait(lent_->wasRead(100ms)));
}

TEST_F(LentTextTest, IsNotDeceivedByATransferThatBeganBeforeTheChord) {
    const QString large(20'000'000, QLatin1Char('x'));
    lent_ = lend(large);
    settle();
    Descriptor early = other_->ask("UTF8_STRING");
    settle();
    chords_.note();
    EXPECT_EQ(readToEnd(std::move(early)).size(), large.size());
    EXPECT_FALSE(wait(lent_->wasRead(100ms)));
}

TEST_F(LentTextTest, CountsTheLastChordAlone) {
    chords_.note();
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text");
    settle();
    chords_.note();
    EXPECT_FALSE(wait(lent_->wasRead(100ms)));

    lent_ = lend(QString(20'000'000, QLatin1Char('x')));
    settle();
    chords_.note();
    Descriptor slow = other_->ask("UTF8_STRING");
    settle();
    chords_.note();
    EXPECT_EQ(readToEnd(std::move(slow)).size(), 20'000'000);
    EXPECT_FALSE(wait(lent_->wasRead(100ms)));
}

TEST_F(LentTextTest, RefusesWhoeverAsksAfterItWasGivenUp) {
    chords_.note();
    EXPECT_FALSE(wait(lent_->wasRead(50ms)));
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "");
    EXPECT_FALSE(wait(lent_->wasRead(50ms)));
}

TEST_F(LentTextTest, RefusesWhoAsksJustBeforeTheReplacementIsHeardOf) {
    chords_.note();
    Descriptor late = other_->ask("UTF8_STRING");
    other_->settleAlone();
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "the user's"));
    EXPECT_EQ(readToEnd(std::move(late)), "");
    EXPECT_FALSE(wait(lent_->wasRead(1min)));
}

TEST_F(LentTextTest, ServesWhoAsksAgain) {
    chords_.note();
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text");
    EXPECT_TRUE(wait(lent_->wasRead(1min)));
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text");
}

TEST_F(LentTextTest, WasReadWhenTheReaderIsStillTakingItAtTheLimit) {
    const QString large(20'000'000, QLatin1Char('x'));
    lent_ = lend(large);
    settle();
    chords_.note();
    Descriptor slow = other_->ask("UTF8_STRING");
    settle();
    EXPECT_TRUE(wait(lent_->wasRead(50ms)));
    pasteboard().replaceContents({});
    EXPECT_EQ(readToEnd(std::move(slow)).size(), large.size()) << "all of it";
}

TEST_F(LentTextTest, WasNotReadByWhoWentAwayHalfWay) {
    lent_ = lend(QString(20'000'000, QLatin1Char('x')));
    settle();
    chords_.note();
    Descriptor dying = other_->ask("UTF8_STRING");
    settle();
    dying.close();
    EXPECT_FALSE(wait(lent_->wasRead(200ms)));
}

TEST_F(LentTextTest, ReplacementEndsTheWaitForItsReader) {
    chords_.note();
    auto isRead = lent_->wasRead(1min);
    finishTurn();
    EXPECT_FALSE(isRead.isReady());
    EXPECT_TRUE(lent_->isOffered());
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "the user's"));
    EXPECT_TRUE(waitFor([&] { return isRead.isReady(); })) << "long before its limit";
    EXPECT_FALSE(wait(std::move(isRead)));
    settle();
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "the user's");
    EXPECT_FALSE(wait(lent_->wasRead(1min)));
    EXPECT_FALSE(lent_->isOffered());
}

TEST_F(LentTextTest, ReplacementKeepsWhatIsKnownOfItsReader) {
    chords_.note();
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text");
    settle();
    pasteboard().replaceContents({});
    EXPECT_TRUE(wait(lent_->wasRead(1min)));
}

TEST_F(LentTextTest, EndsWhenSomebodyElseTakesTheClipboard) {
    chords_.note();
    auto isRead = lent_->wasRead(1min);
    finishTurn();
    other_->offer("UTF8_STRING", "newer");
    EXPECT_TRUE(waitFor([&] { return isRead.isReady(); })) << "long before its limit";
    EXPECT_FALSE(wait(std::move(isRead)));
    EXPECT_FALSE(lent_->isOffered());
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("newer"));

    lent_ = lend(QStringLiteral("text"));
    settle();
    chords_.note();
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text");
    other_->offer("UTF8_STRING", "newest");
    settle();
    EXPECT_TRUE(wait(lent_->wasRead(1min)));
}

TEST_F(LentTextTest, SecondTakesThePlaceOfTheFirst) {
    chords_.note();
    auto isFirstRead = lent_->wasRead(1min);
    const auto second = lend(QStringLiteral("second"));
    settle();
    chords_.note();
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "second");
    EXPECT_TRUE(wait(second->wasRead(1min)));
    EXPECT_FALSE(wait(std::move(isFirstRead)));
    EXPECT_TRUE(second->isOffered());
    EXPECT_FALSE(lent_->isOffered());
}

TEST_F(LentTextTest, IsNotTakenForTheUsersContents) {
    const auto items = wait(pasteboard().items());
    pasteboard().replaceContents(items);
    settle();
    EXPECT_FALSE(lent_->isOffered());
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "text") << "it is served as what it was put there as";
}

TEST_F(LentTextTest, EndOfTheProgramEndsTheWaitForItsReader) {
    chords_.note();
    auto isRead = lent_->wasRead(1min);
    finishTurn();
    pasteboard_.reset();
    control_.reset();
    connection_.reset();
    EXPECT_TRUE(waitFor([&] { return isRead.isReady(); })) << "long before its limit";
    EXPECT_FALSE(wait(std::move(isRead)));
    EXPECT_FALSE(wait(lent_->wasRead(1min)));
    chords_.note();
}

TEST_F(LentTextTest, IsWaitedForThoughNobodyElseHasIt) {
    chords_.note();
    auto isRead = lent_->wasRead(1min);
    lent_.reset();
    pasteboard().replaceContents({});
    EXPECT_FALSE(wait(std::move(isRead)));
}

} // namespace

} // namespace quillmender::wayland

int main(int argc, char **argv) {
    return quillmender::wayland::runClipboardTests(argc, argv);
}
