#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/X11Test.h"

#include <QTimer>

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;
using testing::SizeIs;

/// Applications that ask for the clipboard in odd ways.
class RequestorTest : public X11Test {
  protected:
    void offer(const QByteArray &data) {
        PasteboardItem item;
        item.setData(QStringLiteral("image/png"), data, "8 UTF8_STRING");
        pasteboard().replaceContents({item});
    }

    /// A question of its own property, not awaited.
    void ask(const TestRequestor &requestor, const char *target) {
        xcb_convert_selection(peer_->xcb(), requestor.window(), peer_->atom("CLIPBOARD"),
                              peer_->atom(target), peer_->atom(QByteArray("TEST_") + target),
                              XCB_CURRENT_TIME);
    }
};

TEST_F(RequestorTest, SeveralTargetsAskedForAtOnceAreOnePaste) {
    const TestRequestor reader(*peer_);
    for (int round = 0; round < 5; ++round) {
        const auto lent = lend(QStringLiteral("text"));
        lent->typeChord(reader.window());
        auto isRead = lent->wasRead(20s);
        for (const char *target : {"UTF8_STRING", "TEXT", "STRING", "text/plain;charset=utf-8"})
            ask(reader, target);
        peer_->serverTime();
        EXPECT_TRUE(wait(std::move(isRead)));
    }
}

TEST_F(RequestorTest, ReadingWithoutEndIsBoundedByOneDeadline) {
    const TestRequestor reader(*peer_);
    const auto lent = lend(QStringLiteral("text"));
    lent->typeChord(reader.window());
    QTimer again;
    QObject::connect(&again, &QTimer::timeout, [&] {
        ask(reader, "UTF8_STRING");
        xcb_flush(peer_->xcb());
    });
    // It begins late and never comes to an end.
    QTimer::singleShot(800, &again, [&again] { again.start(20); });
    bool isLate = false;
    QTimer::singleShot(1400, &again, [&isLate] { isLate = true; });
    EXPECT_TRUE(wait(lent->wasRead(1000ms)));
    EXPECT_FALSE(isLate);
}

TEST_F(RequestorTest, AskingAgainHalfWayStartsAnew) {
    QByteArray large(40'000'000, 'x');
    for (qsizetype i = 0; i < large.size(); i += 997)
        large[i] = static_cast<char>(i);
    offer(large);
    TestRequestor requestor(*peer_);
    requestor.mostChunks = 2;
    requestor.ask("image/png");
    ASSERT_TRUE(waitFor([&] { return requestor.chunks == 2; }));
    // What lay there unread goes with the first attempt.
    takeProperty(*peer_, requestor.window(), peer_->atom("TEST_DATA"));
    requestor.mostChunks = -1;
    const auto answer = requestor.fetch("image/png");
    ASSERT_TRUE(answer.has_value());
    EXPECT_TRUE(answer->value == large);
}

TEST_F(RequestorTest, DyingInTheMiddleOfAPasteIsNoPaste) {
    const auto lent = lend(QString(20'000'000, QLatin1Char('x')));
    auto reader = std::make_unique<TestRequestor>(*peer_);
    lent->typeChord(reader->window());
    auto isRead = lent->wasRead(1s);
    reader->mostChunks = 2;
    reader->ask("UTF8_STRING");
    ASSERT_TRUE(waitFor([&] { return reader->chunks == 2; }));
    reader.reset();
    EXPECT_FALSE(wait(std::move(isRead)));
    TestRequestor other(*peer_);
    EXPECT_EQ(other.fetch("UTF8_STRING")->value.size(), 20'000'000);
    EXPECT_TRUE(services_->connection->watchCounts().isEmpty());
}

TEST_F(RequestorTest, SameTargetAskedForManyTimesAtOnceIsAnsweredOnce) {
    offer("picture");
    TestRequestor requestor(*peer_);
    const QByteArray target("image/png");
    requestor.askMultiple(QList<QByteArray>(1000, target));
    ASSERT_TRUE(waitFor([&] { return requestor.isAnswered(); }));
    const QList<quint32> pairs = requestor.answer()->cardinals();
    ASSERT_THAT(pairs, SizeIs(2000));
    EXPECT_EQ(pairs[1], peer_->atom("TEST_" + target));
    qsizetype refused = 0;
    for (qsizetype i = 3; i < pairs.size(); i += 2)
        refused += pairs[i] == XCB_ATOM_NONE ? 1 : 0;
    EXPECT_EQ(refused, 999);
}

TEST_F(RequestorTest, TransfersThatNobodyTakesAreNotStartedWithoutEnd) {
    offer(QByteArray(20'000'000, 'x'));
    const TestRequestor requestor(*peer_);
    for (int i = 0; i < 400; ++i)
        xcb_convert_selection(peer_->xcb(), requestor.window(), peer_->atom("CLIPBOARD"),
                              peer_->atom("image/png"), peer_->atom("P" + QByteArray::number(i)),
                              XCB_CURRENT_TIME);
    peer_->serverTime();
    int answers = 0;
    QObject::connect(
        peer_.get(), &X11Connection::eventReceived, peer_.get(),
        [&](const auto *event) { answers += eventType(event) == XCB_SELECTION_NOTIFY ? 1 : 0; });
    ASSERT_TRUE(waitFor([&] { return answers == 400; }));
    int announced = 0;
    for (int i = 0; i < 400; ++i)
        announced +=
            readProperty(*peer_, requestor.window(), peer_->atom("P" + QByteArray::number(i))) ? 1
                                                                                               : 0;
    EXPECT_EQ(announced, 256);
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
