#include "platform/SignalWait.h"

#include "platform/Clock.h"
#include "support/RunTask.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDeadlineTimer>
#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace quillmender {
namespace {

using namespace std::chrono_literals;

class Bell : public QObject {
    Q_OBJECT

  Q_SIGNALS:
    void rung();
    void struck(int hour, const QString &name);
};

/// A coroutine that its owner can end while it waits.
class Endable {
  public:
    struct promise_type {
        Endable get_return_object() {
            return Endable(std::coroutine_handle<promise_type>::from_promise(*this));
        }
        std::suspend_never initial_suspend() const noexcept { return {}; }
        std::suspend_always final_suspend() const noexcept { return {}; }
        void return_void() const {}
        void unhandled_exception() const { std::terminate(); }
    };

    explicit Endable(std::coroutine_handle<promise_type> handle) : handle_(handle) {}
    Endable(Endable &&other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Endable &operator=(Endable &&) = delete;
    ~Endable() {
        if (handle_)
            handle_.destroy();
    }

  private:
    std::coroutine_handle<promise_type> handle_;
};

Endable countRings(Bell &bell, int &rings) {
    co_await SignalWait(&bell, &Bell::rung);
    ++rings;
}

QCoro::Task<> countResumptions(Bell &bell, std::chrono::milliseconds limit, int &resumptions,
                               int waits = 1) {
    for (int i = 0; i < waits; ++i) {
        co_await SignalWait(&bell, &Bell::rung, limit);
        ++resumptions;
    }
}

QCoro::Task<bool> hears(Bell &bell, std::chrono::milliseconds limit) {
    co_return co_await SignalWait(&bell, &Bell::rung, limit);
}

class SignalWaitTest : public testing::Test {
  protected:
    /// Runs the event loop until everything in its queue has been handled.
    static void drain() {
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
    }

    /// Runs the timers that are due by then in one turn, none before.
    static void passWithoutLoop(std::chrono::milliseconds time) {
        const QDeadlineTimer deadline(time, Qt::PreciseTimer);
        while (!deadline.hasExpired())
            continue;
    }

    Bell bell;
    int resumptions = 0;
};

TEST_F(SignalWaitTest, GoesOnFromTheEventLoop) {
    countResumptions(bell, SignalWait::noLimit, resumptions);
    Q_EMIT bell.rung();
    EXPECT_EQ(resumptions, 0) << "the emitter is in the middle of something";
    drain();
    EXPECT_EQ(resumptions, 1);
}

TEST_F(SignalWaitTest, TakesSignalsWithArguments) {
    int resumed = 0;
    const auto wait = [](Bell &from, int &count) -> QCoro::Task<> {
        co_await SignalWait(&from, &Bell::struck);
        ++count;
    };
    wait(bell, resumed);
    Q_EMIT bell.struck(12, QStringLiteral("noon"));
    drain();
    EXPECT_EQ(resumed, 1);
}

TEST_F(SignalWaitTest, ASignalTwiceInATurnIsOne) {
    countResumptions(bell, SignalWait::noLimit, resumptions, 2);
    Q_EMIT bell.rung();
    Q_EMIT bell.rung();
    Q_EMIT bell.rung();
    drain();
    EXPECT_EQ(resumptions, 1) << "the second wait began after all of them";
    Q_EMIT bell.rung();
    drain();
    EXPECT_EQ(resumptions, 2);
}

TEST_F(SignalWaitTest, ASignalInTheTurnOfItsLimitIsOneEnd) {
    QTimer::singleShot(0ms, &bell, &Bell::rung);
    countResumptions(bell, 0ms, resumptions);
    QTimer::singleShot(0ms, &bell, &Bell::rung);
    drain();
    EXPECT_EQ(resumptions, 1);

    resumptions = 0;
    QTimer::singleShot(2ms, Qt::PreciseTimer, &bell, &Bell::rung);
    countResumptions(bell, 2ms, resumptions);
    QTimer::singleShot(2ms, Qt::PreciseTimer, &bell, &Bell::rung);
    passWithoutLoop(20ms);
    drain();
    EXPECT_EQ(resumptions, 1);
}

TEST_F(SignalWaitTest, ASignalWithTheLimitCounts) {
    QTimer::singleShot(0ms, &bell, [this] {
        passWithoutLoop(5ms);
        Q_EMIT bell.rung();
    });
    EXPECT_TRUE(test::runTask(hears(bell, 1ms)));
}

TEST_F(SignalWaitTest, ALimitEndsTheWait) {
    EXPECT_FALSE(test::runTask(hears(bell, 1ms)));
    EXPECT_FALSE(test::runTask(hears(bell, 0ms)));
}

TEST_F(SignalWaitTest, CountsFromItsConstruction) {
    const auto wait = [](Bell &from, int &count) -> QCoro::Task<> {
        SignalWait ring(&from, &Bell::rung);
        Q_EMIT from.rung();
        Q_EMIT from.rung();
        co_await ring;
        ++count;
    };
    wait(bell, resumptions);
    EXPECT_EQ(resumptions, 1);
    drain();
    EXPECT_EQ(resumptions, 1);
}

TEST_F(SignalWaitTest, WhatWasEmittedBeforeDoesNotCount) {
    Q_EMIT bell.rung();
    EXPECT_FALSE(test::runTask(hears(bell, 1ms)));
}

TEST_F(SignalWaitTest, AnEmitterThatDiesCancels) {
    auto mortal = std::make_unique<Bell>();
    auto task = hears(*mortal, SignalWait::noLimit);
    mortal.reset();
    EXPECT_THROW(test::runTask(std::move(task)), CancellationError);
}

TEST_F(SignalWaitTest, AnEmitterThatDiesWithItsSignalCancels) {
    auto mortal = std::make_unique<Bell>();
    auto task = hears(*mortal, 1ms);
    Q_EMIT mortal->rung();
    mortal.reset();
    EXPECT_THROW(test::runTask(std::move(task)), CancellationError);
}

TEST_F(SignalWaitTest, NoEmitterCancels) {
    const auto wait = []() -> QCoro::Task<> {
        const Bell *const none = nullptr;
        co_await SignalWait(none, &Bell::rung);
    };
    EXPECT_THROW(test::runTask(wait()), CancellationError);
}

TEST_F(SignalWaitTest, ACoroutineCanEndWhileItWaits) {
    {
        const Endable ended = countRings(bell, resumptions);
    }
    Q_EMIT bell.rung();
    drain();
    EXPECT_EQ(resumptions, 0);
}

TEST_F(SignalWaitTest, ACoroutineCanEndBetweenTheSignalAndItsTurn) {
    {
        const Endable ended = countRings(bell, resumptions);
        Q_EMIT bell.rung();
    }
    drain();
    EXPECT_EQ(resumptions, 0);
}

TEST_F(SignalWaitTest, ACoroutineCanEndInsideTheSignal) {
    auto ended = std::make_unique<Endable>(countRings(bell, resumptions));
    QObject::connect(&bell, &Bell::rung, &bell, [&ended] { ended.reset(); });
    Q_EMIT bell.rung();
    drain();
    EXPECT_EQ(resumptions, 0);
}

TEST_F(SignalWaitTest, EachWaiterGoesOn) {
    for (int i = 0; i < 3; ++i)
        countResumptions(bell, SignalWait::noLimit, resumptions);
    Q_EMIT bell.rung();
    drain();
    EXPECT_EQ(resumptions, 3);
}

TEST_F(SignalWaitTest, AWaiterMayDestroyTheEmitter) {
    auto mortal = std::make_unique<Bell>();
    const auto wait = [](std::unique_ptr<Bell> &from, int &count) -> QCoro::Task<> {
        co_await SignalWait(from.get(), &Bell::rung, 1h);
        from.reset();
        ++count;
    };
    wait(mortal, resumptions);
    Q_EMIT mortal->rung();
    Q_EMIT mortal->rung();
    drain();
    EXPECT_EQ(resumptions, 1);
}

} // namespace
} // namespace quillmender

#include "SignalWaitTest.moc"
