#include "platform/linux/wayland/sway/SwayToplevels.h"

#include "unit/platform/wayland/FakeSway.h"

#include <gmock/gmock.h>

namespace quillmender::sway {

namespace {

// More than any process has: where few run, this one's own number is as small as those of the
// windows.
constexpr qint64 nobodys = 10'000'000;

QByteArray window(int id, const char *appId, qint64 process, bool isFocused = false) {
    return QStringLiteral(R"({"id":%1,"type":"con","name":"title %1","pid":%2,"app_id":"%3",)"
                          R"("focused":%4,"rect":{"x":1,"y":2,"width":30,"height":40}})")
        .arg(id)
        .arg(process == QCoreApplication::applicationPid() ? process : nobodys + process)
        .arg(QLatin1String(appId), isFocused ? QStringLiteral("true") : QStringLiteral("false"))
        .toUtf8();
}

QByteArray tree(const QByteArrayList &windows, const QByteArrayList &floating = {}) {
    return R"({"id":1,"type":"root","nodes":[{"id":2,"type":"output","name":"OUT-1","nodes":[)"
           R"({"id":3,"type":"workspace","name":"1","nodes":[{"id":4,"type":"con","nodes":[)" +
           windows.join(',') + R"(]}],"floating_nodes":[)" + floating.join(',') + "]}]}]}";
}

class SwayToplevelsTest : public testing::Test {
  protected:
    void start(const QByteArray &treeAtFirst) {
        sway_.tree = treeAtFirst;
        toplevels_ = std::make_unique<SwayToplevels>(ipc_, [this] { return isWithWindows_; });
        QObject::connect(toplevels_.get(), &wayland::Toplevels::changed, toplevels_.get(),
                         [this] { ++changes_; });
        ASSERT_TRUE(waitFor([this] { return toplevels_->isKnown(); }));
    }

    void event(const char *change, const QByteArray &container) {
        sway_.sendEvent(Event::window, "{\"change\":\"" + QByteArray(change) +
                                           "\",\"container\":" + container + "}");
    }

    QString activeApp() const {
        const auto active = toplevels_->active();
        return active ? active->appId : QString();
    }

    bool becomesActive(const char *appId) {
        return waitFor([&] { return activeApp() == QLatin1String(appId); });
    }

    FakeSway sway_;
    SwayIpc ipc_{sway_.path()};
    std::unique_ptr<SwayToplevels> toplevels_;
    bool isWithWindows_ = true;
    int changes_ = 0;
    const qint64 own_ = QCoreApplication::applicationPid();
};

TEST_F(SwayToplevelsTest, TellsWhatTheTreeSays) {
    start(tree({window(10, "foot", 100), window(11, "editor", 101, true)}));
    const auto active = toplevels_->active();
    ASSERT_TRUE(active.has_value());
    EXPECT_EQ(active->id, "11");
    EXPECT_EQ(active->processId, nobodys + 101);
    EXPECT_EQ(active->appId, QStringLiteral("editor"));
    EXPECT_EQ(active->title, QStringLiteral("title 11"));
    EXPECT_EQ(active->output, QStringLiteral("OUT-1"));
    ASSERT_TRUE(active->frame.has_value());
    EXPECT_EQ(active->frame->width, 30);
    EXPECT_TRUE(toplevels_->hasKeyboard("11"));
    EXPECT_FALSE(toplevels_->hasKeyboard("10"));
    EXPECT_FALSE(toplevels_->hasKeyboard({}));
}

TEST_F(SwayToplevelsTest, KnowsX11WindowsByTheirClass) {
    start(
        tree({}, {R"({"id":12,"type":"floating_con","name":"x","pid":7,"app_id":null,)"
                  R"("window_properties":{"class":"XTerm","instance":"xterm"},"focused":true})"}));
    EXPECT_EQ(activeApp(), QStringLiteral("XTerm"));
    EXPECT_EQ(toplevels_->active()->frame.has_value(), false);
}

TEST_F(SwayToplevelsTest, FollowsTheFocusWithoutAskingAgain) {
    start(tree({window(10, "foot", 100), window(11, "editor", 101, true)}));
    event("focus", window(10, "foot", 100, true));
    EXPECT_TRUE(becomesActive("foot"));
    EXPECT_FALSE(toplevels_->hasKeyboard("11"));
    event("title", R"({"id":10,"pid":100,"name":"new","app_id":"foot"})");
    EXPECT_TRUE(waitFor([&] { return toplevels_->active()->title == QStringLiteral("new"); }));
    EXPECT_EQ(toplevels_->active()->output, QStringLiteral("OUT-1"));
    EXPECT_EQ(sway_.asked(Request::getTree), 1);
}

TEST_F(SwayToplevelsTest, AnOwnWindowKeepsTheLastOther) {
    start(tree({window(10, "foot", 100, true), window(11, "own", own_)}));
    event("focus", window(11, "own", own_, true));
    EXPECT_TRUE(waitFor([&] { return !toplevels_->hasKeyboard("10"); }));
    EXPECT_EQ(activeApp(), QStringLiteral("foot"));
    EXPECT_FALSE(toplevels_->hasKeyboard("11"));
    EXPECT_FALSE(toplevels_->activate("11"));
    event("close", window(10, "foot", 100));
    EXPECT_TRUE(waitFor([&] { return !toplevels_->active(); }));
}

TEST_F(SwayToplevelsTest, AnEmptyWorkspaceHasNone) {
    start(tree({window(10, "foot", 100, true)}));
    sway_.tree = tree({window(10, "foot", 100)});
    sway_.sendEvent(Event::workspace, R"({"change":"focus"})");
    EXPECT_TRUE(waitFor([&] { return !toplevels_->active(); }));
}

TEST_F(SwayToplevelsTest, LearnsTheOutputOfANewWindow) {
    start(tree({}));
    EXPECT_EQ(toplevels_->active(), std::nullopt);
    sway_.tree = tree({window(20, "new", 200, true)});
    event("new", window(20, "new", 200));
    event("focus", window(20, "new", 200, true));
    EXPECT_TRUE(becomesActive("new"));
    EXPECT_TRUE(waitFor([&] { return toplevels_->active()->output == QStringLiteral("OUT-1"); }));
}

TEST_F(SwayToplevelsTest, ATreeFromBeforeAnEventDoesNotUndoIt) {
    start(tree({window(10, "foot", 100, true), window(11, "editor", 101)}));
    sway_.silentTo = {Request::getTree};
    sway_.sendEvent(Event::workspace, R"({"change":"focus"})");
    ASSERT_TRUE(waitFor([&] { return sway_.asked(Request::getTree) == 2; }));
    sway_.answer(Request::getTree, sway_.tree);
    event("focus", window(11, "editor", 101, true));
    EXPECT_TRUE(becomesActive("editor"));
    event("title", window(10, "foot", 100));
    QCoro::waitFor(ipc_.ask(Request::getBindingState, {}, std::chrono::seconds(20)));
    EXPECT_EQ(activeApp(), QStringLiteral("editor"));
}

TEST_F(SwayToplevelsTest, ActivatesByItsNumber) {
    start(tree({window(10, "foot", 100), window(11, "editor", 101, true)}));
    EXPECT_TRUE(toplevels_->activate("10"));
    EXPECT_FALSE(toplevels_->activate("99"));
    EXPECT_TRUE(waitFor([&] { return !sway_.commands().isEmpty(); }));
    EXPECT_EQ(sway_.commands(), QStringList{QStringLiteral("[con_id=10] focus")});
}

TEST_F(SwayToplevelsTest, NobodyHasTheKeyboardWhileSomethingCoversTheWindows) {
    start(tree({window(10, "foot", 100, true)}));
    isWithWindows_ = false;
    EXPECT_FALSE(toplevels_->hasKeyboard("10"));
    EXPECT_EQ(activeApp(), QStringLiteral("foot"));
}

TEST_F(SwayToplevelsTest, NothingIsKnownWithoutTheSocket) {
    start(tree({window(10, "foot", 100, true)}));
    sway_.goAway();
    EXPECT_TRUE(waitFor([&] { return !toplevels_->active(); }));
    EXPECT_FALSE(toplevels_->hasKeyboard("10"));
    EXPECT_FALSE(toplevels_->activate("10"));
    sway_.listen();
    EXPECT_TRUE(becomesActive("foot"));
}

TEST_F(SwayToplevelsTest, NonsenseIsNoWindow) {
    start(
        tree({"null", "7", "[]", R"({"id":"10","pid":1})", R"({"id":-1,"pid":1})",
              R"({"id":13,"pid":"x","focused":1,"rect":5,"window_properties":[]})",
              R"({"id":14,"nodes":{"a":1},"floating_nodes":"x"})", window(15, "right", 15, true)}));
    EXPECT_EQ(activeApp(), QStringLiteral("right"));
    event("focus", "null");
    event("close", "[]");
    sway_.sendEvent(Event::window, "[]");
    sway_.sendEvent(Event::workspace, "[7]");
    QCoro::waitFor(ipc_.ask(Request::getBindingState, {}, std::chrono::seconds(20)));
    EXPECT_EQ(activeApp(), QStringLiteral("right"));
}

} // namespace

} // namespace quillmender::sway
