#include "desktop/wayland/kwin/KwinTest.h"
#include "platform/linux/wayland/kwin/PlasmaToplevels.h"

#include <QCoreApplication>
#include <QProcess>
#include <QRasterWindow>

namespace quillmender {
namespace {

class ToplevelsTest : public KwinTest {
  protected:
    void SetUp() override {
        KwinTest::SetUp();
        toplevels_ = kwin::PlasmaToplevels::create(*connection_);
        ASSERT_TRUE(toplevels_);
    }

    bool becomesActive(const QString &title) {
        return harness::becomesTrue([&] {
            const auto active = toplevels_->active();
            return active && active->title == title && toplevels_->hasKeyboard(active->id);
        });
    }

    std::unique_ptr<kwin::PlasmaToplevels> toplevels_;
};

TEST_F(ToplevelsTest, TheActiveWindowIsToldWithItsProcess) {
    EXPECT_FALSE(toplevels_->active());
    const TestWindowProcess first(QStringLiteral("first"));
    ASSERT_TRUE(becomesActive(QStringLiteral("first")));
    const wayland::Toplevel active = *toplevels_->active();
    EXPECT_EQ(active.processId, first.pid());
    EXPECT_EQ(active.appId, QStringLiteral("test.first"));
    EXPECT_FALSE(active.id.isEmpty());
    ASSERT_TRUE(active.frame);
    EXPECT_GE(active.frame->width, 400);
    EXPECT_GE(active.frame->height, 300);
}

TEST_F(ToplevelsTest, AWindowIsActivatedAndItsEndIsSeen) {
    TestWindowProcess first(QStringLiteral("first"));
    ASSERT_TRUE(becomesActive(QStringLiteral("first")));
    const QByteArray id = toplevels_->active()->id;
    std::optional<TestWindowProcess> second(std::in_place, QStringLiteral("second"));
    ASSERT_TRUE(becomesActive(QStringLiteral("second")));
    EXPECT_FALSE(toplevels_->hasKeyboard(id));
    ASSERT_TRUE(first.writes("inactive"));

    EXPECT_TRUE(toplevels_->activate(id));
    EXPECT_TRUE(becomesActive(QStringLiteral("first")));
    EXPECT_TRUE(first.writes("active"));

    ASSERT_TRUE(toplevels_->activate(id));
    const QByteArray before = toplevels_->active()->id;
    EXPECT_EQ(before, id);
    second.reset();
    EXPECT_TRUE(becomesActive(QStringLiteral("first")));
    EXPECT_FALSE(toplevels_->activate("an id of nobody"));
}

TEST_F(ToplevelsTest, OurOwnWindowsLeaveTheLastOneActive) {
    std::optional<TestWindowProcess> first(std::in_place, QStringLiteral("first"));
    ASSERT_TRUE(becomesActive(QStringLiteral("first")));
    const QByteArray id = toplevels_->active()->id;
    QRasterWindow own;
    own.resize(200, 200);
    own.show();
    ASSERT_TRUE(harness::becomesTrue([&] { return own.isActive(); }));
    ASSERT_TRUE(harness::becomesTrue([&] { return !toplevels_->hasKeyboard(id); }));
    ASSERT_TRUE(toplevels_->active());
    EXPECT_EQ(toplevels_->active()->id, id);
    first.reset();
    EXPECT_TRUE(harness::becomesTrue([&] { return !toplevels_->active(); }));
    EXPECT_TRUE(own.isActive());
}

TEST_F(ToplevelsTest, ManyWindowsThatCloseWhileTheyAreIntroduced) {
    for (int i = 0; i < 5; ++i) {
        const TestWindowProcess brief(QStringLiteral("brief"));
        // As soon as anything of it is known.
        harness::becomesTrue([&] { return toplevels_->active().has_value(); },
                             std::chrono::milliseconds(200 + 40 * i));
    }
    EXPECT_TRUE(harness::becomesTrue([&] { return !toplevels_->active(); }));
    EXPECT_FALSE(connection_->isLost());
    const TestWindowProcess last(QStringLiteral("last"));
    EXPECT_TRUE(becomesActive(QStringLiteral("last")));
}

TEST_F(ToplevelsTest, AProgramWithoutAnEntryIsOfferedNothing) {
    QProcess other;
    other.start(QStringLiteral(QUILLMENDER_TEST_WINDOW), {QStringLiteral("--offered")});
    ASSERT_TRUE(other.waitForFinished(20000));
    EXPECT_EQ(other.readAllStandardOutput().toStdString(), "no windows\nno keys\nno modifiers\n");
}

} // namespace
} // namespace quillmender
