#include "platform/HeldHotKey.h"
#include "platform/linux/wayland/sway/SwayHotKeys.h"
#include "unit/platform/wayland/FakeSway.h"

#include <QJsonArray>
#include <gmock/gmock.h>

namespace quillmender::sway {

namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr QKeyCombination askedKeys(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);

class SwayHotKeyTest : public testing::Test {
  protected:
    void hold(QKeyCombination keys = askedKeys) {
        HotKeyOutcome outcome = QCoro::waitFor(hotKeys_.hold(keys, [this] { ++presses_; }));
        reason_ = outcome.reason;
        hotKey_ = std::move(outcome.hotKey);
        if (hotKey_)
            QObject::connect(hotKey_.get(), &HeldHotKey::keysChanged, hotKey_.get(),
                             [this] { ++changes_; });
    }

    bool isHeld() const { return hotKey_ && hotKey_->keys() == askedKeys; }

    /// The command that the key is bound to.
    QString bound() const {
        QString command;
        for (const QString &one : sway_.commands()) {
            if (one.startsWith(QStringLiteral("bindsym")))
                command = one.mid(one.indexOf(QStringLiteral("nop")));
        }
        return command;
    }

    void pressKeys(const QString &command, const QStringList &symbols = {QStringLiteral("space")}) {
        const QJsonObject binding{{QStringLiteral("command"), command},
                                  {QStringLiteral("event_state_mask"),
                                   QJsonArray{QStringLiteral("Control"), QStringLiteral("Mod1")}},
                                  {QStringLiteral("input_code"), 0},
                                  {QStringLiteral("symbols"), QJsonArray::fromStringList(symbols)}};
        const QJsonObject content{{QStringLiteral("change"), QStringLiteral("run")},
                                  {QStringLiteral("binding"), binding}};
        sway_.sendEvent(Event::binding, QJsonDocument(content).toJson());
    }

    /// Everything that has been said so far has been taken note of.
    void settle() {
        QCoro::waitFor(ipc_.ask(Request::getBindingState, {}, std::chrono::seconds(20)));
        bool isDone = false;
        QTimer::singleShot(0, [&] { isDone = true; });
        waitFor([&] { return isDone; });
    }

    void reload(const QByteArray &config) {
        sway_.config = config;
        sway_.sendEvent(Event::workspace, R"({"change":"reload"})");
    }

    int bindings() const {
        return static_cast<int>(std::ranges::count_if(sway_.commands(), [](const QString &command) {
            return command.startsWith(QStringLiteral("bindsym"));
        }));
    }

    FakeSway sway_;
    SwayIpc ipc_{sway_.path()};
    SwayHotKeys hotKeys_{ipc_};
    std::unique_ptr<HeldHotKey> hotKey_;
    QString reason_;
    int presses_ = 0;
    int changes_ = 0;
};

TEST_F(SwayHotKeyTest, ReadsTheConfigurationAndBinds) {
    hold();
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(reason_, QString());
    EXPECT_THAT(sway_.commands().value(0).toStdString(),
                StartsWith("bindsym --no-repeat Ctrl+Mod1+space nop quillmender "));
    QList<quint32> order;
    for (const IpcMessage &message : std::as_const(sway_.received))
        order.append(message.type);
    EXPECT_THAT(order, ElementsAre(quint32(Request::subscribe), quint32(Request::getVersion),
                                   quint32(Request::getConfig), quint32(Request::getBindingState),
                                   quint32(Request::runCommand)));
}

TEST_F(SwayHotKeyTest, NeverTakesTheUsersOwn) {
    sway_.config = "set $mod Ctrl\nbindsym $mod+Alt+space exec foot\n";
    hold();
    ASSERT_NE(hotKey_, nullptr);
    EXPECT_FALSE(isHeld());
    EXPECT_TRUE(reason_.contains(QStringLiteral("bindsym Ctrl+Alt+space exec foot")));
    EXPECT_EQ(bindings(), 0);
    hotKey_.reset();
    settle();
    EXPECT_TRUE(sway_.commands().isEmpty());
}

TEST_F(SwayHotKeyTest, OnePressIsOneCall) {
    hold();
    pressKeys(bound());
    EXPECT_TRUE(waitFor([&] { return presses_ == 1; }));
    pressKeys(bound());
    settle();
    EXPECT_EQ(presses_, 2);
    pressKeys(QStringLiteral("exec foot"), {QStringLiteral("Return")});
    settle();
    EXPECT_EQ(presses_, 2);
    EXPECT_TRUE(isHeld());
}

TEST_F(SwayHotKeyTest, LeavesRepeatsOutWhereTheCompositorCannot) {
    sway_.toCommand = [](const QString &command) {
        return command.contains(QStringLiteral("--no-repeat"))
                   ? QByteArray(R"([{"success":false,"error":"Unknown key"}])")
                   : QByteArray(R"([{"success":true}])");
    };
    hold();
    ASSERT_TRUE(isHeld());
    EXPECT_EQ(bindings(), 2);
    for (int i = 0; i < 5; ++i)
        pressKeys(bound());
    settle();
    EXPECT_EQ(presses_, 1);
}

TEST_F(SwayHotKeyTest, ComesBackAfterAReload) {
    hold();
    reload("# nothing");
    EXPECT_TRUE(waitFor([&] { return bindings() == 2; }));
    settle();
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(sway_.asked(Request::getConfig), 2);
    pressKeys(bound());
    settle();
    EXPECT_EQ(presses_, 1);
}

TEST_F(SwayHotKeyTest, IsLostToTheUsersNewBindingAndComesBackWithoutIt) {
    hold();
    reload("bindsym Alt+Ctrl+space exec foot");
    EXPECT_TRUE(waitFor([&] { return changes_ == 1; }));
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(bindings(), 1);
    reload("");
    EXPECT_TRUE(waitFor([&] { return changes_ == 2; }));
    EXPECT_TRUE(isHeld());
    EXPECT_EQ(bindings(), 2);
}

TEST_F(SwayHotKeyTest, UnbindsWhenItEnds) {
    hold();
    hotKey_.reset();
    settle();
    EXPECT_EQ(sway_.commands().constLast(), QStringLiteral("unbindsym Ctrl+Mod1+space"));
}

TEST_F(SwayHotKeyTest, LeavesABindingThatIsAnothersByNow) {
    hold();
    pressKeys(QStringLiteral("exec foot"));
    EXPECT_TRUE(waitFor([&] { return changes_ == 1; }));
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(presses_, 0);
    hotKey_.reset();
    settle();
    EXPECT_EQ(sway_.commands().size(), 1);
}

TEST_F(SwayHotKeyTest, LeavesABindingThatAReloadHasDropped) {
    hold();
    sway_.silentTo = {Request::getConfig};
    reload("bindsym Ctrl+Alt+space exec foot");
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getConfig) == 2; }));
    hotKey_.reset();
    settle();
    EXPECT_EQ(sway_.commands().size(), 1);
}

TEST_F(SwayHotKeyTest, IsLostWithTheSocketAndComesBackWithIt) {
    hold();
    sway_.goAway();
    EXPECT_TRUE(waitFor([&] { return changes_ == 1; }));
    EXPECT_FALSE(isHeld());
    sway_.listen();
    EXPECT_TRUE(waitFor([&] { return changes_ == 2; }));
    EXPECT_TRUE(isHeld());
}

TEST_F(SwayHotKeyTest, LeavesWhatTheUserBoundWhileTheSocketWasGone) {
    hold();
    sway_.goAway();
    EXPECT_TRUE(waitFor([&] { return changes_ == 1; }));
    sway_.config = "bindsym Ctrl+Alt+space exec foot";
    sway_.listen();
    EXPECT_TRUE(waitFor([&] { return sway_.asked(Request::getConfig) == 2; }));
    settle();
    EXPECT_FALSE(isHeld());
    hotKey_.reset();
    settle();
    EXPECT_EQ(sway_.commands().size(), 1);
}

TEST_F(SwayHotKeyTest, WaitsForTheUsualMode) {
    sway_.mode = "resize";
    hold();
    EXPECT_FALSE(isHeld());
    EXPECT_EQ(bindings(), 0);
    sway_.mode = "default";
    sway_.sendEvent(Event::mode, R"({"change":"default"})");
    EXPECT_TRUE(waitFor([&] { return isHeld(); }));
}

TEST_F(SwayHotKeyTest, ARefusalHoldsNone) {
    sway_.toCommand = [](const QString &) {
        return QByteArray(R"([{"success":false,"error":"no"}])");
    };
    hold();
    ASSERT_NE(hotKey_, nullptr);
    EXPECT_FALSE(isHeld());
    EXPECT_FALSE(reason_.isEmpty());
}

TEST_F(SwayHotKeyTest, NonsenseForAConfigurationBindsNothing) {
    sway_.silentTo = {Request::getConfig};
    auto task = hotKeys_.hold(askedKeys, [] {});
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getConfig) == 1; }));
    sway_.answer(Request::getConfig, "[1,2]");
    const HotKeyOutcome outcome = QCoro::waitFor(std::move(task));
    ASSERT_NE(outcome.hotKey, nullptr);
    EXPECT_EQ(outcome.hotKey->keys(), std::nullopt);
    EXPECT_EQ(bindings(), 0);
}

TEST_F(SwayHotKeyTest, AnEndDuringTheQuestionBindsNothing) {
    sway_.silentTo = {Request::getConfig};
    {
        auto task = hotKeys_.hold(askedKeys, [] {});
        ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getConfig) == 1; }));
        reload("bindsym Ctrl+Alt+space exec foot");
        sway_.silentTo.clear();
        sway_.answer(Request::getConfig, R"({"config":""})");
        const HotKeyOutcome outcome = QCoro::waitFor(std::move(task));
        EXPECT_EQ(outcome.hotKey->keys(), std::nullopt) << "it was asked before the reload";
    }
    settle();
    EXPECT_EQ(bindings(), 0);
}

TEST_F(SwayHotKeyTest, KeysWithoutASpellingAreRefused) {
    hold(QKeyCombination(Qt::ControlModifier, Qt::Key_F5));
    EXPECT_EQ(hotKey_, nullptr);
    EXPECT_FALSE(reason_.isEmpty());
}

} // namespace

} // namespace quillmender::sway
