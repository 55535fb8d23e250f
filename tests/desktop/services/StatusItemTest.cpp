#include "FakeStatusWatcher.h"
#include "PrivateSession.h"
#include "platform/linux/services/TrayStatusItem.h"
#include "platform/none/NoneAppearance.h"

#include <QApplication>
#include <QDBusMessage>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace quillmender {

namespace {

StatusItemContents contents(std::function<void()> handler = {}) {
    return {QStringLiteral("text.quote"),
            QStringLiteral("Quillmender"),
            QStringLiteral("Quillmender"),
            {{QStringLiteral("Transform"), std::nullopt, false, std::move(handler)}}};
}

const QDBusConnection noBus(QStringLiteral("no such connection"));

/// How often the first line has been chosen once the host has activated the item, if no menu
/// opened.
int firstLineCallsOfActivation(const FakeStatusWatcher &watcher, WindowSystemTray *tray) {
    NoneAppearance appearance;
    int calls = 0;
    TrayStatusItem item(appearance, tray);
    item.show(contents([&calls] { ++calls; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.items().size() == 1; }, deadline));
    QDBusMessage call = QDBusMessage::createMethodCall(
        watcher.items().value(0), QStringLiteral("/StatusNotifierItem"),
        QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("Activate"));
    call << 0 << 0;
    QDBusConnection::sessionBus().send(call);
    const auto isMenuOpen = [] { return QApplication::activePopupWidget() != nullptr; };
    EXPECT_TRUE(QTest::qWaitFor([&] { return isMenuOpen() || calls > 0; }, deadline));
    EXPECT_NE(isMenuOpen(), calls > 0);
    return calls;
}

/// A window system's tray that is never there, and counts who looks.
class FakeTray : public WindowSystemTray {
  public:
    bool isThere() override {
        ++looks;
        return false;
    }
    void onAnnouncement(std::function<void()> told) override { listener = std::move(told); }

    int looks = 0;
    std::function<void()> listener;
};

} // namespace

// The order of these cases matters: the toolkit decides at the first icon of a process what kind
// of status area there is, so the first case must be the one that starts without any.
TEST(StatusItemTest, RegistersWhenTheStatusAreaComesLaterAndAgainWhenItRestarts) {
    NoneAppearance appearance;
    TrayStatusItem item(appearance, nullptr);
    item.show(contents());
    item.updateMenuItem(0, QStringLiteral("Transform"), false);
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
    NoneAppearance appearance;
    TrayStatusItem item(appearance, nullptr);
    item.show(contents());
    QTest::qWait(0);
    EXPECT_EQ(watcher.items(), QStringList());
    watcher.addHost();
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.items().size() == 1; }, deadline));
}

TEST(StatusItemTest, RegistersAtOnceWhenTheStatusAreaIsThere) {
    const FakeStatusWatcher watcher;
    NoneAppearance appearance;
    TrayStatusItem item(appearance, nullptr);
    item.show(contents());
    EXPECT_TRUE(QTest::qWaitFor([&] { return watcher.items().size() == 1; }, deadline));
}

TEST(StatusItemTest, WhoActivatesItGetsTheMenu) {
    const FakeStatusWatcher watcher;
    FakeTray tray;
    EXPECT_EQ(firstLineCallsOfActivation(watcher, &tray), 0);
}

TEST(StatusItemTest, WhoActivatesItGetsItsFirstLineWhereTheMenuHasNoPlace) {
    const FakeStatusWatcher watcher;
    EXPECT_EQ(firstLineCallsOfActivation(watcher, nullptr), 1);
}

TEST(StatusItemTest, NothingBreaksWithoutABus) {
    NoneAppearance appearance;
    TrayStatusItem item(appearance, nullptr, noBus);
    item.show(contents());
    item.updateMenuItem(0, QStringLiteral("New"), true);
    item.updateMenuItem(7, QStringLiteral("None"), true);
}

TEST(StatusItemTest, WithoutABusTheWindowSystemsTrayIsLookedFor) {
    NoneAppearance appearance;
    FakeTray tray;
    {
        TrayStatusItem item(appearance, &tray, noBus);
        EXPECT_EQ(tray.looks, 0) << "made, not shown";
        item.show(contents());
        EXPECT_EQ(tray.looks, 1);
        EXPECT_TRUE(tray.listener);
    }
    EXPECT_FALSE(tray.listener) << "nobody is left to be told";
}

TEST(StatusItemTest, ATrayThatAnnouncesItselfIsLookedForOnceTheBusHasNoHost) {
    NoneAppearance appearance;
    FakeTray tray;
    TrayStatusItem item(appearance, &tray);
    item.show(contents());
    EXPECT_TRUE(QTest::qWaitFor([&] { return tray.looks == 1; }, deadline));
    tray.listener();
    EXPECT_TRUE(QTest::qWaitFor([&] { return tray.looks == 2; }, deadline));
}

} // namespace quillmender
