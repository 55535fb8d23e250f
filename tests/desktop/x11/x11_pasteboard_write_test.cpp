#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/selection/IncrSender.h"

#include <xcb/xfixes.h>

#include <array>
#include <cstring>

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

QList<PasteboardItem> itemOf(const QString &type, const QByteArray &data) {
    PasteboardItem item;
    item.setData(type, data, "8 UTF8_STRING");
    return {item};
}

class PasteboardWriteTest : public X11Test {
  protected:
    void SetUp() override {
        X11Test::SetUp();
        xcb_xfixes_select_selection_input(peer_->xcb(), peer_->root(), peer_->atom("CLIPBOARD"),
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
        QObject::connect(peer_.get(), &X11Connection::eventReceived, peer_.get(),
                         [this](const xcb_generic_event_t *event) {
                             if (eventType(event) == peer_->fixesFirstEvent())
                                 owners_.push_back(
                                     eventCast<xcb_xfixes_selection_notify_event_t>(event).owner);
                         });
        peer_->serverTime();
    }

    std::vector<xcb_window_t> owners_;
};

TEST_F(PasteboardWriteTest, ChangesOwnerOnceForEachReplacement) {
    const qint64 before = pasteboard().changeCount();
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    EXPECT_NE(pasteboard().changeCount(), before);
    const qint64 lent = pasteboard().changeCount();
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "the user's"));
    EXPECT_NE(pasteboard().changeCount(), lent);
    services_->connection->serverTime();
    EXPECT_TRUE(waitFor([&] { return owners_.size() >= 2; }));
    finishTurn();
    const xcb_window_t own = services_->connection->window();
    EXPECT_THAT(owners_, ElementsAre(own, own));
}

TEST_F(PasteboardWriteTest, LeavesTheClipboardWithoutOwnerWithoutItems) {
    ScriptedOwner owner(server_.display());
    const qint64 before = pasteboard().changeCount();
    pasteboard().replaceContents({});
    EXPECT_TRUE(waitFor([&] { return ownerOf("CLIPBOARD") == XCB_WINDOW_NONE; }));
    EXPECT_NE(pasteboard().changeCount(), before);
    EXPECT_TRUE(wait(pasteboard().items()).isEmpty());
    // An item may have come to nothing when it was read.
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    pasteboard().replaceContents({PasteboardItem()});
    EXPECT_TRUE(waitFor([&] { return ownerOf("CLIPBOARD") == XCB_WINDOW_NONE; }));
}

TEST_F(PasteboardWriteTest, CountsItsOwnChangesOnlyWhenTheyAreMade) {
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    const qint64 written = pasteboard().changeCount();
    EXPECT_TRUE(waitFor([&] { return owners_.size() == 1; }));
    services_->connection->serverTime();
    finishTurn();
    EXPECT_EQ(pasteboard().changeCount(), written);
    pasteboard().replaceContents({});
    const qint64 cleared = pasteboard().changeCount();
    EXPECT_TRUE(waitFor([&] { return owners_.size() == 2; }));
    services_->connection->serverTime();
    finishTurn();
    EXPECT_EQ(pasteboard().changeCount(), cleared);
}

TEST_F(PasteboardWriteTest, OffersTextInItsUsualTargetsWithTheHistoryMark) {
    ASSERT_NE(lend(QStringLiteral("é€")), nullptr);
    TestRequestor requestor(*peer_);
    EXPECT_THAT(requestor.fetchTargets(),
                ElementsAre("TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING",
                            "text/plain;charset=utf-8", "text/plain", "STRING", "TEXT",
                            "x-kde-passwordManagerHint"));
    EXPECT_EQ(requestor.fetch("UTF8_STRING")->value, "é€");
    EXPECT_EQ(requestor.fetch("text/plain;charset=utf-8")->value, "é€");
    EXPECT_EQ(requestor.fetch("STRING")->value, "\xe9?");
    EXPECT_EQ(requestor.fetch("x-kde-passwordManagerHint")->value, "secret");
    EXPECT_EQ(requestor.fetch("image/png"), std::nullopt);
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("é€"));
}

TEST_F(PasteboardWriteTest, IgnoresTheLossOfAFormerOwnership) {
    const xcb_timestamp_t before = peer_->serverTime();
    ASSERT_TRUE(waitFor([&] { return peer_->serverTime() > before; }));
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    xcb_selection_clear_event_t clear{};
    clear.response_type = XCB_SELECTION_CLEAR;
    clear.time = before;
    clear.owner = services_->connection->window();
    clear.selection = peer_->atom("CLIPBOARD");
    alignas(xcb_selection_clear_event_t) std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &clear, sizeof clear);
    xcb_send_event(peer_->xcb(), 0, clear.owner, XCB_EVENT_MASK_NO_EVENT, bytes.data());
    peer_->serverTime();
    TestRequestor requestor(*peer_);
    EXPECT_EQ(requestor.fetch("UTF8_STRING")->value, "text");
}

TEST_F(PasteboardWriteTest, KeepsTheHistoryMarkOfTheUserAndAddsNone) {
    TestRequestor requestor(*peer_);
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "plain"));
    EXPECT_FALSE(requestor.fetchTargets().contains("x-kde-passwordManagerHint"));
    pasteboard().replaceContents(itemOf(QStringLiteral("x-kde-passwordManagerHint"), "secret"));
    EXPECT_EQ(requestor.fetch("x-kde-passwordManagerHint")->value, "secret");
}

TEST_F(PasteboardWriteTest, AnswersTheTimeOfItsOwnership) {
    const xcb_timestamp_t before = peer_->serverTime();
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    const xcb_timestamp_t after = peer_->serverTime();
    ASSERT_TRUE(waitFor([&] { return peer_->serverTime() > after; }));
    TestRequestor requestor(*peer_);
    const auto answer = requestor.fetch("TIMESTAMP");
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->type, xcb_atom_t{XCB_ATOM_INTEGER});
    EXPECT_GE(answer->cardinals().value(0), before);
    EXPECT_LE(answer->cardinals().value(0), after);
}

TEST_F(PasteboardWriteTest, AnswersSeveralTargetsInOneRequest) {
    PasteboardItem item;
    item.setData(QStringLiteral("small"), "1234", "32 INTEGER");
    item.setData(QStringLiteral("other"), "text", "8 STRING");
    pasteboard().replaceContents({item});
    TestRequestor requestor(*peer_);
    requestor.askMultiple({"small", "missing", "other"});
    ASSERT_TRUE(waitFor([&] { return requestor.isAnswered(); }));
    ASSERT_TRUE(requestor.answer().has_value());
    const QList<quint32> pairs = requestor.answer()->cardinals();
    ASSERT_EQ(pairs.size(), 6);
    EXPECT_EQ(pairs[3], xcb_atom_t{XCB_ATOM_NONE});
    const auto value = [&](const char *name) {
        return readProperty(*peer_, requestor.window(), peer_->atom(name))->value;
    };
    EXPECT_EQ(value("TEST_small"), "1234");
    EXPECT_EQ(value("TEST_other"), "text");
}

TEST_F(PasteboardWriteTest, ServesLargeDataToSeveralRequestorsAfterLosingTheClipboard) {
    QByteArray large(20'000'003, 'x');
    for (qsizetype i = 0; i < large.size(); i += 997)
        large[i] = static_cast<char>(i);
    ASSERT_GT(large.size(), services_->connection->maximumDataBytes());
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), large));
    TestRequestor first(*peer_);
    TestRequestor second(*peer_);
    first.ask("image/png");
    second.ask("image/png");
    ASSERT_TRUE(waitFor([&] { return first.chunks > 0 && second.chunks > 0; }));
    const ScriptedOwner taker(server_.display());
    ASSERT_TRUE(waitFor([&] { return first.isAnswered() && second.isAnswered(); }));
    EXPECT_TRUE(first.answer()->value == large);
    EXPECT_TRUE(second.answer()->value == large);
}

TEST_F(PasteboardWriteTest, OutlivesARequestorThatDiesHalfWay) {
    const QByteArray large(20'000'000, 'x');
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), large));
    auto dying = std::make_unique<TestRequestor>(*peer_);
    dying->mostChunks = 2;
    dying->ask("image/png");
    ASSERT_TRUE(waitFor([&] { return dying->chunks == 2; }));
    dying.reset();
    TestRequestor requestor(*peer_);
    EXPECT_TRUE(requestor.fetch("image/png")->value == large);
}

TEST_F(PasteboardWriteTest, GivesUpOnARequestorThatStopsTaking) {
    X11Connection &connection = *services_->connection;
    const TestWindow window(*peer_);
    peer_->serverTime();
    const xcb_atom_t property = peer_->atom("TEST_DATA");
    std::optional<bool> isComplete;
    {
        const QByteArray large(3'000'000, 'x');
        IncrSender sender(connection, window.id(), property, {XCB_ATOM_STRING, 8, large}, 50ms);
        QObject::connect(&sender, &IncrSender::finished, &sender,
                         [&](bool isAll) { isComplete = isAll; });
        connection.serverTime();
        const auto announced = takeProperty(*peer_, window.id(), property);
        ASSERT_TRUE(announced.has_value());
        EXPECT_EQ(announced->type, peer_->atom("INCR"));
        EXPECT_THAT(announced->cardinals(), ElementsAre(3'000'000));
        ASSERT_TRUE(waitFor([&] { return isComplete.has_value(); }));
        EXPECT_EQ(isComplete, false);
        // Too late: it is not answered any more.
        EXPECT_TRUE(takeProperty(*peer_, window.id(), property).has_value());
        connection.serverTime();
        finishTurn();
        connection.serverTime();
        EXPECT_EQ(readProperty(*peer_, window.id(), property), std::nullopt);
    }
    EXPECT_TRUE(connection.watchCounts().isEmpty());
}

TEST_F(PasteboardWriteTest, HandsTheUsersContentsToAClipboardManager) {
    ScriptedOwner manager(server_.display(), "CLIPBOARD_MANAGER");
    QList<quint32> asked;
    TestRequestor reader(manager.connection());
    std::optional<X11Property> saved;
    manager.offerSpecially("SAVE_TARGETS", [&](const auto &request) {
        asked =
            readProperty(manager.connection(), request.requestor, request.property)->cardinals();
        saved = reader.fetch("image/png");
        manager.answer(request, {manager.atom("NULL"), 32, {}});
    });
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), "pixels"));
    QCoro::waitFor(pasteboard().handOver());
    EXPECT_THAT(asked, ElementsAre(manager.atom("image/png")));
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(saved->value, "pixels");

    ASSERT_NE(lend(QStringLiteral("temporary")), nullptr);
    asked.clear();
    QCoro::waitFor(pasteboard().handOver());
    EXPECT_TRUE(asked.isEmpty());
}

TEST_F(PasteboardWriteTest, HandsOverToNobodyWithoutAManager) {
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), "pixels"));
    QCoro::waitFor(pasteboard().handOver());
    EXPECT_EQ(ownerOf("CLIPBOARD"), services_->connection->window());
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
