#pragma once

#include "desktop/x11/ScriptedRelay.h"
#include "desktop/x11/WaitFor.h"
#include "desktop/x11/XServerProcess.h"
#include "platform/linux/FocusContext.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/X11Services.h"
#include "platform/linux/x11/selection/X11LentText.h"
#include "platform/linux/x11/windows/ClientMessage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace quillmender::x11 {

/// A test with its own X server, the program's services on it, and a second connection that plays
/// the other applications.
class X11Test : public testing::Test {
  protected:
    using Outcome = ChordResult::Outcome;

    void SetUp() override {
        services_ = X11Services::create(server_.display());
        ASSERT_NE(services_, nullptr);
        peer_ = X11Connection::open(server_.display());
        ASSERT_NE(peer_, nullptr);
    }

    X11Pasteboard &pasteboard() { return *services_->pasteboard; }

    /// Runs the event loop until the task is done.
    template <typename Value> Value wait(QCoro::Task<Value> task) {
        return QCoro::waitFor(std::move(task));
    }

    /// Null when the pasteboard does not take it. Without a reader everybody may read it.
    std::shared_ptr<X11LentText> lend(const QString &text, RunningApplicationRef reader = nullptr) {
        return std::dynamic_pointer_cast<X11LentText>(pasteboard().lend(text, std::move(reader)));
    }

    /// Runs the event loop until the chord is out, or is known not to come.
    ChordResult type(Chord chord, RunningApplicationRef application, LentTextRef text = nullptr) {
        return wait(
            services_->chords->type(chord, {std::move(application), focus_, std::move(text)}));
    }

    /// What happens when the modifier of the next chord is down and its key is to follow.
    void beforeTheKey(const std::function<void()> &event) {
        focus_->relay = std::make_shared<ScriptedRelay>(ScriptedRelay::beforeTheKey(event));
    }

    xcb_window_t ownerOf(const char *selection) {
        const auto reply = replyTo(peer_->xcb(), xcb_get_selection_owner_reply,
                                   xcb_get_selection_owner(peer_->xcb(), peer_->atom(selection)));
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    }

    /// 0 when no application is in front.
    qint64 processInFront() {
        const auto application = services_->frontmost->application();
        return application ? application->processId() : 0;
    }

    bool hasWindowManager() {
        return readCardinal(*peer_, peer_->root(), peer_->atom("_NET_SUPPORTING_WM_CHECK")) != 0;
    }

    /// Starts one and waits until it acts on requests. Those of an application that starts earlier
    /// are lost, and xterm waits five seconds for the answer.
    std::unique_ptr<QProcess> startWindowManager() {
        auto program = server_.start(QStringLiteral("openbox"), {});
        EXPECT_TRUE(waitFor([this] { return hasWindowManager(); }));
        constexpr quint32 desktops = 2;
        EXPECT_TRUE(waitFor([&] {
            // What arrives before it is ready is lost.
            sendToWindowManager(*peer_, peer_->root(), "_NET_NUMBER_OF_DESKTOPS", {desktops});
            return readCardinal(*peer_, peer_->root(), peer_->atom("_NET_NUMBER_OF_DESKTOPS")) ==
                   desktops;
        }));
        return program;
    }

    /// What a chord is told of the focused element.
    std::shared_ptr<FocusContext> focus_ = std::make_shared<FocusContext>();
    XServerProcess server_;
    std::unique_ptr<X11Services> services_;
    std::unique_ptr<X11Connection> peer_;
};

inline int runX11Tests(int argc, char **argv) {
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

} // namespace quillmender::x11
