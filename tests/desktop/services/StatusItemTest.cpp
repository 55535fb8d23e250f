#include "FakeStatusWatcher.h"
#include "platform/linux/services/LinuxPresence.h"

#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace quillmender {

namespace {

constexpr int deadline = 10000;

StatusItem item() {
    return {QStringLiteral("text.quote"),
            QStringLiteral("Quillmender"),
            QStringLiteral("Quillmender"),
            {{QStringLiteral("Transform"), QString(), 0, false, {}}}};
}

} // namespace

// The order of these cases matters: the toolkit decides at the first icon of a process what kind
// of status area there is, so the first case must be the one that starts without any.
TEST(StatusItemTest, RegistersWhenTheStatusAreaComesLaterAndAgainWhenItRestarts) {
    LinuxPresence presence(nullptr);
    presence.showStatusItem(item());
    presence.updateStatusMenuItem(0, QStringLiteral("Transform"), false);
    QTest::qWait(0);

    auto watcher = std::make_unique<FakeStatusWatcher>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher->items().size() == 1; }, deadline));
    const QString registered = watcher->items().constFirst();

    watcher.reset();
    watcher = std::make_unique<FakeStatusWatcher>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher->items().contains(registered); }, deadline));
    EXPECT_EQ(watcher->items().size(), 1);
}

TEST(StatusItemTest, WaitsForAHost) {
    FakeStatusWatcher watcher(false);
    LinuxPresence presence(nullptr);
    presence.showStatusItem(item());
    QTest::qWait(0);
    EXPECT_EQ(watcher.items(), QStringList());
    watcher.addHost();
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.items().size() == 1; }, deadline));
}

TEST(StatusItemTest, RegistersAtOnceWhenTheStatusAreaIsThere) {
    const FakeStatusWatcher watcher;
    LinuxPresence presence(nullptr);
    presence.showStatusItem(item());
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.items().size() == 1; }, deadline));
}

TEST(StatusItemTest, NothingBreaksWithoutABus) {
    LinuxPresence presence(nullptr, QDBusConnection(QStringLiteral("no such connection")));
    presence.showStatusItem(item());
    presence.updateStatusMenuItem(0, QStringLiteral("New"), true);
    presence.updateStatusMenuItem(7, QStringLiteral("None"), true);
    presence.applyPanelAttributes(1);
    presence.activateWindow(1);
    EXPECT_EQ(presence.appearance(), Appearance());
}

} // namespace quillmender
