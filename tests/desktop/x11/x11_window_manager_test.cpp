#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"

#include <QTimer>

#include <csignal>

namespace quillmender::x11 {

namespace {

using testing::IsEmpty;

/// A window manager that does nothing for a while, and then everything at once.
class WindowManagerTest : public X11Test {
  protected:
    void SetUp() override {
        X11Test::SetUp();
        manager_ = startWindowManager();
        for (auto *window : {&source_, &other_}) {
            *window = std::make_unique<TestWindow>(*peer_);
            (*window)->map();
            ASSERT_TRUE(waitFor([&] { return isInFront(**window); }));
        }
    }

    void TearDown() override {
        proceed();
        X11Test::TearDown();
    }

    bool isInFront(const TestWindow &window) const {
        return services_->activeWindow->isInFront(window.id());
    }

    void stop() { ::kill(static_cast<pid_t>(manager_->processId()), SIGSTOP); }
    void proceed() { ::kill(static_cast<pid_t>(manager_->processId()), SIGCONT); }

    Outcome activateAndType(Chord chord) {
        const auto application = std::make_shared<X11RunningApplication>(source_->id(), 0);
        const auto text = lend(QStringLiteral("text"), application);
        services_->workspace->activate(application);
        return type(chord, application, text).outcome;
    }

    std::unique_ptr<QProcess> manager_;
    std::unique_ptr<TestWindow> source_;
    std::unique_ptr<TestWindow> other_;
};

TEST_F(WindowManagerTest, PasteWaitsForOneThatIsHeldUp) {
    for (const int held : {60, 160, 400}) {
        stop();
        QTimer::singleShot(held, source_.get(), [this] { proceed(); });
        EXPECT_EQ(activateAndType(Chord::paste), Outcome::typed) << held;
        EXPECT_TRUE(isInFront(*source_));
        services_->activeWindow->activate(other_->id());
        ASSERT_TRUE(waitFor([&] { return isInFront(*other_); }));
    }
}

TEST_F(WindowManagerTest, NothingIsTypedWhenItIsHeldUpForTooLong) {
    stop();
    EXPECT_EQ(activateAndType(Chord::copy), Outcome::withheld);
    proceed();
    ASSERT_TRUE(waitFor([&] { return isInFront(*source_); }));
    EXPECT_THAT(source_->keys(), IsEmpty());
    EXPECT_THAT(other_->keys(), IsEmpty());
}

TEST_F(WindowManagerTest, ManyChangesInOneTurnAreWaitedForOnce) {
    const auto application = std::make_shared<X11RunningApplication>(source_->id(), 0);
    stop();
    const auto text = lend(QStringLiteral("text"), application);
    auto chord = services_->chords->type(Chord::paste, {application, focus_, text});
    for (int i = 0; i < 20; ++i) {
        for (const auto *window : {source_.get(), other_.get()})
            writeCardinals(*peer_, peer_->root(), peer_->atom("_NET_ACTIVE_WINDOW"),
                           XCB_ATOM_WINDOW, {window->id()});
        peer_->serverTime();
    }
    proceed();
    services_->workspace->activate(application);
    EXPECT_EQ(wait(std::move(chord)).outcome, Outcome::typed);
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
