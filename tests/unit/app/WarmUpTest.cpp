#include "app/WarmUp.h"

#include <QTest>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

using namespace std::chrono_literals;

constexpr int deadlineMs = 20'000;
constexpr WarmUp::Pace quick{.afterStart = 1ms, .between = 0ms, .whenBusy = 1ms};

class WarmUpTest : public testing::Test {
  protected:
    bool waitFor(const std::function<bool()> &condition) {
        return QTest::qWaitFor(condition, deadlineMs);
    }

    /// Whatever else could come has come when a later timer has.
    void letTimersPass() {
        bool isOver = false;
        QTimer::singleShot(quick.whenBusy + 10ms, [&] { isOver = true; });
        ASSERT_TRUE(waitFor([&] { return isOver; }));
    }

    bool isQuiet = true;
    int asked = 0;
    int done = 0;
    int pieces = 3;
    WarmUp warmUp{[this] {
                      ++asked;
                      return isQuiet;
                  },
                  [this] { return ++done < pieces; }, quick};
};

TEST_F(WarmUpTest, NothingIsDoneBeforeTheStart) {
    letTimersPass();
    EXPECT_EQ(done, 0);
}

TEST_F(WarmUpTest, NothingIsDoneInTheTurnOfTheStart) {
    warmUp.start();
    EXPECT_EQ(done, 0);
}

TEST_F(WarmUpTest, EveryPieceIsDoneOnceAndAfterALookAround) {
    warmUp.start();
    ASSERT_TRUE(waitFor([this] { return done == pieces; }));
    letTimersPass();
    EXPECT_EQ(done, pieces);
    EXPECT_EQ(asked, pieces);
}

TEST_F(WarmUpTest, TheLoopTurnsBetweenTwoPieces) {
    QList<QString> order;
    WarmUp talking([] { return true; },
                   [&] {
                       order.append(QStringLiteral("piece"));
                       QTimer::singleShot(0, [&] { order.append(QStringLiteral("other")); });
                       return order.count(QStringLiteral("piece")) < 2;
                   },
                   quick);
    talking.start();
    ASSERT_TRUE(waitFor([&] { return order.size() == 4; }));
    EXPECT_EQ(order.indexOf(QStringLiteral("other")), 1);
}

TEST_F(WarmUpTest, WaitsWhileSomethingGoesOn) {
    isQuiet = false;
    warmUp.start();
    ASSERT_TRUE(waitFor([this] { return asked >= 3; }));
    EXPECT_EQ(done, 0);
    isQuiet = true;
    EXPECT_TRUE(waitFor([this] { return done == pieces; }));
}

TEST_F(WarmUpTest, DoesNothingAfterItsEnd) {
    warmUp.start();
    ASSERT_TRUE(waitFor([this] { return done == 1; }));
    warmUp.stop();
    letTimersPass();
    EXPECT_EQ(done, 1);
}

TEST_F(WarmUpTest, APieceMayEndIt) {
    WarmUp *self = nullptr;
    int own = 0;
    WarmUp ending([] { return true; },
                  [&] {
                      ++own;
                      self->stop();
                      return true;
                  },
                  quick);
    self = &ending;
    ending.start();
    ASSERT_TRUE(waitFor([&] { return own > 0; }));
    letTimersPass();
    EXPECT_EQ(own, 1);
}

} // namespace
} // namespace quillmender
