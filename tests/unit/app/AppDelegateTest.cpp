#include "app/AppDelegate.h"

#include "fakes/FakeAccessibilityAccess.h"
#include "fakes/FakeAppearance.h"
#include "fakes/FakeChords.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeFocusedText.h"
#include "fakes/FakeHotKeys.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeOwnWindows.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeSecrets.h"
#include "fakes/FakeStatusItem.h"
#include "fakes/FakeSymbols.h"
#include "fakes/FakeWorkspace.h"
#include "platform/none/NoneUserDefaults.h"
#include "support/LoopbackServer.h"
#include "support/ProviderAnswers.h"
#include "ui/ActionTile.h"
#include "ui/AlertWindow.h"
#include "ui/HostedWindow.h"
#include "ui/PushButton.h"
#include "ui/TextLabel.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace quillmender {
namespace {

/// Says how often it was asked for, and lets the test act from outside.
class FakeInstance : public Instance {
  public:
    explicit FakeInstance(fakes::CallLog log) : log_(std::move(log)) {}

    InstanceClaim claim(std::function<void(const QString &action)> onAction) override {
        log_->append(QStringLiteral("claim"));
        perform = std::move(onAction);
        return {outcome};
    }

    std::function<void(const QString &action)> perform;
    InstanceClaim::Outcome outcome = InstanceClaim::Outcome::held;

  private:
    fakes::CallLog log_;
};

class AppDelegateTest : public testing::Test {
  protected:
    AppDelegateTest() {
        auto platform = std::make_unique<Platform>();
        platform->clock = make(clock);
        platform->instance = make(instance);
        platform->userDefaults = std::make_unique<NoneUserDefaults>();
        platform->secrets = make(secrets);
        platform->loginItem = std::make_unique<fakes::FakeLoginItem>(log);
        platform->workspace = std::make_unique<fakes::FakeWorkspace>(log);
        platform->accessibilityAccess = make(access);
        platform->focusedText = make(focus);
        platform->pasteboard = std::make_unique<fakes::FakePasteboard>(log);
        platform->chords = std::make_unique<fakes::FakeChords>(log);
        platform->hotKeys = make(hotKeys);
        platform->ownWindows = std::make_unique<fakes::FakeOwnWindows>(log);
        platform->symbols = std::make_unique<fakes::FakeSymbols>();
        platform->appearance = std::make_unique<fakes::FakeAppearance>();
        platform->statusItem = make(statusItem);
        platform->bundleVersion = QStringLiteral("1.2.3");
        platform->userDefaults->setString(QStringLiteral("settings.openai.endpoint"),
                                          server.baseUrl() + QStringLiteral("/v1/responses"));
        secrets->items[{QStringLiteral("com.quillmender.openAI"), QStringLiteral("api-key")}] =
            "key";
        const QUrl manifest(server.baseUrl() + QStringLiteral("/latest.json"));
        server.setAnswer(test::ScriptedAnswer::http(404, ""));
        platform->prepareMore = [this] {
            log->append(QStringLiteral("prepareMore"));
            return false;
        };
        ownWindows = static_cast<fakes::FakeOwnWindows *>(platform->ownWindows.get());
        const WarmUp::Pace quick{.afterStart = std::chrono::milliseconds(1),
                                 .between = std::chrono::milliseconds(0),
                                 .whenBusy = std::chrono::milliseconds(1)};
        delegate = std::make_unique<AppDelegate>(std::move(platform), manifest, quick);
    }

    template <typename Fake> std::unique_ptr<Fake> make(Fake *&fake) {
        auto made = std::make_unique<Fake>(log);
        fake = made.get();
        return made;
    }

    template <typename Widget> static QList<Widget *> shown() {
        QList<Widget *> found;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (auto *itself = qobject_cast<Widget *>(window); itself && itself->isVisible())
                found.append(itself);
            for (auto *widget : window->findChildren<Widget *>())
                if (widget->isVisible() && !widget->isWindow())
                    found.append(widget);
        }
        return found;
    }
    static QStringList windowTitles() {
        QStringList titles;
        for (const QWidget *window : QApplication::topLevelWidgets())
            if (window->isVisible())
                titles.append(window->windowTitle());
        titles.sort();
        return titles;
    }
    static bool shows(const QString &text) {
        const auto labels = shown<TextLabel>();
        return std::ranges::any_of(labels,
                                   [&](const TextLabel *label) { return label->text() == text; });
    }
    static bool press(const QString &caption) {
        for (Button *button : shown<Button>()) {
            if (button->caption() == caption) {
                button->click();
                return true;
            }
        }
        return false;
    }

    /// A session whose answer is on its way into another program by pasting.
    void startPasting() {
        focus->reading.selectedText = QStringLiteral("me goes");
        server.setAnswer(test::ScriptedAnswer::http(200, test::openAIBody(QStringLiteral("I go"))));
        instance->perform(QStringLiteral("transform"));
        clock->hold();
        ASSERT_TRUE(press(QStringLiteral("Fix My Grammar")));
        ASSERT_TRUE(QTest::qWaitFor([this] { return clock->sleeps > 0; }, 20'000));
    }

    /// That session comes to its end before the program does, however often it is asked to quit.
    void expectOrderlyEnd(const std::function<void()> &quit);

    test::LoopbackServer server;
    fakes::CallLog log = fakes::makeCallLog();
    FakeInstance *instance = nullptr;
    fakes::FakeClock *clock = nullptr;
    fakes::FakeAccessibilityAccess *access = nullptr;
    fakes::FakeFocusedText *focus = nullptr;
    fakes::FakeSecrets *secrets = nullptr;
    fakes::FakeHotKeys *hotKeys = nullptr;
    fakes::FakeOwnWindows *ownWindows = nullptr;
    fakes::FakeStatusItem *statusItem = nullptr;
    std::unique_ptr<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, LaunchesInItsOrder) {
    EXPECT_EQ(*log, QStringList(QStringLiteral("access.isGranted"))) << "made, not launched";
    log->clear();
    EXPECT_EQ(delegate->applicationDidFinishLaunching().outcome, InstanceClaim::Outcome::held);
    EXPECT_EQ(*log, QStringList({
                        QStringLiteral("claim"),
                        QStringLiteral("setAccessoryPolicy"),
                        QStringLiteral("showStatusItem"),
                        QStringLiteral("hold Ctrl+Alt+Space"),
                    }));
    EXPECT_EQ(windowTitles(), QStringList());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !server.requests().empty(); }, 20'000));
    EXPECT_EQ(server.requests().front().target, "/latest.json");
    EXPECT_FALSE(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, ThePanelIsMadeReadyUnseenAndIsTheOneThatIsShown) {
    delegate->applicationDidFinishLaunching();
    const auto isReady = [this] { return !ownWindows->calls.isEmpty(); };
    ASSERT_TRUE(QTest::qWaitFor(isReady, 20'000));
    EXPECT_TRUE(log->contains(QStringLiteral("prepareMore")));
    EXPECT_EQ(windowTitles(), QStringList());
    ASSERT_EQ(ownWindows->calls.size(), 1);
    EXPECT_EQ(ownWindows->calls.front().name, QStringLiteral("applyPanelAttributes"));

    instance->perform(QStringLiteral("transform"));
    EXPECT_EQ(windowTitles(), QStringList(QStringLiteral("Quillmender")));
    ASSERT_EQ(ownWindows->calls.size(), 2);
    EXPECT_EQ(ownWindows->calls.back().name, QStringLiteral("activate"));
    EXPECT_EQ(ownWindows->calls.back().window, ownWindows->calls.front().window);
}

TEST_F(AppDelegateTest, WhatIsInFrontIsLearnedOnceThePanelIsReady) {
    delegate->applicationDidFinishLaunching();
    const QString learned = QStringLiteral("focus.prepare");
    ASSERT_TRUE(QTest::qWaitFor([&] { return log->contains(learned); }, 20'000));
    EXPECT_FALSE(ownWindows->calls.isEmpty());
    EXPECT_FALSE(log->contains(QStringLiteral("focus.read")));
    EXPECT_EQ(log->count(learned), 1);
}

TEST_F(AppDelegateTest, AHotKeyDoesNotWaitForWhatIsLearned) {
    fakes::Gate silence;
    focus->gate = &silence;
    delegate->applicationDidFinishLaunching();
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return log->contains(QStringLiteral("focus.prepare")); }, 20'000));
    focus->gate = nullptr;
    instance->perform(QStringLiteral("transform"));
    EXPECT_EQ(windowTitles(), QStringList(QStringLiteral("Quillmender")));
    silence.open();
}

TEST_F(AppDelegateTest, NothingIsMadeReadyUnderAnOpenMenu) {
    QMenu menu;
    menu.addAction(QStringLiteral("Transform"));
    menu.popup(QPoint());
    delegate->applicationDidFinishLaunching();
    bool isLater = false;
    QTimer::singleShot(20, [&] { isLater = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return isLater; }, 20'000));
    EXPECT_TRUE(menu.isVisible());
    EXPECT_FALSE(log->contains(QStringLiteral("prepareMore")));
    menu.close();
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return log->contains(QStringLiteral("prepareMore")); }, 20'000));
}

TEST_F(AppDelegateTest, AHotKeyBeforeAnythingIsReadyShowsThePanel) {
    delegate->applicationDidFinishLaunching();
    instance->perform(QStringLiteral("transform"));
    EXPECT_EQ(windowTitles(), QStringList(QStringLiteral("Quillmender")));
    ASSERT_TRUE(press(QStringLiteral("Close")));
    const auto calls = ownWindows->calls;
    bool isLater = false;
    QTimer::singleShot(20, [&] { isLater = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return isLater; }, 20'000));
    EXPECT_EQ(ownWindows->calls, calls) << "no second panel is made";
    EXPECT_FALSE(log->contains(QStringLiteral("prepareMore")));
}

TEST_F(AppDelegateTest, ASecondCopyStartsNothing) {
    log->clear();
    instance->outcome = InstanceClaim::Outcome::otherActivated;
    EXPECT_EQ(delegate->applicationDidFinishLaunching().outcome, instance->outcome);
    EXPECT_EQ(*log, QStringList(QStringLiteral("claim")));
    EXPECT_EQ(hotKeys->held, nullptr);
    EXPECT_EQ(windowTitles(), QStringList());
}

TEST_F(AppDelegateTest, WhatIsAskedFromOutsideIsDone) {
    delegate->applicationDidFinishLaunching();
    instance->perform(QStringLiteral("transform"));
    EXPECT_EQ(windowTitles(), QStringList(QStringLiteral("Quillmender")));
    ASSERT_TRUE(press(QStringLiteral("Close")));
    EXPECT_EQ(windowTitles(), QStringList());

    instance->perform(QStringLiteral("about"));
    EXPECT_EQ(windowTitles(), QStringList(QStringLiteral("About Quillmender")));
    EXPECT_TRUE(shows(QStringLiteral("Version 1.2.3")));
    instance->perform(QStringLiteral("settings"));
    EXPECT_EQ(windowTitles(), QStringList({QStringLiteral("About Quillmender"),
                                           QStringLiteral("Quillmender Settings")}));
    for (HostedWindow *window : shown<HostedWindow>())
        window->close();
    instance->perform(QString());
    EXPECT_EQ(windowTitles(), QStringList(QStringLiteral("Quillmender Settings")))
        << "a second start";
}

TEST_F(AppDelegateTest, TheWindowsAreMadeOnceAndUsedAgain) {
    delegate->applicationDidFinishLaunching();
    const QString ways[] = {QStringLiteral("about"), QStringLiteral("settings")};
    for (const QString &way : ways) {
        instance->perform(way);
        ASSERT_EQ(shown<HostedWindow>().size(), 1);
        const QPointer first(shown<HostedWindow>().constFirst());
        first->close();
        instance->perform(way);
        instance->perform(way);
        ASSERT_TRUE(first);
        EXPECT_EQ(shown<HostedWindow>(), QList<HostedWindow *>({first}));
        first->close();
    }
    instance->perform(QStringLiteral("transform"));
    const QPointer panel(shown<ActionTile>().constFirst()->window());
    instance->perform(QStringLiteral("transform"));
    ASSERT_TRUE(panel);
    EXPECT_EQ(shown<ActionTile>().constFirst()->window(), panel);
    EXPECT_EQ(windowTitles().size(), 1);
}

TEST_F(AppDelegateTest, TheAlertOffersTheDownloadAndGoesAway) {
    server.setAnswer(test::ScriptedAnswer::http(
        200, R"({"version":"1.2.4","download_url":"https://releases.test/get"})"));
    delegate->applicationDidFinishLaunching();
    ASSERT_TRUE(QTest::qWaitFor([] { return !shown<AlertWindow>().isEmpty(); }, 20'000));
    EXPECT_TRUE(shows(QStringLiteral("Quillmender 1.2.4 is available")));
    log->clear();
    ASSERT_TRUE(press(QStringLiteral("Download")));
    EXPECT_EQ(*log, QStringList(QStringLiteral("openUrl https://releases.test/get")));
    EXPECT_TRUE(shown<AlertWindow>().isEmpty());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(AppDelegateTest, QuittingEndsWhatIsUnderWayHandsTheClipboardOverAndThenQuits) {
    expectOrderlyEnd([this] { statusItem->contents.menu.constLast().handler(); });
}

TEST_F(AppDelegateTest, WhatTheSystemAsksToQuitEndsInTheSameOrder) {
    expectOrderlyEnd([] {
        QEvent quit(QEvent::Quit);
        quit.ignore();
        QCoreApplication::sendEvent(QCoreApplication::instance(), &quit);
        EXPECT_TRUE(quit.isAccepted()) << "a log-out would be called off";
    });
}

void AppDelegateTest::expectOrderlyEnd(const std::function<void()> &quit) {
    delegate->applicationDidFinishLaunching();
    startPasting();
    log->clear();
    QTimer::singleShot(0, QCoreApplication::instance(), [quit] {
        quit();
        quit();
    });
    QTimer::singleShot(std::chrono::seconds(50), QCoreApplication::instance(), [] {
        ADD_FAILURE() << "it does not quit";
        QCoreApplication::exit(1);
    });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    const auto cancelled = log->indexOf(QStringLiteral("cancelAll"));
    const auto restored = log->lastIndexOf(QStringLiteral("pasteboard.replaceContents 0"));
    const auto handedOver = log->indexOf(QStringLiteral("pasteboard.handOver"));
    EXPECT_GE(cancelled, 0);
    EXPECT_GT(restored, cancelled);
    EXPECT_GT(handedOver, restored);
    EXPECT_EQ(log->count(QStringLiteral("cancelAll")), 1);
    EXPECT_EQ(log->count(QStringLiteral("pasteboard.handOver")), 1);
    EXPECT_EQ(windowTitles(), QStringList()) << "the panel is away at once";
}

} // namespace
} // namespace quillmender
