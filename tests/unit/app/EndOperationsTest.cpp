#include "CoordinatorFixture.h"
#include "support/RunTask.h"

namespace quillmender {
namespace {

using namespace std::chrono_literals;

constexpr auto longEnough = 20s;

class EndOperationsTest : public CoordinatorFixture {
  protected:
    PromptAction action() const { return coordinator->actions().constFirst(); }
};

TEST_F(EndOperationsTest, NothingUnderWayEndsAtOnce) {
    EXPECT_TRUE(coordinator->endOperations(longEnough).isReady());
}

TEST_F(EndOperationsTest, WaitsForTheRunAndItsWriteBack) {
    capture(QStringLiteral("text"));
    coordinator->run(action());
    auto ending = coordinator->endOperations(longEnough);
    EXPECT_FALSE(ending.isReady());
    EXPECT_FALSE(panel->isVisible);

    transport.answerText("answer");
    test::runTask(std::move(ending));
    EXPECT_FALSE(coordinator->isWorking());
    EXPECT_EQ(written(), QStringLiteral("answer"));
}

TEST_F(EndOperationsTest, WaitsForEveryOperation) {
    capture(QStringLiteral("text"));
    coordinator->run(action());
    focus->reading = {};
    clock->hold();
    coordinator->beginWorkflow();
    auto ending = coordinator->endOperations(longEnough);
    clock->release();
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
    EXPECT_FALSE(ending.isReady()) << "the capture has ended, the run has not";
    EXPECT_TRUE(coordinator->isWorking());
    transport.answerText("answer");
    test::runTask(std::move(ending));
    EXPECT_FALSE(coordinator->isWorking());
}

TEST_F(EndOperationsTest, WaitsNoLongerThanItsLimit) {
    capture(QStringLiteral("text"));
    coordinator->run(action());
    test::runTask(coordinator->endOperations(1ms));
    EXPECT_TRUE(coordinator->isWorking());

    transport.answerText("answer");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !coordinator->isWorking(); }));
}

TEST_F(EndOperationsTest, NothingStartsAfterwards) {
    capture(QStringLiteral("text"));
    test::runTask(coordinator->endOperations(longEnough));
    log->clear();
    coordinator->beginWorkflow();
    EXPECT_EQ(*log, QStringList());
    EXPECT_FALSE(panel->isVisible);
}

} // namespace
} // namespace quillmender
