#include "desktop/atspi/AtspiTest.h"
#include "platform/linux/atspi/BusProbe.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <csignal>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quillmender::atspi {
namespace {

using harness::Desktop;
using harness::TestApplication;
using harness::waitUntil;

class HostileBusTest : public AtspiTest {};

TEST_F(HostileBusTest, SwitchIsTheAnswerAndCanBeSet) {
    Desktop::Options options;
    options.accessibilityEnabled = false;
    start(options);
    EXPECT_FALSE(access().isGranted());
    EXPECT_FALSE(desktop().accessibilityBus()->isEnabled());
    access().request();
    EXPECT_TRUE(access().isGranted());
    EXPECT_TRUE(desktop().accessibilityBus()->isEnabled());
    desktop().accessibilityBus()->setEnabled(false);
    EXPECT_FALSE(access().isGranted());
}

TEST_F(HostileBusTest, WhatWasAskedBeforeTheSwitchWasSetCountsNoMore) {
    Desktop::Options options;
    options.accessibilityEnabled = false;
    start(options);
    EXPECT_FALSE(access().isGranted());
    access().ask();
    access().request();
    EXPECT_TRUE(access().isGranted());
}

TEST_F(HostileBusTest, EachQuestionIsWaitedForOnce) {
    start();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    access().ask();
    EXPECT_TRUE(access().isGranted());
    desktop().accessibilityBus()->setEnabled(false);
    EXPECT_FALSE(access().isGranted());
}

TEST_F(HostileBusTest, QuestionThatNobodyWaitedForIsForgotten) {
    start();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    access().ask();
    const QDeadlineTimer patience(AtspiAccess::patience);
    desktop().accessibilityBus()->setEnabled(false);
    waitUntil([&] { return patience.hasExpired(); }, QStringLiteral("its time is over"));
    EXPECT_FALSE(access().isGranted());
}

TEST_F(HostileBusTest, AskingDoesNotWaitForABusThatIsSilent) {
    start();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    const auto keeper = pid_t(desktop().accessibilityBus()->process().pid());
    kill(keeper, SIGSTOP);
    access().ask();
    kill(keeper, SIGCONT);
    EXPECT_TRUE(access().isGranted()) << "it answers in time, to the question that was put";
}

TEST_F(HostileBusTest, SwitchThatGivesNoAnswerIsOff) {
    start();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    // The program that keeps the switch, and not the bus itself.
    const auto keeper = pid_t(desktop().accessibilityBus()->process().pid());
    kill(keeper, SIGSTOP);
    EXPECT_FALSE(access().isGranted());
    kill(keeper, SIGCONT);
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted again"));
}

TEST_F(HostileBusTest, BusThatGivesNoAnswerIsNoAccess) {
    start();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    // The bus itself, which the keeper of the switch has started.
    const qint64 keeper = desktop().accessibilityBus()->process().pid();
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(keeper));
    ASSERT_TRUE(children.open(QIODevice::ReadOnly));
    const pid_t daemon = children.readAll().split(' ').constFirst().toInt();
    ASSERT_GT(daemon, 0);
    kill(daemon, SIGSTOP);
    EXPECT_FALSE(access().isGranted());
    kill(daemon, SIGCONT);
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted again"));
}

TEST_F(HostileBusTest, AbsentBusIsHarmless) {
    Desktop::Options options;
    options.accessibilityBus = false;
    start(options);
    const TestApplication application =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), QStringLiteral("words"));
    EXPECT_FALSE(access().isGranted());
    access().request();
    EXPECT_FALSE(access().isGranted());
    EXPECT_EQ(focusedElement(), nullptr);
    EXPECT_EQ(record().role, FocusContext::Role::unknown);
}

TEST_F(HostileBusTest, BusMayComeLater) {
    Desktop::Options options;
    options.accessibilityBus = false;
    start(options);
    EXPECT_FALSE(access().isGranted());
    const harness::AccessibilityBus bus(desktop().sessionBus(), true, desktop().environment(),
                                        desktop().folders().log(QStringLiteral("late-bus")));
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    const TestApplication application =
        TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), QStringLiteral("words"));
    waitForValue(QStringLiteral("words"));
}

TEST_F(HostileBusTest, BusMayBeStartedAgain) {
    Desktop::Options options;
    options.accessibilityBus = false;
    start(options);
    for (int round = 0; round < 2; ++round) {
        const harness::AccessibilityBus bus(desktop().sessionBus(), true, desktop().environment(),
                                            desktop().folders().log(QStringLiteral("bus")));
        waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
        const TestApplication application = TestApplication::sampleEditor(
            desktop(), QStringLiteral("plain"), QStringLiteral("words"));
        waitForValue(QStringLiteral("words"));
    }
    waitUntil([&] { return !access().isGranted(); },
              QStringLiteral("the end of the bus is noticed"));
    EXPECT_EQ(focusedElement(), nullptr);
}

TEST_F(HostileBusTest, BusThatFallsSilentIsNotTrusted) {
    start();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    desktop().accessibilityBus()->process().suspend();
    EXPECT_FALSE(access().isGranted());
    EXPECT_EQ(focusedElement(), nullptr);
    desktop().accessibilityBus()->process().resume();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted again"));
}

TEST_F(HostileBusTest, BusThatAcceptsAndSaysNothingIsNotTrusted) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("silent"));
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_GE(listener, 0);
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    qstrncpy(name.sun_path, path.toUtf8().constData(), sizeof name.sun_path);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr *>(&name), sizeof name), 0);
    ASSERT_EQ(listen(listener, 4), 0);
    const QString address = QStringLiteral("unix:path=") + path;
    EXPECT_FALSE(busAuthenticates(address, QDeadlineTimer(50)));

    qputenv("AT_SPI_BUS_ADDRESS", address.toUtf8());
    start();
    EXPECT_FALSE(access().isGranted());
    EXPECT_EQ(focusedElement(), nullptr);
    qunsetenv("AT_SPI_BUS_ADDRESS");
    EXPECT_TRUE(access().isGranted());
    close(listener);
}

TEST_F(HostileBusTest, NothingIsAskedForThatTypingWouldSend) {
    start();
    waitUntil([&] { return access().isGranted(); }, QStringLiteral("the bus is trusted"));
    const QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/registry"),
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("GetRegisteredEvents"));
    const QDBusMessage answer =
        desktop().accessibilityBus()->connection().call(question, QDBus::Block, 5000);
    const auto list = answer.arguments().value(0).value<QDBusArgument>();
    QSet<QString> events;
    list.beginArray();
    while (!list.atEnd()) {
        QString listener;
        QString event;
        list.beginStructure();
        list >> listener >> event;
        list.endStructure();
        events.insert(event.toLower());
    }
    list.endArray();
    EXPECT_EQ(events, (QSet<QString>{QStringLiteral("object:statechanged:focused"),
                                     QStringLiteral("window:activate:")}));
}

} // namespace
} // namespace quillmender::atspi
