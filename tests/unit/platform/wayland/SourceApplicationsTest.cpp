#include "platform/linux/wayland/windows/SourceApplications.h"

#include "platform/SignalWait.h"
#include "platform/linux/wayland/windows/WaylandFrontmostSource.h"
#include "platform/linux/wayland/windows/WaylandWorkspace.h"
#include "unit/platform/wayland/FakeToplevels.h"
#include "unit/platform/wayland/WaitFor.h"

#include <gmock/gmock.h>

namespace quillmender::wayland {

namespace {

Toplevel toplevel(const char *id, qint64 process, const char *appId = "editor") {
    Toplevel made;
    made.id = id;
    made.processId = process;
    made.appId = QLatin1String(appId);
    return made;
}

class SourceApplicationsTest : public testing::Test {
  protected:
    /// Answers in a later turn, as somebody over a bus.
    SourceApplications::FindProcess find() {
        return [this](Toplevel) -> QCoro::Task<qint64> {
            ++searches_;
            QTimer later;
            later.start(delay_);
            co_await SignalWait(&later, &QTimer::timeout);
            co_return found_;
        };
    }

    void turns() {
        bool isDone = false;
        QTimer::singleShot(std::chrono::milliseconds(delay_) + std::chrono::milliseconds(20),
                           [&] { isDone = true; });
        waitFor([&] { return isDone; });
    }

    FakeToplevels toplevels_;
    SourceApplications applications_{toplevels_, find()};
    int searches_ = 0;
    std::chrono::milliseconds delay_{0};
    qint64 found_ = 4711;
};

TEST_F(SourceApplicationsTest, ThereIsNoneWithoutAWindow) {
    EXPECT_EQ(applications_.frontmost(), nullptr);
}

TEST_F(SourceApplicationsTest, TheSameWindowIsTheSameApplication) {
    toplevels_.front = toplevel("1", 100);
    const auto first = applications_.frontmost();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->processId(), 100);
    EXPECT_TRUE(first->isSame(*applications_.frontmost()));
    toplevels_.front = toplevel("2", 100);
    EXPECT_FALSE(first->isSame(*applications_.frontmost()));
    EXPECT_EQ(searches_, 0);
}

TEST_F(SourceApplicationsTest, AnUnknownProcessIsSearchedOnceForAWindow) {
    toplevels_.front = toplevel("1", 0);
    const auto application = applications_.frontmost();
    EXPECT_EQ(application->processId(), 0);
    applications_.frontmost();
    EXPECT_TRUE(waitFor([&] { return application->processId() == 4711; }));
    EXPECT_EQ(applications_.frontmost()->processId(), 4711);
    EXPECT_EQ(searches_, 1);
    toplevels_.front = toplevel("2", 0);
    found_ = 4712;
    const auto other = applications_.frontmost();
    EXPECT_TRUE(waitFor([&] { return other->processId() == 4712; }));
    EXPECT_EQ(application->processId(), 4711);
}

TEST_F(SourceApplicationsTest, AnAnswerAboutAnotherWindowIsNotTaken) {
    delay_ = std::chrono::milliseconds(30);
    toplevels_.front = toplevel("1", 0);
    const auto application = applications_.frontmost();
    toplevels_.front = toplevel("2", 0);
    turns();
    EXPECT_EQ(application->processId(), 0);
}

TEST_F(SourceApplicationsTest, ALateAnswerIsNotTaken) {
    delay_ = SourceApplications::longestSearch + std::chrono::milliseconds(50);
    toplevels_.front = toplevel("1", 0);
    const auto application = applications_.frontmost();
    turns();
    EXPECT_EQ(searches_, 1);
    EXPECT_EQ(application->processId(), 0);
}

TEST_F(SourceApplicationsTest, IsNotSearchedWhileAnotherSurfaceHasTheKeyboard) {
    toplevels_.front = toplevel("1", 0);
    toplevels_.isWithWindows = false;
    EXPECT_NE(applications_.frontmost(), nullptr);
    EXPECT_EQ(searches_, 0);
}

TEST_F(SourceApplicationsTest, AnAnswerAfterTheEndHarmsNobody) {
    delay_ = std::chrono::milliseconds(30);
    auto applications = std::make_unique<SourceApplications>(toplevels_, find());
    toplevels_.front = toplevel("1", 0);
    const auto application = applications->frontmost();
    applications.reset();
    turns();
    EXPECT_EQ(application->processId(), 0);
}

TEST_F(SourceApplicationsTest, TheWorkspaceActivatesItsWindows) {
    WaylandWorkspace workspace(applications_);
    toplevels_.front = toplevel("1", 100);
    toplevels_.front->frame = DesktopRect{1, 2, 3, 4};
    const RunningApplicationRef application = workspace.frontmostApplication();
    toplevels_.front.reset();
    EXPECT_TRUE(workspace.activate(application));
    EXPECT_FALSE(workspace.activate(nullptr));
    EXPECT_FALSE(workspace.activate(std::make_shared<RunningApplication>()));
    EXPECT_EQ(toplevels_.activated, QByteArrayList{"1"});
    EXPECT_EQ(workspace.windowFrame(application)->height, 4);
    EXPECT_EQ(workspace.windowFrame(nullptr).has_value(), false);
}

TEST_F(SourceApplicationsTest, TerminalsAreKnownByTheirNames) {
    const WaylandFrontmostSource source(applications_, {});
    EXPECT_FALSE(source.isTerminal());
    for (const char *name : {"foot", "org.kde.konsole", "XTerm", "com.mitchellh.ghostty"}) {
        toplevels_.front = toplevel("1", 0, name);
        EXPECT_TRUE(source.isTerminal()) << name;
    }
    toplevels_.front = toplevel("1", 0, "org.gnome.TextEditor");
    EXPECT_FALSE(source.isTerminal());
}

TEST_F(SourceApplicationsTest, PrimaryIsAskedForAnApplicationAlone) {
    int asked = 0;
    WaylandFrontmostSource source(applications_, [&]() -> QCoro::Task<std::optional<QString>> {
        ++asked;
        co_return QStringLiteral("selected");
    });
    EXPECT_EQ(QCoro::waitFor(source.primarySelection()), std::nullopt);
    EXPECT_EQ(asked, 0);
    toplevels_.front = toplevel("1", 100);
    EXPECT_EQ(QCoro::waitFor(source.primarySelection()), QStringLiteral("selected"));
    WaylandFrontmostSource without(applications_, {});
    EXPECT_EQ(QCoro::waitFor(without.primarySelection()), std::nullopt);
}

} // namespace

} // namespace quillmender::wayland
