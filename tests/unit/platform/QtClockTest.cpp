#include "platform/QtClock.h"

#include "support/RunTask.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

using namespace std::chrono_literals;

/// Notes its name when the sleep has ended, and how.
QCoro::Task<> noteEnd(QCoro::Task<> sleep, QString name, QStringList &ended) {
    try {
        co_await sleep;
        ended.append(name);
    } catch (const CancellationError &) {
        ended.append(name + QStringLiteral(" cancelled"));
    }
}

class QtClockTest : public testing::Test {
  protected:
    QCoro::Task<> note(const char *name, std::chrono::milliseconds duration) {
        return noteEnd(clock.sleepFor(duration), QString::fromLatin1(name), ended);
    }

    QtClock clock;
    QStringList ended;
};

TEST_F(QtClockTest, SleepsNoShorterThanItIsTold) {
    QElapsedTimer time;
    time.start();
    test::runTask(clock.sleepFor(40ms));
    EXPECT_GE(time.elapsed(), 40);
}

TEST_F(QtClockTest, SleepsEndInTheOrderOfTheirTimes) {
    auto later = note("later", 60ms);
    auto sooner = note("sooner", 20ms);
    EXPECT_EQ(ended, QStringList());
    test::runTask(std::move(later));
    EXPECT_EQ(ended, QStringList({QStringLiteral("sooner"), QStringLiteral("later")}));
}

TEST_F(QtClockTest, EverySleepUnderWayIsCancelled) {
    auto first = note("first", 24h);
    auto second = note("second", 12h);
    clock.cancelAll();
    test::runTask(std::move(first));
    test::runTask(std::move(second));
    ended.sort();
    EXPECT_EQ(ended,
              QStringList({QStringLiteral("first cancelled"), QStringLiteral("second cancelled")}));
}

TEST_F(QtClockTest, CancellingOneAfterTheOtherEndsEachOnce) {
    auto first = note("first", 24h);
    clock.cancelAll();
    clock.cancelAll();
    test::runTask(std::move(first));
    EXPECT_EQ(ended, QStringList(QStringLiteral("first cancelled")));
}

TEST_F(QtClockTest, EveryLaterSleepEndsAtOnce) {
    clock.cancelAll();
    for (int time = 0; time < 2; ++time) {
        auto sleep = clock.sleepFor(24h);
        EXPECT_TRUE(sleep.isReady());
        EXPECT_THROW(test::runTask(std::move(sleep)), CancellationError);
    }
}

TEST_F(QtClockTest, ASleepThatHasEndedIsNotCancelledAnyMore) {
    test::runTask(note("slept", 1ms));
    clock.cancelAll();
    EXPECT_EQ(ended, QStringList(QStringLiteral("slept")));
}

} // namespace
} // namespace quillmender
