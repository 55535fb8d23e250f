#include "desktop/wayland/clipboard/ForeignClient.h"
#include "desktop/wayland/clipboard/ScriptedCompositor.h"
#include "desktop/x11/WaitFor.h"
#include "platform/linux/wayland/clipboard/PrimarySelection.h"
#include "platform/linux/wayland/clipboard/WaylandPasteboard.h"
#include "platform/linux/wayland/keys/CopyWatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using x11::finishTurn;
using x11::waitFor;

class ClipboardProtocolTest : public testing::Test {
  protected:
    void start(const QList<ScriptedCompositor::Protocol> &protocols) {
        compositor_ = std::make_unique<ScriptedCompositor>(protocols);
        connection_ = openPatiently(compositor_->display());
        ASSERT_NE(connection_, nullptr);
        control_ = DataControl::create(*connection_);
        if (!control_)
            return;
        pasteboard_ = std::make_unique<WaylandPasteboard>(*control_, chords_, copies_);
        settle();
    }

    void settle() {
        QCoro::waitFor(control_->catchUp());
        finishTurn();
    }

    template <typename Value> Value wait(QCoro::Task<Value> task) {
        return QCoro::waitFor(std::move(task));
    }

    /// What the compositor is answered when it asks for this type of what we offer.
    QByteArray ask(const QByteArray &type) {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        compositor_->run([&] {
            if (compositor_->source)
                ScriptedCompositor::ask(compositor_->source, type, ends[1]);
        });
        ::close(ends[1]);
        return readToEnd(Descriptor(ends[0]));
    }

    void expectClipboardWorks() {
        compositor_->run(
            [this] { compositor_->select(compositor_->announce({"text/plain", "image/png"})); });
        const auto items = wait(pasteboard_->items());
        EXPECT_EQ(toOfferedContents(items),
                  (OfferedContents{{"text/plain", "text/plain"}, {"image/png", "image/png"}}));
        ASSERT_NE(pasteboard_->lend(QStringLiteral("lent"), nullptr), nullptr);
        settle();
        EXPECT_EQ(ask("UTF8_STRING"), "lent");
        pasteboard_->replaceContents(items);
        settle();
        EXPECT_THAT(compositor_->sourceTypes, ElementsAre("text/plain", "image/png"));
        EXPECT_EQ(ask("image/png"), "image/png");
        pasteboard_->replaceContents({});
        settle();
        EXPECT_EQ(compositor_->source, nullptr);
        EXPECT_FALSE(connection_->isLost());
    }

    ChordMoment chords_;
    CopyWatch copies_;
    std::unique_ptr<ScriptedCompositor> compositor_;
    std::unique_ptr<WaylandConnection> connection_;
    std::unique_ptr<DataControl> control_;
    std::unique_ptr<WaylandPasteboard> pasteboard_;
};

TEST_F(ClipboardProtocolTest, PrefersTheOneThatWasAgreedOn) {
    start({ScriptedCompositor::wlr(2), ScriptedCompositor::ext()});
    EXPECT_EQ(compositor_->boundProtocol, "ext_data_control_manager_v1");
    EXPECT_TRUE(control_->hasPrimary());
    expectClipboardWorks();
    PrimarySelection primary(*control_);
    compositor_->run(
        [this] { compositor_->selectPrimary(compositor_->announce({"UTF8_STRING"})); });
    EXPECT_EQ(wait(primary.primaryText(1min)), QStringLiteral("UTF8_STRING"));
}

TEST_F(ClipboardProtocolTest, DoesWithTheOneThatCameBefore) {
    start({ScriptedCompositor::wlr(2)});
    EXPECT_EQ(compositor_->boundProtocol, "zwlr_data_control_manager_v1");
    EXPECT_TRUE(control_->hasPrimary());
    expectClipboardWorks();
}

TEST_F(ClipboardProtocolTest, DoesWithoutPrimary) {
    start({ScriptedCompositor::wlr(1)});
    EXPECT_FALSE(control_->hasPrimary());
    expectClipboardWorks();
    PrimarySelection primary(*control_);
    EXPECT_EQ(wait(primary.primaryText(1min)), std::nullopt);
    control_->set(Selection::primary, nullptr);
    settle();
    EXPECT_FALSE(connection_->isLost());
}

TEST_F(ClipboardProtocolTest, IsNotThereWithoutEither) {
    start({});
    EXPECT_EQ(control_, nullptr);
}

TEST_F(ClipboardProtocolTest, HasNothingWhenTheDeviceIsFinishedUntilThereIsAnotherSeat) {
    start({ScriptedCompositor::ext()});
    compositor_->run([this] {
        compositor_->select(compositor_->announce({"text/plain"}));
        compositor_->finish();
        compositor_->finish();
    });
    EXPECT_TRUE(waitFor([&] { return !control_->isUsable(); }));
    EXPECT_THAT(wait(pasteboard_->items()), IsEmpty());
    EXPECT_EQ(wait(pasteboard_->string()), std::nullopt);
    EXPECT_EQ(pasteboard_->lend(QStringLiteral("text"), nullptr), nullptr);
    pasteboard_->replaceContents({});
    EXPECT_EQ(compositor_->devices, 1) << "it does not ask for it again and again";

    compositor_->run([this] { compositor_->withdrawSeat(); });
    settle();
    compositor_->run([this] { compositor_->announceSeat(); });
    EXPECT_TRUE(waitFor([&] { return control_->isUsable(); }));
    settle();
    EXPECT_EQ(compositor_->devices, 2);
    expectClipboardWorks();
}

TEST_F(ClipboardProtocolTest, HasNothingWithoutSeat) {
    start({ScriptedCompositor::ext()});
    const LentTextRef lent = pasteboard_->lend(QStringLiteral("text"), nullptr);
    settle();
    auto isRead = lent->wasRead(1min);
    compositor_->run([this] { compositor_->withdrawSeat(); });
    EXPECT_FALSE(wait(std::move(isRead))) << "long before its limit";
    EXPECT_FALSE(control_->isUsable());
    EXPECT_THAT(wait(pasteboard_->items()), IsEmpty());
    EXPECT_EQ(pasteboard_->lend(QStringLiteral("text"), nullptr), nullptr);
}

TEST_F(ClipboardProtocolTest, HearsOfWhatIsCopiedWhileTheClipboardIsEmptied) {
    start({ScriptedCompositor::ext()});
    ASSERT_NE(pasteboard_->lend(QStringLiteral("lent"), nullptr), nullptr);
    settle();
    compositor_->run([this] {
        compositor_->whenSet = [this] {
            compositor_->select(nullptr);
            compositor_->select(compositor_->announce({"text/plain"}));
        };
    });
    pasteboard_->replaceContents({});
    const qint64 emptied = pasteboard_->changeCount();
    EXPECT_TRUE(waitFor([&] { return pasteboard_->changeCount() != emptied; }));
    EXPECT_THAT(wait(pasteboard_->items()), SizeIs(1));
}

TEST_F(ClipboardProtocolTest, SurvivesNonsense) {
    start({ScriptedCompositor::ext()});
    compositor_->run([this] {
        for (int i = 0; i < 100; ++i)
            compositor_->announce({"never selected"});
        wl_resource *const offer = compositor_->announce({"text/plain", "", "text/plain"});
        compositor_->select(offer);
        compositor_->select(offer);
        compositor_->selectPrimary(offer);
        ScriptedCompositor::addType(offer, "late");
    });
    EXPECT_THAT(wait(pasteboard_->items()), SizeIs(1));
    EXPECT_THAT(compositor_->received, ElementsAre("text/plain", "late"));
    PrimarySelection primary(*control_);
    EXPECT_EQ(wait(primary.primaryText(1min)), QStringLiteral("text/plain"));
    settle();
    EXPECT_LT(compositor_->offers.size(), 20) << "what is not selected is not kept";

    // A source that is cancelled twice, and asked for something all the same.
    ASSERT_NE(pasteboard_->lend(QStringLiteral("lent"), nullptr), nullptr);
    settle();
    const qint64 lent = pasteboard_->changeCount();
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    compositor_->run([&] {
        ScriptedCompositor::cancel(compositor_->source);
        ScriptedCompositor::cancel(compositor_->source);
        ScriptedCompositor::ask(compositor_->source, "UTF8_STRING", ends[1]);
        compositor_->select(nullptr);
    });
    ::close(ends[1]);
    EXPECT_EQ(readToEnd(Descriptor(ends[0])), "");
    EXPECT_TRUE(waitFor([&] { return pasteboard_->changeCount() != lent; }));
    EXPECT_THAT(wait(pasteboard_->items()), IsEmpty());
    expectClipboardWorks();
}

} // namespace

} // namespace quillmender::wayland

int main(int argc, char **argv) {
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
