#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/ClientIdentity.h"
#include "platform/linux/x11/IncrSender.h"

#include <xcb/xfixes.h>

#include <array>
#include <cstring>

namespace quillmender {

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

TEST_F(PasteboardWriteTest, ChangesOwnerOnceForClearAndWrite) {
    const qint64 before = pasteboard().changeCount();
    pasteboard().clearContents();
    EXPECT_TRUE(pasteboard().setString(QStringLiteral("text")));
    EXPECT_TRUE(waitFor([&] { return !owners_.empty(); }));
    finishTurn();
    EXPECT_THAT(owners_, ElementsAre(services_->connection->window()));
    EXPECT_NE(pasteboard().changeCount(), before);
}

TEST_F(PasteboardWriteTest, LeavesTheClipboardWithoutOwnerAfterALoneClear) {
    ScriptedOwner owner(server_.display());
    const qint64 before = pasteboard().changeCount();
    pasteboard().clearContents();
    EXPECT_TRUE(pasteboard().writeItems({}));
    EXPECT_TRUE(waitFor([&] { return ownerOf("CLIPBOARD") == XCB_WINDOW_NONE; }));
    EXPECT_NE(pasteboard().changeCount(), before);
    EXPECT_TRUE(wait(pasteboard().items()).isEmpty());
}

TEST_F(PasteboardWriteTest, CountsItsOwnChangesOnlyWhenTheyAreMade) {
    pasteboard().clearContents();
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
    const qint64 written = pasteboard().changeCount();
    EXPECT_TRUE(waitFor([&] { return owners_.size() == 1; }));
    services_->connection->serverTime();
    finishTurn();
    EXPECT_EQ(pasteboard().changeCount(), written);
    pasteboard().clearContents();
    const qint64 cleared = pasteboard().changeCount();
    EXPECT_TRUE(waitFor([&] { return owners_.size() == 2; }));
    services_->connection->serverTime();
    finishTurn();
    EXPECT_EQ(pasteboard().changeCount(), cleared);
}

TEST_F(PasteboardWriteTest, OffersTextInItsUsualTargetsWithTheHistoryMark) {
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("é€")));
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

TEST_F(PasteboardWriteTest, ShowsTemporaryTextToNobodyButWhoIsPastedInto) {
    const auto elsewhere = [this](const char *target) {
        const auto xclip = server_.start(QStringLiteral("xclip"),
                                         {QStringLiteral("-o"), QStringLiteral("-selection"),
                                          QStringLiteral("clipboard"), QStringLiteral("-target"),
                                          QString::fromLatin1(target)});
        EXPECT_TRUE(waitFor([&] { return xclip->state() == QProcess::NotRunning; }));
        return xclip->readAllStandardOutput();
    };
    const auto foreign =
        server_.start(QStringLiteral("xterm"), {QStringLiteral("-e"), QStringLiteral("cat")});
    std::shared_ptr<const X11RunningApplication> terminal;
    const auto isThere = [&] {
        const auto tree = adoptXcb(xcb_query_tree_reply(
            peer_->xcb(), xcb_query_tree(peer_->xcb(), peer_->root()), nullptr));
        const xcb_window_t *const children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (processOfWindow(*peer_, children[i]) == foreign->processId())
                terminal =
                    std::make_shared<X11RunningApplication>(children[i], foreign->processId());
        }
        return terminal != nullptr;
    };
    ASSERT_TRUE(waitFor(isThere));

    ASSERT_TRUE(pasteboard().setString(QStringLiteral("answer")));
    ASSERT_TRUE(services_->workspace->activate(terminal));
    EXPECT_EQ(elsewhere("UTF8_STRING"), "");
    EXPECT_EQ(elsewhere("TARGETS"), "TARGETS\nTIMESTAMP\nMULTIPLE\nx-kde-passwordManagerHint\n");
    EXPECT_EQ(elsewhere("x-kde-passwordManagerHint"), "secret");

    // The test is the application itself, and what it started acts for it.
    const TestWindow window(*peer_);
    ASSERT_TRUE(services_->workspace->activate(
        std::make_shared<X11RunningApplication>(window.id(), QCoreApplication::applicationPid())));
    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING")->value, "answer");
    EXPECT_EQ(elsewhere("UTF8_STRING"), "answer");

    ASSERT_TRUE(services_->workspace->activate(terminal));
    pasteboard().clearContents();
    ASSERT_TRUE(pasteboard().writeItems(itemOf(QStringLiteral("UTF8_STRING"), "the user's")));
    EXPECT_EQ(elsewhere("UTF8_STRING"), "the user's");
    foreign->kill();
    foreign->waitForFinished(5000);
}

TEST_F(PasteboardWriteTest, IgnoresTheLossOfAFormerOwnership) {
    const xcb_timestamp_t before = peer_->serverTime();
    ASSERT_TRUE(waitFor([&] { return peer_->serverTime() > before; }));
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
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
    pasteboard().writeItems(itemOf(QStringLiteral("UTF8_STRING"), "plain"));
    EXPECT_FALSE(requestor.fetchTargets().contains("x-kde-passwordManagerHint"));
    pasteboard().writeItems(itemOf(QStringLiteral("x-kde-passwordManagerHint"), "secret"));
    EXPECT_EQ(requestor.fetch("x-kde-passwordManagerHint")->value, "secret");
}

TEST_F(PasteboardWriteTest, AnswersTheTimeOfItsOwnership) {
    const xcb_timestamp_t before = peer_->serverTime();
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
    TestRequestor requestor(*peer_);
    const auto answer = requestor.fetch("TIMESTAMP");
    ASSERT_TRUE(answer.has_value());
    EXPECT_EQ(answer->type, xcb_atom_t{XCB_ATOM_INTEGER});
    EXPECT_GE(answer->cardinals().value(0), before);
}

TEST_F(PasteboardWriteTest, AnswersSeveralTargetsInOneRequest) {
    PasteboardItem item;
    item.setData(QStringLiteral("small"), "1234", "32 INTEGER");
    item.setData(QStringLiteral("other"), "text", "8 STRING");
    ASSERT_TRUE(pasteboard().writeItems({item}));
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
    ASSERT_TRUE(pasteboard().writeItems(itemOf(QStringLiteral("image/png"), large)));
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
    ASSERT_TRUE(pasteboard().writeItems(itemOf(QStringLiteral("image/png"), large)));
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

TEST_F(PasteboardWriteTest, IsNotDeceivedByATransferThatBeganBeforeThePaste) {
    ASSERT_TRUE(pasteboard().setString(QString(20'000'000, QLatin1Char('x'))));
    TestRequestor early(*peer_);
    early.mostChunks = 1;
    early.ask("UTF8_STRING");
    ASSERT_TRUE(waitFor([&] { return early.chunks == 1; }));
    services_->pastes = {1, early.window()};
    bool isRead = false;
    const auto awaitRead = [&]() -> QCoro::Task<> {
        co_await pasteboard().stringWasRead(20s);
        isRead = true;
    };
    const auto task = awaitRead();
    early.resume();
    ASSERT_TRUE(waitFor([&] { return early.isAnswered(); }));
    services_->connection->serverTime();
    finishTurn();
    EXPECT_FALSE(isRead);
    TestRequestor pasting(*peer_);
    pasting.fetch("UTF8_STRING");
    EXPECT_TRUE(waitFor([&] { return isRead; }));
}

TEST_F(PasteboardWriteTest, KnowsWhenThePasteWasServed) {
    const TestRequestor target(*peer_);
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
    services_->pastes = {1, target.window()};
    bool isRead = false;
    const auto awaitRead = [&]() -> QCoro::Task<> {
        co_await pasteboard().stringWasRead(20s);
        isRead = true;
    };
    const auto task = awaitRead();

    // Another process, as a clipboard manager is: it does not count.
    auto manager =
        server_.start(QStringLiteral("xclip"), {QStringLiteral("-o"), QStringLiteral("-selection"),
                                                QStringLiteral("clipboard")});
    ASSERT_TRUE(waitFor([&] { return manager->state() == QProcess::NotRunning; }));
    EXPECT_EQ(manager->readAllStandardOutput(), "text");
    EXPECT_FALSE(isRead);

    TestRequestor reader(*peer_);
    reader.fetch("TARGETS");
    finishTurn();
    EXPECT_FALSE(isRead);
    reader.fetch("UTF8_STRING");
    EXPECT_TRUE(waitFor([&] { return isRead; }));
}

TEST_F(PasteboardWriteTest, WaitsForAPasteNoLongerThanTheLimit) {
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
    services_->pastes = {1, peer_->window()};
    EXPECT_FALSE(QCoro::waitFor(pasteboard().stringWasRead(50ms)));
}

TEST_F(PasteboardWriteTest, TakesForAPasteWhatTheApplicationReadBeforeItsChord) {
    ASSERT_TRUE(pasteboard().setString(QStringLiteral("text")));
    TestRequestor reader(*peer_);
    reader.fetch("UTF8_STRING");
    services_->pastes = {1, reader.window()};
    EXPECT_TRUE(QCoro::waitFor(pasteboard().stringWasRead(50ms)));
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
    ASSERT_TRUE(pasteboard().writeItems(itemOf(QStringLiteral("image/png"), "pixels")));
    QCoro::waitFor(pasteboard().handOver());
    EXPECT_THAT(asked, ElementsAre(manager.atom("image/png")));
    ASSERT_TRUE(saved.has_value());
    EXPECT_EQ(saved->value, "pixels");

    ASSERT_TRUE(pasteboard().setString(QStringLiteral("temporary")));
    asked.clear();
    QCoro::waitFor(pasteboard().handOver());
    EXPECT_TRUE(asked.isEmpty());
}

TEST_F(PasteboardWriteTest, HandsOverToNobodyWithoutAManager) {
    ASSERT_TRUE(pasteboard().writeItems(itemOf(QStringLiteral("image/png"), "pixels")));
    QCoro::waitFor(pasteboard().handOver());
    EXPECT_EQ(ownerOf("CLIPBOARD"), services_->connection->window());
}

} // namespace

} // namespace quillmender

int main(int argc, char **argv) {
    return quillmender::runX11Tests(argc, argv);
}
