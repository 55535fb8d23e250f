#include "desktop/atspi/AtspiTest.h"
#include "desktop/atspi/KeyFollower.h"
#include "desktop/harness/Waiter.h"

#include <QCoroTask>
#include <QDBusConnectionInterface>

#include <csignal>

namespace quillmender::atspi {
namespace {

using harness::TestApplication;
using harness::waitUntil;

class RelayTest : public AtspiTest {
  protected:
    /// A Qt field with or without a text on the bus.
    TestApplication openQtField(const char *kind) {
        return TestApplication::sampleEditor(desktop(), QString::fromLatin1(kind),
                                             QStringLiteral("words"));
    }

    void waitForRelay() {
        waitUntil(
            [&] {
                focusedElement();
                return record().relay != nullptr;
            },
            QStringLiteral("a relay is known"));
    }

    bool waitUntilPassed() {
        return QCoro::waitFor(record().relay->waitUntilPassed(std::chrono::milliseconds(300)));
    }
};

TEST_F(RelayTest, QtTextsHaveOne) {
    start();
    const TestApplication field = openQtField("line");
    waitForFocus();
    waitForRelay();
    EXPECT_TRUE(waitUntilPassed());
}

TEST_F(RelayTest, QtFieldsWithoutTextHaveOne) {
    start();
    const TestApplication field = openQtField("commands");
    waitForRelay();
    EXPECT_EQ(focusedElement(), nullptr);
    EXPECT_TRUE(waitUntilPassed());
}

TEST_F(RelayTest, OthersHaveNone) {
    start();
    const TestApplication qt = openQtField("line");
    waitForRelay();
    const auto editor = TestApplication::mousepad(desktop(), QStringLiteral("other"));
    waitForValue(QStringLiteral("other"));
    EXPECT_EQ(record().relay, nullptr);
}

TEST_F(RelayTest, IsNotPassedWhereSomebodyHangs) {
    start();
    TestApplication field = openQtField("line");
    waitForRelay();
    field.process().suspend();
    EXPECT_FALSE(waitUntilPassed());
    field.process().resume();
    waitUntil([&] { return waitUntilPassed(); }, QStringLiteral("the application goes on"));

    const uint registry = desktop()
                              .accessibilityBus()
                              ->connection()
                              .interface()
                              ->servicePid(QStringLiteral("org.a11y.atspi.Registry"))
                              .value();
    ASSERT_NE(registry, 0);
    ::kill(static_cast<pid_t>(registry), SIGSTOP);
    EXPECT_FALSE(waitUntilPassed());
    ::kill(static_cast<pid_t>(registry), SIGCONT);
    waitUntil([&] { return waitUntilPassed(); }, QStringLiteral("the registry goes on"));
}

TEST_F(RelayTest, WaitsForAScreenReader) {
    start();
    const TestApplication field = openQtField("line");
    waitForRelay();
    KeyFollower reader(desktop().accessibilityBus()->connection());
    desktop().input().chord({'x'});
    waitUntil([&] { return reader.isAsked(); }, QStringLiteral("the reader is shown the key"));
    EXPECT_FALSE(waitUntilPassed());
    reader.letGo();
    EXPECT_TRUE(waitUntilPassed());
    EXPECT_EQ(field.focusedText().text(), QStringLiteral("wordsx"));
}

} // namespace
} // namespace quillmender::atspi
