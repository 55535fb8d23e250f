#include "desktop/harness/AccessibilityBus.h"
#include "desktop/harness/SessionBus.h"
#include "desktop/wayland/wlroots/WlrootsTest.h"
#include "platform/linux/atspi/FrameProcesses.h"
#include "platform/linux/wayland/ChordMoment.h"
#include "platform/linux/wayland/keys/CopyWatch.h"
#include "platform/linux/wayland/keys/CompositorLines.h"
#include "platform/linux/wayland/keys/VirtualKeyboard.h"
#include "platform/linux/wayland/keys/WaylandChords.h"
#include "platform/linux/wayland/windows/SourceApplications.h"
#include "platform/linux/wayland/windows/WaylandFrontmostSource.h"
#include "platform/linux/wayland/wlroots/ForeignToplevels.h"

namespace quillmender::wlroots {

namespace {

using namespace std::chrono_literals;
using wayland::SourceApplications;
using wayland::Toplevel;
using wayland::TypedKeys;

class LabwcTest : public WlrootsTest {
  protected:
    void startLabwc(const QByteArray &configuration = {}, const QByteArray &layouts = "us",
                    quint32 active = 0) {
        start(Compositor::Kind::labwc, configuration, layouts, active);
        toplevels_ = ForeignToplevels::create(*connection_, QStringLiteral("own"));
        ASSERT_NE(toplevels_, nullptr);
    }

    bool becomesActive(const QString &appId) {
        return becomesTrue([&] {
            const auto active = toplevels_->active();
            return active && active->appId == appId && toplevels_->hasKeyboard(active->id);
        });
    }

    std::unique_ptr<ForeignToplevels> toplevels_;
};

TEST_F(LabwcTest, FollowsTheWindows) {
    startLabwc();
    EXPECT_EQ(toplevels_->active(), std::nullopt);
    startTerminal(QStringLiteral("first"));
    ASSERT_TRUE(becomesActive(QStringLiteral("first")));
    const QByteArray firstId = toplevels_->active()->id;
    EXPECT_EQ(toplevels_->active()->output, QStringLiteral("HEADLESS-1"));
    EXPECT_EQ(toplevels_->active()->processId, 0);
    EXPECT_FALSE(toplevels_->active()->title.isEmpty());
    EXPECT_FALSE(toplevels_->active()->frame.has_value());
    auto &second = startTerminal(QStringLiteral("second"));
    ASSERT_TRUE(becomesActive(QStringLiteral("second")));
    EXPECT_FALSE(toplevels_->hasKeyboard(firstId));
    EXPECT_TRUE(toplevels_->activate(firstId));
    EXPECT_TRUE(becomesActive(QStringLiteral("first")));
    EXPECT_FALSE(toplevels_->activate("nobody's"));
    second.end();
    EXPECT_TRUE(becomesActive(QStringLiteral("first")));
}

TEST_F(LabwcTest, AnOwnWindowKeepsTheLastOther) {
    startLabwc();
    startTerminal(QStringLiteral("first"));
    ASSERT_TRUE(becomesActive(QStringLiteral("first")));
    const QByteArray firstId = toplevels_->active()->id;
    startTerminal(QStringLiteral("own"));
    EXPECT_TRUE(becomesTrue([&] { return !toplevels_->hasKeyboard(firstId); }));
    EXPECT_EQ(toplevels_->active()->appId, QStringLiteral("first"));
    EXPECT_TRUE(toplevels_->isAnyActive());
}

struct Layout {
    const char *layouts;
    quint32 active;
};

class LabwcLayouts : public LabwcTest, public testing::WithParamInterface<Layout> {};

TEST_P(LabwcLayouts, ChordsWorkAndLeaveTheUsersLayout) {
    startLabwc({}, GetParam().layouts, GetParam().active);
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    constexpr quint32 placeOfF = 33;
    // Until a modifier changes, a new window has not been told the active layout.
    user_->tap(XKB_KEY_Shift_L);
    user_->tapCode(placeOfF);
    EXPECT_TRUE(becomesTrue([&] { return !typed().isEmpty(); }));
    const QByteArray letter = typed();
    const auto keyboard = wayland::VirtualKeyboard::create(*connection_);
    ASSERT_NE(keyboard, nullptr);
    user_->down(XKB_KEY_Control_L);
    user_->down(XKB_KEY_Alt_L);
    EXPECT_TRUE(
        QCoro::waitFor(keyboard->type(TypedKeys::controlC, [] { return true; }, [] {})).isTyped);
    user_->up(XKB_KEY_Alt_L);
    user_->up(XKB_KEY_Control_L);
    user_->tapCode(placeOfF);
    const QByteArray wanted = letter + "\x03" + letter;
    EXPECT_TRUE(becomesTrue([&] { return typed().size() >= wanted.size(); }));
    EXPECT_EQ(typed(), wanted);
}

INSTANTIATE_TEST_SUITE_P(
    Of, LabwcLayouts, testing::Values(Layout{"us", 0}, Layout{"ru", 0}, Layout{"us,ru", 1}),
    [](const auto &info) {
        return QString::fromUtf8(info.param.layouts).remove(u',').toStdString();
    });

TEST_F(LabwcTest, ChordsReachTheWindowThatComesToTheFront) {
    startLabwc();
    SourceApplications applications(*toplevels_);
    wayland::WaylandFrontmostSource frontmost(applications, {});
    wayland::ChordMoment moment;
    wayland::CopyWatch copies;
    const auto keyboard = wayland::VirtualKeyboard::create(*connection_);
    wayland::WaylandChords chords({*toplevels_, frontmost, *keyboard, moment, copies});

    startTerminal(QStringLiteral("source"));
    ASSERT_TRUE(becomesActive(QStringLiteral("source")));
    const auto source = applications.frontmost();
    startTerminal(QStringLiteral("other"));
    ASSERT_TRUE(becomesActive(QStringLiteral("other")));
    EXPECT_EQ(QCoro::waitFor(chords.type(Chord::copy, {source})).outcome,
              ChordResult::Outcome::withheld);
    EXPECT_EQ(moment.count(), 0);

    auto task = chords.type(Chord::copy, {source});
    EXPECT_TRUE(toplevels_->activate(source->windowId()));
    const ChordResult result = QCoro::waitFor(std::move(task));
    EXPECT_EQ(result.outcome, ChordResult::Outcome::typed) << result.reason.toStdString();
    EXPECT_EQ(moment.count(), 1);
    EXPECT_TRUE(becomesTrue([&] { return typed(QStringLiteral("source")) == "\x03"; }));
    EXPECT_EQ(typed(QStringLiteral("other")), "");
}

TEST_F(LabwcTest, TheLinesForItsConfigurationBindTheKeys) {
    const QKeyCombination keys(Qt::ControlModifier | Qt::AltModifier, Qt::Key_Space);
    QString lines = wayland::linesForLabwc(keys).lines;
    lines.replace(wayland::transformCommand(), QStringLiteral("touch /tmp/quillmender-called"));
    QFile::remove(QStringLiteral("/tmp/quillmender-called"));
    startLabwc("<keyboard><default/>" + lines.toUtf8() + "</keyboard>");
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    pressHotKey();
    EXPECT_TRUE(
        becomesTrue([] { return QFile::exists(QStringLiteral("/tmp/quillmender-called")); }));
    EXPECT_EQ(typed(), "");
    QFile::remove(QStringLiteral("/tmp/quillmender-called"));
}

TEST_F(LabwcTest, TheProcessIsThatOfTheAccessibleFrame) {
    startLabwc();
    QProcessEnvironment &environment = compositor_->environment();
    harness::SessionBus session(compositor_->folder(), environment,
                                path(QStringLiteral("session-bus.log")));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), session.address());
    const harness::AccessibilityBus accessibility(session, true, environment,
                                                  path(QStringLiteral("accessibility.log")));
    atspi::AtspiBus bus(session.connection());
    ASSERT_TRUE(becomesTrue([&] { return bus.isConnected(); }));
    atspi::FrameProcesses processes(bus);
    SourceApplications applications(*toplevels_, [&](Toplevel active) {
        return processes.processOfActive(active.title, active.appId);
    });

    auto &editor =
        compositor_->start(QStringLiteral("mousepad"),
                           {QStringLiteral("--disable-server"), path(QStringLiteral("a"))});
    ASSERT_TRUE(becomesTrue([&] {
        const auto active = toplevels_->active();
        return active && active->appId.contains(QStringLiteral("mousepad"), Qt::CaseInsensitive);
    }));
    EXPECT_TRUE(becomesTrue([&] {
        const auto application = applications.frontmost();
        return application && application->processId() == editor.pid();
    })) << applications.frontmost()->processId();
    const auto known = applications.frontmost();

    // A window that is not on the bus is nobody's, rather than the last one's.
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    const Toplevel foot = *toplevels_->active();
    EXPECT_EQ(QCoro::waitFor(processes.processOfActive(foot.title, foot.appId)), 0);
    EXPECT_EQ(applications.frontmost()->processId(), 0);
    EXPECT_EQ(known->processId(), editor.pid());
}

TEST_F(LabwcTest, NobodyHasTheKeyboardWhileAWindowOfOursHasIt) {
    startLabwc();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    const QByteArray id = toplevels_->active()->id;
    int changes = 0;
    QObject::connect(toplevels_.get(), &wayland::Toplevels::changed, toplevels_.get(),
                     [&] { ++changes; });
    {
        const OwnFocus focus;
        EXPECT_FALSE(toplevels_->hasKeyboard(id));
        EXPECT_EQ(toplevels_->active()->id, id);
        EXPECT_GT(changes, 0);
        changes = 0;
    }
    EXPECT_FALSE(toplevels_->hasKeyboard(id)) << "the compositor has not given it back yet";
    changes = 0;
    EXPECT_TRUE(becomesTrue([&] { return changes > 0 && toplevels_->hasKeyboard(id); }));
}

#ifdef COVERING_SURFACE
TEST_F(LabwcTest, TheSourceStaysActiveUnderAnotherSurface) {
    startLabwc();
    startTerminal();
    ASSERT_TRUE(becomesActive(QStringLiteral("foot")));
    const QByteArray id = toplevels_->active()->id;
    auto &surface = cover();
    ASSERT_TRUE(toplevels_->active().has_value());
    EXPECT_EQ(toplevels_->active()->id, id);
    surface.end();
    EXPECT_TRUE(becomesActive(QStringLiteral("foot")));
    EXPECT_EQ(toplevels_->active()->id, id);
}
#endif

} // namespace

} // namespace quillmender::wlroots

int main(int argc, char **argv) {
    return quillmender::wlroots::runWlrootsTests(argc, argv,
                                                 {QStringLiteral("labwc"), QStringLiteral("foot"),
                                                  QStringLiteral("mousepad"),
                                                  QStringLiteral("setpriv")});
}
