#include "platform/linux/atspi/ActiveFrames.h"

#include "desktop/harness/AccessibilityBus.h"
#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/TestApplication.h"

#include <QUuid>

namespace quillmender::atspi {
namespace {

using harness::TestApplication;
using harness::waitUntil;

class ActiveFramesTest : public harness::DesktopTest {
  protected:
    void SetUp() override {
        DesktopTest::SetUp();
        startDesktop({});
    }

    void TearDown() override {
        frames_.reset();
        bus_.reset();
        DesktopTest::TearDown();
    }

    void listen() {
        bus_ = std::make_unique<AtspiBus>(desktop().sessionBus().connection());
        frames_ = std::make_unique<ActiveFrames>(*bus_);
    }

    bool isInFront(const TestApplication &application) const {
        return frames_->isActive() && frames_->latest()->processId == application.pid();
    }

    void waitForFront(const TestApplication &application) {
        waitUntil([&] { return isInFront(application); },
                  QStringLiteral("the window is told to be in front"));
    }

    /// As if it were told by a window of this process.
    void tellOfOurs(const QString &event) {
        const QString name = QUuid::createUuid().toString();
        QDBusConnection ours =
            QDBusConnection::connectToBus(desktop().accessibilityBus()->address(), name);
        QDBusMessage signal = QDBusMessage::createSignal(
            QStringLiteral("/frame"), QStringLiteral("org.a11y.atspi.Event.Window"), event);
        ours.send(signal);
        own_.append(name);
    }

    std::unique_ptr<AtspiBus> bus_;
    std::unique_ptr<ActiveFrames> frames_;
    QStringList own_;
};

TEST_F(ActiveFramesTest, FollowsTheWindowInFront) {
    listen();
    waitUntil([&] { return bus_->isConnected(); }, QStringLiteral("the bus is there"));
    EXPECT_EQ(frames_->latest(), std::nullopt);
    EXPECT_FALSE(frames_->isActive());
    const auto first = TestApplication::mousepad(desktop(), QStringLiteral("one"));
    waitForFront(first);
    const QByteArray id = frames_->latest()->id;
    waitUntil([&] { return frames_->latest()->application == QStringLiteral("mousepad"); },
              QStringLiteral("it has told its name"));
    const auto second = TestApplication::mousepad(desktop(), QStringLiteral("two"));
    waitForFront(second);
    EXPECT_NE(frames_->latest()->id, id);
}

TEST_F(ActiveFramesTest, FindsTheWindowThatWasInFrontBefore) {
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("one"));
    listen();
    waitForFront(editor);
}

TEST_F(ActiveFramesTest, OneThatHangsDelaysNobody) {
    listen();
    auto hanging = TestApplication::mousepad(desktop(), QStringLiteral("one"));
    waitForFront(hanging);
    hanging.process().suspend();
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("two"));
    waitForFront(editor);
    hanging.process().resume();
}

TEST_F(ActiveFramesTest, GoesWithItsApplication) {
    listen();
    {
        const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("one"));
        waitForFront(editor);
    }
    waitUntil([&] { return !frames_->latest(); }, QStringLiteral("it has gone"));
    EXPECT_FALSE(frames_->isActive());
}

TEST_F(ActiveFramesTest, OursTakesItsPlaceAndIsNoneItself) {
    listen();
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("one"));
    waitForFront(editor);
    const QByteArray id = frames_->latest()->id;
    tellOfOurs(QStringLiteral("Activate"));
    waitUntil([&] { return !frames_->isActive(); }, QStringLiteral("ours is in front"));
    ASSERT_TRUE(frames_->latest());
    EXPECT_EQ(frames_->latest()->id, id);
}

} // namespace
} // namespace quillmender::atspi
