#include "desktop/x11/TestWindow.h"
#include "desktop/x11/WaitFor.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/windows/ActiveWindow.h"
#include "platform/linux/x11/windows/WindowOwnership.h"
#include "platform/linux/x11/windows/WindowProcess.h"

#include <QCoreApplication>
#include <QSysInfo>
#include <gtest/gtest.h>

namespace quillmender::x11 {

namespace {

constexpr quint32 someProcess = 4242;

class WindowProcessTest : public testing::Test {
  protected:
    void start(const QStringList &arguments = {}) {
        server_.emplace(arguments);
        connection_ = X11Connection::open(server_->display());
        peer_ = X11Connection::open(server_->display());
        ASSERT_TRUE(connection_ && peer_);
    }
    void startWithoutProcesses() {
        start({QStringLiteral("-extension"), QStringLiteral("X-Resource")});
        ASSERT_FALSE(connection_->hasResource());
    }

    void say(xcb_window_t window, quint32 process) {
        writeCardinals(*peer_, window, peer_->atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, {process});
        peer_->serverTime();
    }
    void sayMachine(xcb_window_t window, const QByteArray &name) {
        writeProperty(*peer_, window, XCB_ATOM_WM_CLIENT_MACHINE, {XCB_ATOM_STRING, 8, name});
        peer_->serverTime();
    }
    qint64 processOf(const TestWindow &window) {
        return processOfWindow(*connection_, window.id());
    }

    /// Without a window manager what has the focus is in front.
    std::shared_ptr<const X11RunningApplication> frontmost(ActiveWindow &active,
                                                           TestWindow &window) {
        window.map();
        window.setFocus();
        EXPECT_TRUE(waitFor([&] {
            window.setFocus();
            return active.isInFront(window.id());
        }));
        return active.frontmost();
    }

    std::optional<XServerProcess> server_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11Connection> peer_;
};

TEST_F(WindowProcessTest, TheServerIsBelievedBeforeTheWindow) {
    start();
    const TestWindow window(*peer_);
    say(window.id(), someProcess);
    EXPECT_EQ(processOf(window), QCoreApplication::applicationPid());
}

TEST_F(WindowProcessTest, WithoutTheServersWordTheWindowsCounts) {
    startWithoutProcesses();
    const TestWindow window(*peer_);
    EXPECT_EQ(processOf(window), 0);
    say(window.id(), someProcess);
    EXPECT_EQ(processOf(window), someProcess);
    for (const QByteArray &machine : {QSysInfo::machineHostName().toLatin1(),
                                      QSysInfo::machineHostName().toLatin1() + ".example"}) {
        sayMachine(window.id(), machine);
        EXPECT_EQ(processOf(window), someProcess) << machine.constData();
    }
}

TEST_F(WindowProcessTest, AProcessOfAnotherMachineIsUnknownHere) {
    startWithoutProcesses();
    const TestWindow window(*peer_);
    say(window.id(), someProcess);
    for (const QByteArray machine : {"far", "far.example", ""}) {
        sayMachine(window.id(), machine);
        EXPECT_EQ(processOf(window), 0) << machine.constData();
    }
}

TEST_F(WindowProcessTest, AWindowWithTheNumberOfOneThatHasGoneIsAnother) {
    startWithoutProcesses();
    ActiveWindow active(*connection_);
    TestWindow window(*peer_);
    const auto application = frontmost(active, window);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->processId(), 0);
    EXPECT_TRUE(isStillItself(*connection_, *application));

    xcb_destroy_window(peer_->xcb(), window.id());
    xcb_create_window(peer_->xcb(), XCB_COPY_FROM_PARENT, window.id(), peer_->root(), 0, 0, 9, 9, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    peer_->serverTime();
    EXPECT_TRUE(waitFor([&] { return !isStillItself(*connection_, *application); }));

    const auto next = frontmost(active, window);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->window(), application->window());
    EXPECT_NE(next, application);
    EXPECT_TRUE(isStillItself(*connection_, *next));
    EXPECT_FALSE(isStillItself(*connection_, *application));

    xcb_destroy_window(peer_->xcb(), window.id());
    peer_->serverTime();
    EXPECT_TRUE(waitFor([&] { return !isStillItself(*connection_, *next); }));
}

TEST_F(WindowProcessTest, WhatIsInFrontIsLetGoOfWithItsWindow) {
    startWithoutProcesses();
    ActiveWindow active(*connection_);
    TestWindow window(*peer_);
    ASSERT_TRUE(frontmost(active, window));
    xcb_destroy_window(peer_->xcb(), window.id());
    peer_->serverTime();
    EXPECT_TRUE(waitFor([&] { return !active.frontmost(); }));
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
