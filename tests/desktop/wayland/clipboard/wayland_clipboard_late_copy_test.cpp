#include "desktop/wayland/clipboard/ClipboardTest.h"

#include <unistd.h>

namespace quillmender::wayland {

namespace {

using testing::IsEmpty;

/// The other application, which is this process to the system, is told to copy, and given up.
class ClipboardLateCopyTest : public ClipboardTest {
  protected:
    void SetUp() override {
        ClipboardTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        other_->declare("text/plain;charset=utf-8", "the user's");
        other_->declare("image/png", "a picture");
        other_->own();
        settle();
        before_ = wait(pasteboard().items());
    }

    void tellToCopy(qint64 process) { copies_.start(process); }
    void giveUp() {
        pasteboard().replaceContents(before_);
        settle();
    }
    void copy(const QByteArray &text) {
        other_->offer("text/plain;charset=utf-8", text);
        settle();
    }

    QByteArray textThere() {
        return other_->fetch("text/plain;charset=utf-8").value_or(QByteArray());
    }
    bool isBack() {
        return waitFor([&] { return !other_->isOwner(); }) && wait(pasteboard().items()) == before_;
    }
    /// As far as can be told: whatever was to be said about it has been said.
    bool stays(const QByteArray &text) {
        for (int i = 0; i < 3; ++i)
            settle();
        return other_->isOwner() && textThere() == text;
    }

    QList<PasteboardItem> before_;
};

TEST_F(ClipboardLateCopyTest, GivesPlaceToWhatWasThere) {
    tellToCopy(::getpid());
    giveUp();
    const qint64 restored = pasteboard().changeCount();
    copy("late");
    EXPECT_TRUE(isBack());
    EXPECT_EQ(textThere(), "the user's");
    EXPECT_EQ(other_->fetch("image/png"), "a picture");
    EXPECT_GT(pasteboard().changeCount(), restored);
}

TEST_F(ClipboardLateCopyTest, GivesPlaceToWhatThisProgramHasThere) {
    ASSERT_NE(lend(QStringLiteral("an answer")), nullptr);
    giveUp();
    tellToCopy(::getpid());
    giveUp();
    copy("late");
    EXPECT_TRUE(isBack());
    EXPECT_EQ(textThere(), "the user's");
}

TEST_F(ClipboardLateCopyTest, GivesPlaceToAnEmptiness) {
    pasteboard().replaceContents({});
    settle();
    before_ = {};
    tellToCopy(::getpid());
    giveUp();
    copy("late");
    EXPECT_TRUE(isBack());
    EXPECT_THAT(other_->types(), IsEmpty());
}

TEST_F(ClipboardLateCopyTest, IsTheOneThatComesAfterAnEmptiness) {
    tellToCopy(::getpid());
    giveUp();
    other_->clear();
    settle();
    copy("late");
    EXPECT_TRUE(isBack());
}

TEST_F(ClipboardLateCopyTest, TheNextOneIsTheUsers) {
    tellToCopy(::getpid());
    giveUp();
    copy("late");
    ASSERT_TRUE(isBack());
    copy("by hand");
    EXPECT_TRUE(stays("by hand"));
}

TEST_F(ClipboardLateCopyTest, WhatAnotherProcessCopiesIsTheUsers) {
    tellToCopy(::getppid());
    giveUp();
    copy("by hand");
    EXPECT_TRUE(stays("by hand"));
}

TEST_F(ClipboardLateCopyTest, AfterOneThatCameInTimeTheNextIsTheUsers) {
    tellToCopy(::getpid());
    copy("in time");
    giveUp();
    EXPECT_EQ(textThere(), "the user's");
    copy("by hand");
    EXPECT_TRUE(stays("by hand"));
}

TEST_F(ClipboardLateCopyTest, WhenNoneIsToComeItIsTheUsers) {
    giveUp();
    copy("by hand");
    EXPECT_TRUE(stays("by hand"));
    tellToCopy(::getpid());
    giveUp();
    ASSERT_TRUE(waitFor([&] { return copies_.pending() == 0; }));
    copy("later, by hand");
    EXPECT_TRUE(stays("later, by hand"));
}

TEST_F(ClipboardLateCopyTest, AnOwnerThatWritesNothingIsLeftAlone) {
    tellToCopy(::getpid());
    giveUp();
    std::vector<Descriptor> held;
    other_->declareSpecially("text/plain;charset=utf-8",
                             [&](Descriptor pipe) { held.push_back(std::move(pipe)); });
    other_->own();
    settle();
    ASSERT_TRUE(waitFor([&] { return !held.empty(); }));
    const auto isOver = [this] { return control_->findChildren<QObject *>().isEmpty(); };
    held.clear();
    EXPECT_TRUE(waitFor(isOver));
    EXPECT_TRUE(other_->isOwner());
}

TEST_F(ClipboardLateCopyTest, OfALargeOneNothingIsCutOff) {
    tellToCopy(::getpid());
    giveUp();
    const QByteArray large = pattern(3'000'000);
    bool isWritten = false;
    other_->declareSpecially("text/plain;charset=utf-8", [&](Descriptor pipe) {
        isWritten = true;
        writeInBackground(std::move(pipe), large);
    });
    other_->own();
    settle();
    EXPECT_TRUE(isBack());
    EXPECT_TRUE(isWritten);
}

} // namespace
} // namespace quillmender::wayland

int main(int argc, char **argv) {
    return quillmender::wayland::runClipboardTests(argc, argv);
}
