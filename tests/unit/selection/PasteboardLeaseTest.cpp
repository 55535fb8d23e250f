#include "selection/PasteboardLease.h"

#include "SelectionFixture.h"
#include "support/RunTask.h"

#include <QTest>

#include <map>

namespace quillmender {
namespace {

class PasteboardLeaseTest : public testing::Test {
  protected:
    /// Takes the lease for that name once it is free, and keeps it.
    QCoro::Task<> take(QString name) {
        auto held = co_await lease.acquire();
        taken.append(name);
        leases[name] = std::move(held);
    }

    void giveBack(const char *name) { leases.erase(QString::fromLatin1(name)); }

    bool waitForTaken(int count) {
        return QTest::qWaitFor([&] { return taken.size() >= count; }, 20'000);
    }

    PasteboardLease lease;
    QStringList taken;
    std::map<QString, Lease> leases;
};

TEST_F(PasteboardLeaseTest, IsThereAtOnceWhenNobodyHasIt) {
    take(QStringLiteral("a"));
    EXPECT_EQ(taken, QStringList(QStringLiteral("a")));
    giveBack("a");
    take(QStringLiteral("b"));
    EXPECT_EQ(taken.size(), 2);
}

TEST_F(PasteboardLeaseTest, OneHasItAtATime) {
    for (const char *name : {"a", "b", "c", "d"})
        take(QString::fromLatin1(name));
    for (int count = 1; count < 4; ++count) {
        QCoreApplication::processEvents();
        EXPECT_EQ(taken.size(), count);
        EXPECT_EQ(leases.size(), 1U);
        leases.clear();
        ASSERT_TRUE(waitForTaken(count + 1));
    }
    taken.sort();
    EXPECT_EQ(taken, QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                                  QStringLiteral("d")}));
}

/// Two sessions with one pasteboard; a held clock keeps the first in the middle of its work.
class TwoSessionsTest : public SelectionFixture {
  protected:
    void SetUp() override {
        focus.reading.element = nullptr;
        copyYields(QStringLiteral("copied"));
        clock.hold();
    }

    void expectOneAfterTheOther() {
        const auto restored = log->indexOf(QStringLiteral("pasteboard.replaceContents 2"));
        const auto secondSnapshot = log->lastIndexOf(QStringLiteral("pasteboard.itemsWithin 1000"));
        EXPECT_GE(restored, 0);
        EXPECT_GT(secondSnapshot, restored);
    }
};

TEST_F(TwoSessionsTest, ACaptureWaitsForTheCopyOfAnother) {
    auto first = controller.captureSelection();
    auto second = controller.captureSelection();
    QCoreApplication::processEvents();
    EXPECT_EQ(log->count(QStringLiteral("pasteboard.itemsWithin 1000")), 1);
    clock.release();
    EXPECT_EQ(test::runTask(std::move(first))->selectedText, QStringLiteral("copied"));
    pasteboard.text.reset();
    const auto session = test::runTask(std::move(second));
    EXPECT_EQ(session->originalPasteboard.items, twoItems());
    expectOneAfterTheOther();
}

TEST_F(TwoSessionsTest, ACaptureDoesNotTakeAnAnswerForTheUsersContents) {
    auto pasting =
        controller.performPasteReplacement(session(std::nullopt), QStringLiteral("answer"));
    auto capturing = controller.captureSelection();
    QCoreApplication::processEvents();
    EXPECT_EQ(log->count(QStringLiteral("pasteboard.itemsWithin 1000")), 0);
    EXPECT_EQ(pasteboard.text, QStringLiteral("answer"));
    clock.release();
    test::runTask(std::move(pasting));
    EXPECT_EQ(test::runTask(std::move(capturing))->originalPasteboard.items, twoItems());
    expectOneAfterTheOther();
}

TEST_F(TwoSessionsTest, APasteWaitsForTheCopyOfAnother) {
    auto capturing = controller.captureSelection();
    auto pasting =
        controller.performPasteReplacement(session(std::nullopt), QStringLiteral("answer"));
    QCoreApplication::processEvents();
    EXPECT_FALSE(log->contains(QStringLiteral("pasteboard.lend answer")));
    clock.release();
    test::runTask(std::move(capturing));
    test::runTask(std::move(pasting));
    EXPECT_GT(log->indexOf(QStringLiteral("pasteboard.lend answer")),
              log->indexOf(QStringLiteral("pasteboard.replaceContents 2")));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(TwoSessionsTest, AFailureGivesThePasteboardToTheNext) {
    clock.release();
    pasteboard.copyFromElsewhere(std::nullopt);
    pasteboard.contents = twoItems();
    copyYields(std::nullopt);
    EXPECT_EQ(captureFailure(), AppFailure::Case::noSelectionFound);
    chords.result.outcome = ChordResult::Outcome::unavailable;
    EXPECT_EQ(captureFailure(), AppFailure::Case::replacementFailed);
    EXPECT_THROW(fakes::await(controller.performPasteReplacement(session(std::nullopt),
                                                                 QStringLiteral("answer"))),
                 AppFailure);
    chords.result.outcome = ChordResult::Outcome::typed;
    copyYields(QStringLiteral("copied"));
    EXPECT_EQ(capture()->selectedText, QStringLiteral("copied"));
}

} // namespace
} // namespace quillmender
