#include "platform/linux/wayland/WaylandConnection.h"

#include "TestCompositor.h"
#include "platform/linux/wayland/ToolkitLoss.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <future>

namespace quillmender {
namespace {

using wayland::WaylandConnection;

constexpr int deadlineMs = 20'000;

class WaylandConnectionTest : public testing::Test {
  protected:
    WaylandConnection &connection() {
        if (!connection_)
            connection_ = WaylandConnection::open(compositor.name());
        return *connection_;
    }
    bool answers() {
        return QCoro::waitFor(connection().roundTrip(std::chrono::milliseconds(deadlineMs)));
    }

    TestCompositor compositor;

  private:
    std::unique_ptr<WaylandConnection> connection_;
};

TEST_F(WaylandConnectionTest, ThereIsNoneWithoutACompositor) {
    EXPECT_EQ(WaylandConnection::open("/nowhere/wayland-7"), nullptr);
    compositor.end();
    EXPECT_EQ(WaylandConnection::open(compositor.name()), nullptr);
}

TEST_F(WaylandConnectionTest, ACompositorThatNeverAnswersIsNone) {
    compositor.stall();
    EXPECT_EQ(WaylandConnection::open(compositor.name(), std::chrono::milliseconds(50)), nullptr);
}

TEST_F(WaylandConnectionTest, ACompositorThatIsBusyAtFirstIsWaitedFor) {
    compositor.add(wl_compositor_interface, 3);
    compositor.stall();
    std::promise<void> outcome;
    std::thread logIn([this, &outcome] {
        // So long it is busy, or until it has been given up.
        outcome.get_future().wait_for(std::chrono::seconds(2));
        compositor.goOn();
    });
    const auto late = WaylandConnection::open(compositor.name());
    outcome.set_value();
    logIn.join();
    ASSERT_NE(late, nullptr);
    EXPECT_EQ(late->offeredVersion(wl_compositor_interface), 3U);
}

TEST_F(WaylandConnectionTest, KnowsWhatIsOfferedAtTheStart) {
    compositor.add(wl_compositor_interface, 3);
    ASSERT_EQ(connection().offeredVersion(wl_compositor_interface), 3U);
    EXPECT_EQ(connection().offeredVersion(wl_output_interface), 0U);
    EXPECT_EQ(connection().seat(), nullptr);
    EXPECT_TRUE(answers());
}

TEST_F(WaylandConnectionTest, TakesTheFirstSeatForAsLongAsItIsThere) {
    wl_global *first = compositor.add(wl_seat_interface, 8);
    compositor.add(wl_seat_interface, 8);
    wl_seat *const seat = connection().seat();
    ASSERT_NE(seat, nullptr);
    EXPECT_EQ(wl_seat_get_version(seat), 5U);
    const QSignalSpy withdrawn(&connection(), &WaylandConnection::globalWithdrawn);
    compositor.remove(first);
    ASSERT_TRUE(answers());
    EXPECT_EQ(withdrawn.count(), 1);
    EXPECT_NE(connection().seat(), seat);
    EXPECT_FALSE(connection().isLost());
}

TEST_F(WaylandConnectionTest, GlobalsComeAndGo) {
    ASSERT_TRUE(answers());
    const QSignalSpy announced(&connection(), &WaylandConnection::globalAnnounced);
    wl_global *late = compositor.add(wl_compositor_interface, 2);
    ASSERT_TRUE(answers());
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced.front().front().toByteArray(), "wl_compositor");
    compositor.remove(late);
    ASSERT_TRUE(answers());
    EXPECT_EQ(connection().offeredVersion(wl_compositor_interface), 0U);
}

TEST_F(WaylandConnectionTest, ItIsLostOnceWhenTheCompositorEnds) {
    QSignalSpy lost(&connection(), &WaylandConnection::lost);
    compositor.end();
    ASSERT_TRUE(lost.wait(deadlineMs));
    EXPECT_TRUE(connection().isLost());
    EXPECT_FALSE(answers());
    EXPECT_FALSE(connection().settle(std::chrono::milliseconds(1)));
    connection().flush();
    QCoreApplication::processEvents();
    EXPECT_EQ(lost.count(), 1);
}

TEST_F(WaylandConnectionTest, ItIsLostWhenTheCompositorFindsFault) {
    ASSERT_TRUE(answers());
    QSignalSpy lost(&connection(), &WaylandConnection::lost);
    compositor.run([](wl_display *display) {
        wl_client *client = wl_client_from_link(wl_display_get_client_list(display)->next);
        wl_client_post_implementation_error(client, "a fault of the test's own");
    });
    ASSERT_TRUE(lost.wait(deadlineMs));
    EXPECT_TRUE(connection().isLost());
}

TEST_F(WaylandConnectionTest, ARoundTripIsNotWaitedForForever) {
    ASSERT_TRUE(answers());
    compositor.stall();
    EXPECT_FALSE(QCoro::waitFor(connection().roundTrip(std::chrono::milliseconds(50))));
    EXPECT_FALSE(connection().settle(std::chrono::milliseconds(50)));
    EXPECT_FALSE(connection().isLost());
}

TEST(ToolkitLossTest, KnowsTheToolkitsWordsForIt) {
    EXPECT_TRUE(wayland::tellsOfLoss(
        QStringLiteral("The Wayland connection broke. Did the Wayland compositor die?")));
    EXPECT_TRUE(wayland::tellsOfLoss(
        QStringLiteral("The Wayland connection experienced a fatal error: Protocol error")));
    EXPECT_FALSE(wayland::tellsOfLoss(QStringLiteral("Wayland does not support it")));
}

TEST_F(WaylandConnectionTest, ARoundTripEndsWhenTheCompositorDoes) {
    ASSERT_TRUE(answers());
    compositor.stall();
    const auto trip = connection().roundTrip(std::chrono::hours(1));
    compositor.end();
    EXPECT_TRUE(QTest::qWaitFor([&] { return trip.isReady(); }, deadlineMs));
    EXPECT_FALSE(QCoro::waitFor(connection().roundTrip(std::chrono::hours(1))));
}

TEST_F(WaylandConnectionTest, ARoundTripEndsWithItsConnection) {
    auto mortal = WaylandConnection::open(compositor.name());
    compositor.stall();
    bool isOver = false;
    bool hasArrived = true;
    const auto waits = [&]() -> QCoro::Task<> {
        hasArrived = co_await mortal->roundTrip(std::chrono::hours(1));
        isOver = true;
    };
    const auto waiting = waits();
    mortal.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isOver; }, deadlineMs));
    EXPECT_FALSE(hasArrived);
}

} // namespace
} // namespace quillmender
