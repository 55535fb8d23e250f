#include "desktop/x11/ScriptedOwner.h"
#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/TestWindow.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/windows/WindowProcess.h"

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;

QList<PasteboardItem> itemOf(const QString &type, const QByteArray &data) {
    PasteboardItem item;
    item.setData(type, data, "8 UTF8_STRING");
    return {item};
}

class LentTextTest : public X11Test {};

TEST_F(LentTextTest, IsShownToNobodyButWhoIsPastedInto) {
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
        const auto tree = replyTo(peer_->xcb(), xcb_query_tree_reply,
                                  xcb_query_tree(peer_->xcb(), peer_->root()));
        const xcb_window_t *const children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            if (processOfWindow(*peer_, children[i]) == foreign->processId())
                terminal =
                    std::make_shared<X11RunningApplication>(children[i], foreign->processId());
        }
        return terminal != nullptr;
    };
    ASSERT_TRUE(waitFor(isThere));

    ASSERT_NE(lend(QStringLiteral("answer"), terminal), nullptr);
    EXPECT_EQ(elsewhere("UTF8_STRING"), "");
    EXPECT_EQ(elsewhere("TARGETS"), "TARGETS\nTIMESTAMP\nMULTIPLE\nx-kde-passwordManagerHint\n");
    EXPECT_EQ(elsewhere("x-kde-passwordManagerHint"), "secret");

    // The test is the application itself, and what it started acts for it.
    const TestWindow window(*peer_);
    const auto application =
        std::make_shared<X11RunningApplication>(window.id(), QCoreApplication::applicationPid());
    ASSERT_NE(lend(QStringLiteral("answer"), application), nullptr);
    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING")->value, "answer");
    EXPECT_EQ(elsewhere("UTF8_STRING"), "answer");

    ASSERT_NE(lend(QStringLiteral("answer"), terminal), nullptr);
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "the user's"));
    EXPECT_EQ(elsewhere("UTF8_STRING"), "the user's");
    foreign->kill();
    foreign->waitForFinished(5000);
}

TEST_F(LentTextTest, IsNotDeceivedByATransferThatBeganBeforeThePaste) {
    const auto lent = lend(QString(20'000'000, QLatin1Char('x')));
    TestRequestor early(*peer_);
    early.mostChunks = 1;
    early.ask("UTF8_STRING");
    ASSERT_TRUE(waitFor([&] { return early.chunks == 1; }));
    lent->typeChord(early.window());
    int readings = 0;
    // What is lent outlives the test.
    const QObject here;
    QObject::connect(lent.get(), &X11LentText::changed, &here, [&] { ++readings; });
    bool isRead = false;
    const auto awaitRead = [&]() -> QCoro::Task<> {
        co_await lent->wasRead(20s);
        isRead = true;
    };
    const auto task = awaitRead();
    early.resume();
    ASSERT_TRUE(waitFor([&] { return early.isAnswered(); }));
    services_->connection->serverTime();
    finishTurn();
    EXPECT_FALSE(isRead);
    EXPECT_EQ(readings, 0);
    TestRequestor pasting(*peer_);
    pasting.fetch("UTF8_STRING");
    EXPECT_TRUE(waitFor([&] { return isRead; }));
}

TEST_F(LentTextTest, KnowsWhenThePasteWasServed) {
    const TestRequestor target(*peer_);
    const auto lent = lend(QStringLiteral("text"));
    lent->typeChord(target.window());
    bool isRead = false;
    const auto awaitRead = [&]() -> QCoro::Task<> {
        co_await lent->wasRead(20s);
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

TEST_F(LentTextTest, WhoPastedItFindsTheUsersContentsAsSoonAsTheyAreBack) {
    TestRequestor pasting(*peer_);
    const auto lent = lend(QStringLiteral("answer"));
    lent->typeChord(pasting.window());
    pasting.fetch("UTF8_STRING");
    ASSERT_TRUE(wait(lent->wasRead(20s)));
    pasteboard().replaceContents(itemOf(QStringLiteral("text/html"), "the user's"));
    // Toolkits ask when the owner changes, and keep the answer until it changes again.
    EXPECT_THAT(pasting.fetchTargets(), testing::Contains("text/html"));
    EXPECT_THAT(pasting.fetchTargets(), testing::Not(testing::Contains("UTF8_STRING")));
    EXPECT_FALSE(pasting.fetch("UTF8_STRING"));
}

TEST_F(LentTextTest, WaitsForAPasteNoLongerThanTheLimit) {
    const auto lent = lend(QStringLiteral("text"));
    lent->typeChord(peer_->window());
    EXPECT_FALSE(wait(lent->wasRead(50ms)));
}

TEST_F(LentTextTest, TakesForAPasteWhatTheApplicationReadBeforeItsChord) {
    const auto lent = lend(QStringLiteral("text"));
    TestRequestor reader(*peer_);
    reader.fetch("UTF8_STRING");
    lent->typeChord(reader.window());
    EXPECT_TRUE(wait(lent->wasRead(50ms)));
}

TEST_F(LentTextTest, ReplacementEndsTheWaitForItsReader) {
    const TestRequestor target(*peer_);
    const auto lent = lend(QStringLiteral("text"));
    lent->typeChord(target.window());
    auto isRead = lent->wasRead(1min);
    finishTurn();
    EXPECT_FALSE(isRead.isReady());
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "the user's"));
    EXPECT_TRUE(waitFor([&] { return isRead.isReady(); })) << "long before its limit";
    EXPECT_FALSE(wait(std::move(isRead)));
    // Who reads from now on reads something else.
    TestRequestor reader(*peer_);
    EXPECT_EQ(reader.fetch("UTF8_STRING")->value, "the user's");
    EXPECT_FALSE(wait(lent->wasRead(1min)));
    EXPECT_FALSE(lent->isOffered());
}

TEST_F(LentTextTest, ReplacementKeepsWhatIsKnownOfItsReader) {
    TestRequestor reader(*peer_);
    const auto late = lend(QStringLiteral("text"));
    late->typeChord(reader.window());
    reader.fetch("UTF8_STRING");
    const auto early = lend(QStringLiteral("text"));
    reader.fetch("UTF8_STRING");
    early->typeChord(reader.window());
    pasteboard().replaceContents({});
    EXPECT_TRUE(wait(late->wasRead(1min)));
    EXPECT_TRUE(wait(early->wasRead(1min)));
}

TEST_F(LentTextTest, SecondTakesThePlaceOfTheFirst) {
    TestRequestor reader(*peer_);
    const auto first = lend(QStringLiteral("first"));
    first->typeChord(reader.window());
    auto isFirstRead = first->wasRead(1min);
    const auto second = lend(QStringLiteral("second"));
    second->typeChord(reader.window());
    EXPECT_EQ(reader.fetch("UTF8_STRING")->value, "second");
    EXPECT_TRUE(wait(second->wasRead(1min)));
    EXPECT_FALSE(wait(std::move(isFirstRead)));
    EXPECT_TRUE(second->isOffered());
}

TEST_F(LentTextTest, TransferOfTheFirstIsNoReadingOfTheSecond) {
    const auto first = lend(QString(20'000'000, QLatin1Char('x')));
    TestRequestor reader(*peer_);
    reader.mostChunks = 1;
    reader.ask("UTF8_STRING");
    ASSERT_TRUE(waitFor([&] { return reader.chunks == 1; }));
    const auto second = lend(QStringLiteral("second"));
    reader.resume();
    ASSERT_TRUE(waitFor([&] { return reader.isAnswered(); }));
    services_->connection->serverTime();
    finishTurn();
    second->typeChord(reader.window());
    EXPECT_FALSE(wait(second->wasRead(50ms)));
}

TEST_F(LentTextTest, EndOfTheProgramEndsTheWaitForItsReader) {
    const TestRequestor target(*peer_);
    const auto lent = lend(QStringLiteral("text"));
    lent->typeChord(target.window());
    auto isRead = lent->wasRead(1min);
    finishTurn();
    services_.reset();
    EXPECT_TRUE(waitFor([&] { return isRead.isReady(); })) << "long before its limit";
    EXPECT_FALSE(wait(std::move(isRead)));
    EXPECT_FALSE(wait(lent->wasRead(1min)));
    EXPECT_FALSE(lent->isLentToTerminal());
    EXPECT_TRUE(wait(lent->lendToTerminal([] { return true; })).has_value());
}

TEST_F(LentTextTest, IsWaitedForThoughNobodyElseHasIt) {
    TestRequestor reader(*peer_);
    auto lent = lend(QStringLiteral("text"));
    lent->typeChord(reader.window());
    auto isRead = lent->wasRead(1min);
    lent.reset();
    pasteboard().replaceContents({});
    EXPECT_FALSE(wait(std::move(isRead)));
}

TEST_F(LentTextTest, ReplacementWhilePrimaryIsReadLeavesItToTheUser) {
    ScriptedOwner primary(server_.display(), "PRIMARY");
    const auto lent = lend(QStringLiteral("text"));
    primary.offerSpecially("UTF8_STRING", [&](const auto &request) {
        pasteboard().replaceContents({});
        primary.answer(request, {primary.atom("UTF8_STRING"), 8, "selected"});
    });
    const Obstacle obstacle = wait(lent->lendToTerminal([] { return true; }));
    EXPECT_EQ(obstacle, QStringLiteral("the pasteboard was replaced meanwhile"));
    EXPECT_EQ(ownerOf("PRIMARY"), primary.connection().window());
}

TEST_F(LentTextTest, GivesPrimaryBackAsItWasBeforeTheFirst) {
    ScriptedOwner primary(server_.display(), "PRIMARY");
    primary.offer("UTF8_STRING", {primary.atom("UTF8_STRING"), 8, "selected"});
    for (const char *text : {"first", "second"}) {
        const auto lent = lend(QString::fromLatin1(text));
        EXPECT_EQ(wait(lent->lendToTerminal([] { return true; })), std::nullopt);
        EXPECT_TRUE(lent->isLentToTerminal());
    }
    pasteboard().replaceContents({});
    TestRequestor reader(*peer_, "PRIMARY");
    EXPECT_EQ(reader.fetch("UTF8_STRING")->value, "selected");
}

TEST_F(LentTextTest, IsNotThereWhenTheServerIsGone) {
    xcb_kill_client(peer_->xcb(), services_->connection->window());
    peer_->serverTime();
    ASSERT_TRUE(waitFor([&] { return services_->connection->isLost(); }));
    EXPECT_EQ(lend(QStringLiteral("text")), nullptr);
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
