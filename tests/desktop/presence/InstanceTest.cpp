#include "desktop/presence/PresenceFixture.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <gmock/gmock.h>
#include <xcb/xcb_keysyms.h>

#include <X11/keysym.h>

namespace quillmender {
namespace {

using harness::ChildProcess;
using harness::waitUntil;
using testing::HasSubstr;

const QString busName = QStringLiteral("com.quillmender.Quillmender");
const QString settingsTitle = QStringLiteral("Quillmender Settings");
const QString aboutTitle = QStringLiteral("About Quillmender");
const QString panelTitle = QStringLiteral("Quillmender");

class InstanceTest : public PresenceFixture {
  protected:
    /// As a panel, a key binding or the application menu does it.
    void action(const QString &name) {
        EXPECT_EQ(run(QStringLiteral("gapplication"), {QStringLiteral("action"), busName, name}),
                  0);
    }

    struct Launch {
        std::optional<int> exitCode;
        std::string error; ///< what is on its standard error
    };

    /// One of the program, with its standard error as log.
    harness::Command command() {
        harness::Command command = desktop().command(harness::ProductProcess::path());
        command.pipeOutput = true;
        command.logFile += QStringLiteral(".error");
        return command;
    }

    /// Runs the program to its end.
    Launch launch() {
        const ChildProcess process(command());
        waitUntil([&] { return !process.isRunning(); }, QStringLiteral("the program has ended"));
        return {.exitCode = process.exitCode(), .error = process.log().toStdString()};
    }

    /// The window is one of the program that was started first.
    void waitForOwnWindow(const QString &title) {
        EXPECT_EQ(desktop().windows().processId(waitForWindow(title)), program().pid());
    }

    /// Takes Control+Alt+Space, so that nobody else can.
    void takeHotKey() {
        xcb_connection_t *connection = desktop().connection().get();
        xcb_key_symbols_t *symbols = xcb_key_symbols_alloc(connection);
        const harness::XcbPointer<xcb_keycode_t> code(
            xcb_key_symbols_get_keycode(symbols, XK_space));
        xcb_key_symbols_free(symbols);
        const harness::XcbPointer<xcb_generic_error_t> error(xcb_request_check(
            connection, xcb_grab_key_checked(connection, 1, desktop().connection().root(),
                                             XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1, *code,
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        ASSERT_FALSE(error);
    }
};

TEST_F(InstanceTest, ASecondLaunchShowsTheSettingsOfTheFirst) {
    startProgram();
    EXPECT_EQ(run(program().path(), {}), 0);
    waitForOwnWindow(settingsTitle);
    EXPECT_TRUE(program().process().isRunning());
}

TEST_F(InstanceTest, ASecondLaunchSaysSoWhenTheFirstDoesNotAnswer) {
    startProgram();
    program().process().suspend();
    const Launch second = launch();
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_THAT(second.error, HasSubstr("does not answer"));
    program().process().resume();
    waitForOwnWindow(settingsTitle);
}

TEST_F(InstanceTest, EachActionDoesWhatItSays) {
    startProgram();
    action(QStringLiteral("settings"));
    waitForOwnWindow(settingsTitle);
    action(QStringLiteral("about"));
    waitForOwnWindow(aboutTitle);
    action(QStringLiteral("transform"));
    waitForOwnWindow(panelTitle);
    action(QStringLiteral("quit"));
    waitUntilProgramHasEnded();
    EXPECT_EQ(program().process().exitCode(), 0);
    EXPECT_FALSE(desktop().sessionBus().hasOwner(busName));
}

TEST_F(InstanceTest, WithoutStatusAreaAndHotKeyTheApplicationMenuLetsTheUserIn) {
    takeHotKey();
    startProgram();
    desktop().input().chord({XK_Control_L, XK_Alt_L, XK_space});
    EXPECT_EQ(run(QStringLiteral("gapplication"), {QStringLiteral("launch"), busName}), 0);
    waitForOwnWindow(settingsTitle);
    EXPECT_EQ(desktop().windows().titled(panelTitle), XCB_WINDOW_NONE);
    closeWindow(settingsTitle);
    EXPECT_TRUE(program().process().isRunning());
    EXPECT_EQ(run(QStringLiteral("gapplication"), {QStringLiteral("launch"), busName}), 0);
    waitForOwnWindow(settingsTitle);
}

TEST_F(InstanceTest, AnUnknownActionDoesNothing) {
    startProgram();
    for (const char *unknown : {"", "Settings", "settings ", "activate", "quit now", "\xc3\xa9"})
        program().activateAction(QString::fromUtf8(unknown));
    program().activateAction(QStringLiteral("about"));
    waitForOwnWindow(aboutTitle);
    EXPECT_EQ(desktop().windows().titled(settingsTitle), XCB_WINDOW_NONE);
    EXPECT_EQ(desktop().windows().titled(panelTitle), XCB_WINDOW_NONE);
    EXPECT_TRUE(program().process().isRunning());
}

/// Another program that has the name on the bus: this test. It answers each call with a function.
class ForeignOwner : public QDBusVirtualObject {
  public:
    using Answer = std::function<std::optional<QDBusMessage>(const QDBusMessage &call)>;

    ForeignOwner(QDBusConnection bus, Answer answer)
        : bus_(std::move(bus)),
          answer_(std::move(answer)) {
        EXPECT_TRUE(
            bus_.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath));
        EXPECT_TRUE(bus_.registerService(busName));
    }
    ~ForeignOwner() override {
        bus_.unregisterService(busName);
        bus_.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &call, const QDBusConnection &bus) override {
        if (const auto answer = answer_(call))
            bus.send(*answer);
        return true;
    }

  private:
    QDBusConnection bus_;
    Answer answer_;
};

TEST_F(InstanceTest, AForeignOwnerOfTheNameIsAFailureWithAMessage) {
    struct Foreign {
        const char *what;
        ForeignOwner::Answer answer;
    };
    const Foreign foreigners[] = {
        {"silent", [](const QDBusMessage &) { return std::nullopt; }},
        {"refusing",
         [](const QDBusMessage &call) {
             return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no"));
         }},
        {"failing in words of its own",
         [](const QDBusMessage &call) {
             return call.createErrorReply(QStringLiteral("com.example.Odd"), QString());
         }},
        {"agreeing to everything", [](const QDBusMessage &call) { return call.createReply(); }},
        {"answering a text",
         [](const QDBusMessage &call) { return call.createReply(QStringLiteral("banana")); }},
        {"answering a number", [](const QDBusMessage &call) { return call.createReply(7); }},
        {"answering twice the name",
         [](const QDBusMessage &call) { return call.createReply(QVariantList{busName, busName}); }},
    };
    for (const auto &[what, answer] : foreigners) {
        QStringList asked;
        const ForeignOwner owner(desktop().sessionBus().connection(),
                                 [&](const QDBusMessage &call) {
                                     asked.append(call.member());
                                     return answer(call);
                                 });
        const Launch program = launch();
        EXPECT_EQ(program.exitCode, 1) << what;
        EXPECT_THAT(program.error, HasSubstr(busName.toStdString())) << what;
        // What it does not know of it is not told to do.
        EXPECT_FALSE(asked.contains(QStringLiteral("Activate"))) << what;
    }
}

class LateOwnerTest : public InstanceTest {
  protected:
    /// Starts the program and waits until it has asked the owner of its name who that is.
    void startAndWaitForQuestion() {
        owner_ = std::make_unique<ForeignOwner>(bus(), [this](const QDBusMessage &call) {
            question_ = call;
            return std::nullopt;
        });
        launched_ = std::make_unique<ChildProcess>(command());
        waitUntil([this] { return question_.has_value(); },
                  QStringLiteral("the owner of the name is asked"));
    }

    void TearDown() override {
        launched_.reset();
        InstanceTest::TearDown();
    }

    QDBusConnection bus() { return desktop().sessionBus().connection(); }

    std::unique_ptr<ForeignOwner> owner_;
    std::optional<QDBusMessage> question_;
    std::unique_ptr<ChildProcess> launched_;
};

TEST_F(LateOwnerTest, ACopyThatAnswersLateIsACopy) {
    startAndWaitForQuestion();
    bus().send(question_->createReply(busName));
    waitUntil([this] { return !launched_->isRunning(); }, QStringLiteral("the program has ended"));
    EXPECT_EQ(launched_->exitCode(), 0);
    EXPECT_EQ(launched_->log(), "");
}

TEST_F(LateOwnerTest, TheNameOfAnOwnerThatEndsMeanwhileIsTaken) {
    startAndWaitForQuestion();
    owner_.reset();
    bus().send(question_->createErrorReply(QDBusError::UnknownMethod, QStringLiteral("no")));
    desktop().sessionBus().waitForOwner(busName);
    EXPECT_EQ(bus().interface()->servicePid(busName).value(), launched_->pid());
    action(QStringLiteral("about"));
    waitForWindow(aboutTitle);
}

} // namespace
} // namespace quillmender
