#include "platform/linux/wayland/keys/CopyWatch.h"

#include "platform/SignalWait.h"
#include "unit/platform/wayland/WaitFor.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;

/// An application that answers when the test lets it.
class HeldPulse : public QObject, public ApplicationPulse {
    Q_OBJECT

  public:
    QCoro::Task<bool> beats(std::chrono::milliseconds) override {
        ++asked;
        co_await SignalWait(this, &HeldPulse::decided);
        co_return isAlive;
    }

    int asked = 0;
    bool isAlive = true;

  Q_SIGNALS:
    void decided();
};

class CopyWatchTest : public testing::Test {
  protected:
    CopyWatchTest() {
        QObject::connect(&watch_, &CopyWatch::settled, [this] { ++settled_; });
    }

    bool answer(bool isAlive) {
        const int before = pulse_->asked;
        pulse_->isAlive = isAlive;
        Q_EMIT pulse_->decided();
        return waitFor([&] { return pulse_->asked > before; }, 2s);
    }

    CopyWatch watch_;
    std::shared_ptr<HeldPulse> pulse_ = std::make_shared<HeldPulse>();
    int settled_ = 0;
};

TEST_F(CopyWatchTest, FollowsForAWhileAfterTwoAnswers) {
    watch_.start(7);
    watch_.follow(pulse_);
    EXPECT_TRUE(answer(false)) << "silence is no answer";
    EXPECT_TRUE(answer(true));
    QElapsedTimer sinceTheSecond;
    sinceTheSecond.start();
    EXPECT_FALSE(answer(true)) << "nobody is asked a third time";
    EXPECT_TRUE(waitFor([&] { return watch_.pending() == 0; }));
    EXPECT_GE(sinceTheSecond.elapsed(), 2800);
    EXPECT_EQ(settled_, 1);
}

TEST_F(CopyWatchTest, FollowsWhoSaysNothing) {
    watch_.start(7);
    watch_.follow(pulse_);
    EXPECT_FALSE(waitFor([&] { return watch_.pending() != 7; }, 4s));
}

TEST_F(CopyWatchTest, FollowsWhoCannotBeAskedForThreeSeconds) {
    QElapsedTimer timer;
    timer.start();
    watch_.start(7);
    watch_.follow(nullptr);
    EXPECT_TRUE(waitFor([&] { return watch_.pending() == 0; }));
    EXPECT_GE(timer.elapsed(), 2800);
    EXPECT_EQ(settled_, 1);
}

TEST_F(CopyWatchTest, FollowsNobodyUnknown) {
    watch_.start(0);
    watch_.follow(pulse_);
    EXPECT_EQ(watch_.pending(), 0);
    EXPECT_EQ(pulse_->asked, 0);
}

TEST_F(CopyWatchTest, TheNextChordIsFollowedInstead) {
    watch_.start(7);
    watch_.follow(pulse_);
    const auto next = std::make_shared<HeldPulse>();
    watch_.start(8);
    watch_.follow(next);
    EXPECT_EQ(settled_, 1);
    EXPECT_FALSE(answer(true)) << "the former one is not asked any more";
    EXPECT_FALSE(answer(true));
    EXPECT_EQ(watch_.pending(), 8);
}

} // namespace
} // namespace quillmender::wayland

#include "CopyWatchTest.moc"
