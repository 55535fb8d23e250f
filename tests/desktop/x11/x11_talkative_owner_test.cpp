#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/selection/ParallelConversions.h"
#include "platform/linux/x11/selection/SelectionReader.h"

#include <QTimer>

#include <algorithm>
#include <array>

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr qsizetype mebibyte = qsizetype{1024} * 1024;

/// Owners that say too much, too often, too late or to the wrong question.
class TalkativeOwnerTest : public X11Test {
  protected:
    void SetUp() override {
        X11Test::SetUp();
        owner_ = std::make_unique<ScriptedOwner>(server_.display());
    }

    X11Property text(const QByteArray &bytes) { return {peer_->atom("UTF8_STRING"), 8, bytes}; }

    /// Listed; a transfer that goes on for as long as somebody takes its chunks.
    void offerWithoutEnd(const char *target) {
        owner_->offerSpecially(target, [this](const xcb_selection_request_event_t &request) {
            const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(owner_->connection().xcb(), request.requestor,
                                         XCB_CW_EVENT_MASK, &events);
            QObject::connect(&owner_->connection(), &X11Connection::eventReceived, owner_.get(),
                             [this, request](const auto *event) { send(request, event); });
            writeCardinals(owner_->connection(), request.requestor, request.property,
                           owner_->atom("INCR"), {1});
            owner_->notify(request, request.property);
        });
    }

    std::vector<std::pair<QByteArray, QByteArray>> read(SelectionReader reader,
                                                        std::chrono::milliseconds limit = 20s) {
        const auto reading = wait(reader.readAll(TransferBudget(limit)));
        isCutShort_ = reading.isCutShort;
        std::vector<std::pair<QByteArray, QByteArray>> found;
        for (const SelectionTarget &each : reading.contents)
            found.emplace_back(peer_->atomNames({each.target}).front(), each.property.value);
        return found;
    }

    SelectionReader reader(const TransferBounds &bounds = {}) {
        return {*services_->connection, peer_->atom("CLIPBOARD"), bounds};
    }

    /// To the program's own window.
    void sendMessage() {
        std::array<char, 32> bytes{};
        bytes[0] = XCB_CLIENT_MESSAGE;
        bytes[1] = 32;
        xcb_send_event(peer_->xcb(), 0, services_->connection->window(), XCB_EVENT_MASK_NO_EVENT,
                       bytes.data());
    }

    xcb_timestamp_t now() { return services_->connection->serverTime(); }

    std::unique_ptr<ScriptedOwner> owner_;
    qsizetype sent_ = 0;
    bool isCutShort_ = false;

  private:
    void send(const xcb_selection_request_event_t &request, const xcb_generic_event_t *event) {
        if (eventType(event) != XCB_PROPERTY_NOTIFY)
            return;
        const auto &change = eventCast<xcb_property_notify_event_t>(event);
        if (change.window != request.requestor || change.atom != request.property ||
            change.state != XCB_PROPERTY_DELETE)
            return;
        sent_ += mebibyte;
        writeProperty(owner_->connection(), request.requestor, request.property,
                      text(QByteArray(mebibyte, 'x')));
        xcb_flush(owner_->connection().xcb());
    }
};

TEST_F(TalkativeOwnerTest, OneTargetWithoutEndIsDroppedAndTheOthersLive) {
    offerWithoutEnd("image/png");
    owner_->offer("UTF8_STRING", text("kept"));
    const auto found = read(reader({8 * mebibyte, 32 * mebibyte}));
    EXPECT_THAT(found, ElementsAre(std::pair<QByteArray, QByteArray>("UTF8_STRING", "kept")));
    EXPECT_LE(sent_, 16 * mebibyte);
    EXPECT_FALSE(isCutShort_) << "more time would not help";
}

TEST_F(TalkativeOwnerTest, OwnerThatFallsSilentForAMomentLosesNothing) {
    owner_->offer("UTF8_STRING", text("quick"));
    owner_->offerSpecially("text/html", [this](const xcb_selection_request_event_t &request) {
        QTimer::singleShot(900ms, &owner_->connection(),
                           [this, request] { owner_->answer(request, text("late")); });
    });
    auto &pasteboard = *services_->pasteboard;
    EXPECT_EQ(wait(pasteboard.itemsWithin(20s)), std::nullopt);
    const QList<PasteboardItem> items = wait(pasteboard.items());
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].representations().size(), 2);
}

TEST_F(TalkativeOwnerTest, AnnouncedSizeIsEnoughToDropATarget) {
    owner_->offerSpecially("image/png", [this](const auto &request) {
        writeCardinals(owner_->connection(), request.requestor, request.property,
                       owner_->atom("INCR"), {0xf0000000});
        owner_->notify(request, request.property);
    });
    owner_->offer("UTF8_STRING", text("kept"));
    ParallelConversions group(*services_->connection, peer_->atom("CLIPBOARD"), TransferBudget(),
                              {});
    bool isSettled = false;
    QObject::connect(&group, &ParallelConversions::settled, [&] { isSettled = true; });
    group.request({peer_->atom("image/png"), peer_->atom("UTF8_STRING")}, now());
    ASSERT_TRUE(waitFor([&] { return isSettled; }));
    EXPECT_TRUE(group.conversions()[0]->isFinished()) << "nothing is waited for";
    EXPECT_FALSE(group.conversions()[0]->isDone());
    EXPECT_TRUE(group.conversions()[1]->isDone());
}

TEST_F(TalkativeOwnerTest, SeveralTargetsTogetherHoldNoMoreThanTheBound) {
    QList<xcb_atom_t> targets;
    for (const char *name : {"a", "b", "c", "d"}) {
        offerWithoutEnd(name);
        targets.append(peer_->atom(name));
    }
    owner_->offer("UTF8_STRING", text("kept"));
    targets.append(peer_->atom("UTF8_STRING"));
    const TransferBounds bounds{16 * mebibyte, 24 * mebibyte};
    ParallelConversions group(*services_->connection, peer_->atom("CLIPBOARD"), TransferBudget(),
                              bounds);
    bool isSettled = false;
    qsizetype most = 0;
    QObject::connect(&group, &ParallelConversions::settled, [&] { isSettled = true; });
    group.request(targets, now());
    for (const auto &each : group.conversions()) {
        QObject::connect(each.get(), &SelectionConversion::advanced, [&] {
            qsizetype held = 0;
            for (const auto &other : group.conversions())
                held += other->received();
            most = std::max(most, held);
        });
    }
    ASSERT_TRUE(waitFor([&] { return isSettled; }));
    EXPECT_LE(most, bounds.total);
    EXPECT_GT(most, bounds.perTarget);
    EXPECT_TRUE(group.conversions().back()->isDone());
}

TEST_F(TalkativeOwnerTest, EventLoopGoesOnWhileALargePropertyIsTaken) {
    constexpr qsizetype size = 40 * mebibyte;
    owner_->offerSpecially("image/png", [this](const xcb_selection_request_event_t &request) {
        const QByteArray part(8 * mebibyte, 'x');
        for (qsizetype written = 0; written < size; written += part.size())
            xcb_change_property(owner_->connection().xcb(), XCB_PROP_MODE_APPEND, request.requestor,
                                request.property, XCB_ATOM_STRING, 8,
                                static_cast<quint32>(part.size()), part.constData());
        owner_->notify(request, request.property);
    });
    int turns = 0;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, [&] { ++turns; });
    SelectionConversion conversion(*services_->connection, peer_->atom("CLIPBOARD"),
                                   peer_->atom("image/png"), now(), 2 * size);
    std::vector<int> turnsOfPieces;
    QObject::connect(&conversion, &SelectionConversion::advanced,
                     [&] { turnsOfPieces.push_back(turns); });
    turn.start(0);
    ASSERT_TRUE(waitFor([&] { return conversion.isFinished(); }));
    ASSERT_TRUE(conversion.isDone());
    EXPECT_EQ(conversion.result().value, QByteArray(size, 'x'));
    ASSERT_THAT(turnsOfPieces, SizeIs(testing::Ge(10)));
    EXPECT_GE(turnsOfPieces.back() - turnsOfPieces.front(), 5);
}

TEST_F(TalkativeOwnerTest, PropertyLargerThanTheBoundIsNotReadAtAll) {
    owner_->offer("image/png", text(QByteArray(3 * mebibyte, 'x')));
    owner_->offer("UTF8_STRING", text("kept"));
    EXPECT_THAT(read(reader({2 * mebibyte, 32 * mebibyte})),
                ElementsAre(std::pair<QByteArray, QByteArray>("UTF8_STRING", "kept")));
}

TEST_F(TalkativeOwnerTest, FloodOfEventsLeavesTurnsToTheOthers) {
    X11Connection &connection = *services_->connection;
    constexpr int flood = 100;
    int handled = 0;
    const auto busyFor = [](std::chrono::milliseconds time) {
        const QDeadlineTimer deadline(time, Qt::PreciseTimer);
        while (!deadline.hasExpired())
            continue;
    };
    QObject::connect(&connection, &X11Connection::eventReceived, &connection,
                     [&](const xcb_generic_event_t *event) {
                         if (eventType(event) != XCB_CLIENT_MESSAGE)
                             return;
                         ++handled;
                         busyFor(2ms);
                     });
    int turns = 0;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, [&] { turns += handled > 0 ? 1 : 0; });
    turn.start(0);
    for (int i = 0; i < flood; ++i)
        sendMessage();
    peer_->serverTime();
    ASSERT_TRUE(waitFor([&] { return handled == flood; }));
    EXPECT_GE(turns, 10);
}

TEST_F(TalkativeOwnerTest, SlowOwnerIsCutShortAtTheLimitAndHadInFullLater) {
    std::optional<xcb_selection_request_event_t> asked;
    owner_->offer("UTF8_STRING", text("quick"));
    owner_->offerSpecially("image/png", [&](const auto &request) { asked = request; });
    EXPECT_EQ(wait(pasteboard().itemsWithin(100ms)), std::nullopt);
    ASSERT_TRUE(asked);

    owner_->offerSpecially("text/html", [this](const xcb_selection_request_event_t &request) {
        QTimer::singleShot(300, owner_.get(),
                           [this, request] { owner_->answer(request, text("<i>slow</i>")); });
    });
    owner_->offer("image/png", text("image"));
    EXPECT_EQ(wait(pasteboard().itemsWithin(100ms)), std::nullopt);
    // Of the reading that was given up.
    owner_->answer(*asked, text("late"));
    const auto items = wait(pasteboard().items());
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items[0].find(QStringLiteral("UTF8_STRING"))->data, "quick");
    EXPECT_EQ(items[0].find(QStringLiteral("text/html"))->data, "<i>slow</i>");
    EXPECT_EQ(items[0].find(QStringLiteral("image/png"))->data, "image");
    EXPECT_EQ(wait(pasteboard().itemsWithin(10s)), items);
}

TEST_F(TalkativeOwnerTest, OwnerThatTricklesHoldsNobodyBeyondTheLimit) {
    offerWithoutEnd("image/png");
    EXPECT_THAT(read(reader(), 200ms), IsEmpty());
    EXPECT_TRUE(isCutShort_);
    // It is left to itself, and nothing of it is held any more.
    const auto abandoned = [this] {
        return services_->connection->findChildren<SelectionConversion *>();
    };
    ASSERT_TRUE(waitFor([&] { return !abandoned().isEmpty(); }));
    const qsizetype sent = sent_;
    ASSERT_TRUE(waitFor([&] { return sent_ > sent + 4 * mebibyte; }));
    for (const SelectionConversion *each : abandoned())
        EXPECT_EQ(each->received(), 0);
}

TEST_F(TalkativeOwnerTest, SilentOwnerIsNotWaitedForForever) {
    owner_->offer("UTF8_STRING", text("x"));
    owner_->isSilent = true;
    EXPECT_EQ(wait(pasteboard().itemsWithin(10s)), std::nullopt);
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
}

TEST_F(TalkativeOwnerTest, OnlyTheFirstAnswerToAQuestionCounts) {
    owner_->offerSpecially("a", [this](const auto &request) {
        owner_->answer(request, text("first"));
        owner_->answer(request, text("second"));
    });
    owner_->offerSpecially("b", [this](const auto &request) {
        owner_->notify(request, XCB_ATOM_NONE);
        owner_->answer(request, text("after a refusal"));
    });
    owner_->offerSpecially("c", [this](xcb_selection_request_event_t request) {
        const auto right = request;
        request.selection = XCB_ATOM_PRIMARY;
        owner_->answer(request, text("another selection's"));
        request = right;
        request.target = owner_->atom("a");
        owner_->answer(request, text("another target's"));
        QTimer::singleShot(50, owner_.get(),
                           [this, right] { owner_->answer(right, text("right")); });
    });
    const auto found = read(reader());
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_EQ(found[0].first, "a");
    EXPECT_EQ(found[1], (std::pair<QByteArray, QByteArray>("c", "right")));
}

TEST_F(TalkativeOwnerTest, LargeContentsAreNotHeldTwice) {
    owner_->offer("UTF8_STRING", text("caption"));
    const X11Property image = text(QByteArray(20 * mebibyte, 'x'));
    owner_->offerIncrementally("image/png", image, mebibyte);
    const auto first = wait(pasteboard().items());
    const int requests = owner_->requests;
    const auto second = wait(pasteboard().items());
    EXPECT_EQ(owner_->requests, requests);
    ASSERT_THAT(second, SizeIs(1));
    EXPECT_EQ(second[0].representations()[1].data.constData(),
              first[0].representations()[1].data.constData());
    owner_->offerIncrementally("image/png", text("other"), mebibyte);
    owner_->own();
    EXPECT_EQ(wait(pasteboard().items())[0].representations()[1].data, "other");
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
