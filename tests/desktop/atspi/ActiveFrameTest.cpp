#include "desktop/atspi/AccessibleProgram.h"
#include "desktop/atspi/AtspiTest.h"
#include "desktop/harness/AccessibilityBus.h"

namespace quillmender::atspi {
namespace {

using harness::waitUntil;

const AccessibleProgram::Options behind{.isActive = false};

/// Nobody knows the application in front but the accessibility bus.
class ActiveFrameTest : public AtspiTest {
  protected:
    void SetUp() override {
        AtspiTest::SetUp();
        harness::Desktop::Options options;
        options.windowManager = false;
        options.keyring = false;
        start(options);
        frontmost().pretended = RunningApplicationRef();
        waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is there"));
    }

    void expectNothing() {
        const FocusReading reading = read(nullptr);
        EXPECT_EQ(reading.application, nullptr);
        EXPECT_EQ(reading.element, nullptr);
        EXPECT_EQ(reading.selectedText, std::nullopt);
        EXPECT_EQ(reading.value, std::nullopt);
        EXPECT_FALSE(reading.isElsewhere);
    }
};

TEST_F(ActiveFrameTest, ApplicationThatSaysSoIsRead) {
    const AccessibleProgram other(desktop(), QStringLiteral("other"), behind);
    const AccessibleProgram front(desktop(), QStringLiteral("words"));
    const FocusReading reading = read(nullptr);
    ASSERT_NE(reading.application, nullptr);
    EXPECT_EQ(reading.application->processId(), front.pid());
    EXPECT_NE(reading.element, nullptr);
    EXPECT_EQ(reading.value, QStringLiteral("words"));
    EXPECT_FALSE(reading.isElsewhere);
    EXPECT_EQ(record().role, FocusContext::Role::text);
}

TEST_F(ActiveFrameTest, ApplicationIsTheSameWheneverItIsRead) {
    const AccessibleProgram front(desktop(), QStringLiteral("words"));
    const FocusReading first = read(nullptr);
    const FocusReading second = read(nullptr);
    ASSERT_NE(first.application, nullptr);
    ASSERT_NE(second.application, nullptr);
    EXPECT_TRUE(first.application->isSame(*second.application));
    EXPECT_FALSE(first.application->isSame(WindowApplication(front.pid() + 1)));
}

TEST_F(ActiveFrameTest, WindowWhoseProcessIsUnknownIsFoundByItToo) {
    const AccessibleProgram other(desktop(), QStringLiteral("other"), behind);
    const AccessibleProgram front(desktop(), QStringLiteral("words"));
    frontmost().pretend(0);
    const FocusReading reading = read();
    EXPECT_EQ(reading.application, frontmost().application());
    EXPECT_EQ(reading.value, QStringLiteral("words"));
}

TEST_F(ActiveFrameTest, OfTwoNobodyKnowsWhich) {
    const AccessibleProgram one(desktop(), QStringLiteral("one"));
    {
        const AccessibleProgram two(desktop(), QStringLiteral("two"));
        expectNothing();
        frontmost().pretend(0);
        EXPECT_EQ(read().element, nullptr);
        frontmost().pretended = RunningApplicationRef();
    }
    waitUntil([&] { return read(nullptr).value == QStringLiteral("one"); },
              QStringLiteral("there is only one again"));
}

TEST_F(ActiveFrameTest, WithoutOneNothingIsRead) {
    const AccessibleProgram one(desktop(), QStringLiteral("one"), behind);
    expectNothing();
}

TEST_F(ActiveFrameTest, OurOwnDoesNotCount) {
    ScriptedApplication own(desktop().accessibilityBus()->address(), QStringLiteral("own"));
    own.join();
    expectNothing();
    const AccessibleProgram front(desktop(), QStringLiteral("words"));
    EXPECT_EQ(read(nullptr).value, QStringLiteral("words"));
}

TEST_F(ActiveFrameTest, OthersThatHangDoNotHideIt) {
    // More than there is time to wait for one after another.
    constexpr int others = 6;
    std::vector<std::unique_ptr<AccessibleProgram>> hanging;
    hanging.reserve(others);
    for (int i = 0; i < others; ++i)
        hanging.push_back(
            std::make_unique<AccessibleProgram>(desktop(), QString::number(i), behind));
    const AccessibleProgram front(desktop(), QStringLiteral("words"));
    for (const auto &program : hanging)
        program->process().suspend();
    waitForValue(QStringLiteral("words"));
}

} // namespace
} // namespace quillmender::atspi
