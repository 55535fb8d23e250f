#include "desktop/x11/TestRequestor.h"
#include "desktop/x11/X11Test.h"
#include "platform/linux/x11/selection/BridgedPasteboard.h"

#include <QDeadlineTimer>
#include <QLocalServer>
#include <QTemporaryDir>

namespace quillmender::x11 {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

constexpr auto mime = "text/plain;charset=utf-8";

QList<PasteboardItem> itemOf(const QStringList &types) {
    PasteboardItem item;
    for (const QString &type : types)
        item.setData(type, "the user's", "8 " + type.toLatin1());
    return {item};
}

/// The other connection is the compositor, which reads for its clients.
class BridgedPasteboardTest : public X11Test {
  protected:
    std::shared_ptr<PasteText> lend() {
        const auto lent = pasteboard_.lend(QStringLiteral("answer"), nullptr);
        lent_ = lent;
        return std::dynamic_pointer_cast<PasteText>(lent);
    }

    bool wasRead() { return wait(lent_->wasRead(50ms)); }

    BridgedPasteboard pasteboard_{X11Connection::open(server_.display())};
    LentTextRef lent_;
};

TEST_F(BridgedPasteboardTest, ListsTheFormatsOfTheContentsAlone) {
    pasteboard_.replaceContents(itemOf({QStringLiteral("text/html"), QStringLiteral("image/png")}));
    TestRequestor compositor(*peer_);
    EXPECT_THAT(compositor.fetchTargets(), ElementsAre("text/html", "image/png"));
    EXPECT_TRUE(compositor.fetch("TIMESTAMP")) << "who asks all the same is answered";
}

TEST_F(BridgedPasteboardTest, AnswersTheNamesThatACompositorAddsWithoutListingThem) {
    pasteboard_.replaceContents(itemOf({QString::fromLatin1(mime), QStringLiteral("UTF8_STRING"),
                                        QStringLiteral("text/plain"), QStringLiteral("STRING")}));
    TestRequestor compositor(*peer_);
    EXPECT_THAT(compositor.fetchTargets(), ElementsAre(mime, "text/plain"));
    EXPECT_EQ(compositor.fetch("UTF8_STRING")->value, "the user's");
    EXPECT_EQ(compositor.fetch("STRING")->value, "the user's");
}

TEST_F(BridgedPasteboardTest, ListsTheNamesOfAClientOfTheServer) {
    pasteboard_.replaceContents(itemOf({QString::fromLatin1(mime), QStringLiteral("UTF8_STRING"),
                                        QStringLiteral("STRING"), QStringLiteral("TEXT")}));
    TestRequestor compositor(*peer_);
    EXPECT_THAT(compositor.fetchTargets(),
                UnorderedElementsAre(mime, "UTF8_STRING", "STRING", "TEXT"));
    pasteboard_.replaceContents(itemOf({QStringLiteral("UTF8_STRING"), QStringLiteral("STRING")}));
    EXPECT_THAT(compositor.fetchTargets(), UnorderedElementsAre("UTF8_STRING", "STRING"));
}

TEST_F(BridgedPasteboardTest, TheCompositorsOwnReadingIsNoPaste) {
    const auto text = lend();
    text->noteChord();
    TestRequestor compositor(*peer_);
    EXPECT_EQ(compositor.fetch("UTF8_STRING")->value, "answer");
    EXPECT_FALSE(wasRead());
}

TEST_F(BridgedPasteboardTest, WhoAsksOnceTheChordIsOutIsPasting) {
    const auto text = lend();
    TestRequestor compositor(*peer_);
    compositor.fetch("UTF8_STRING");
    text->noteChord();
    TestRequestor pasting(*peer_);
    EXPECT_EQ(pasting.fetch("UTF8_STRING")->value, "answer");
    EXPECT_TRUE(wasRead());
}

TEST_F(BridgedPasteboardTest, WhoAsksBeforeTheChordIsNot) {
    const auto text = lend();
    TestRequestor compositor(*peer_);
    compositor.fetch("UTF8_STRING");
    compositor.fetch("UTF8_STRING");
    text->noteChord();
    EXPECT_FALSE(wasRead());
}

TEST_F(BridgedPasteboardTest, WhatNobodyHasReadIsGivenToNobodyLater) {
    lend()->noteChord();
    EXPECT_FALSE(wasRead());
    TestRequestor late(*peer_);
    EXPECT_FALSE(late.fetch("UTF8_STRING"));
    pasteboard_.replaceContents(itemOf({QStringLiteral("text/html")}));
    EXPECT_EQ(late.fetch("text/html")->value, "the user's");
}

TEST_F(BridgedPasteboardTest, APasteIntoATerminalMayTakeEitherSelection) {
    const auto text = lend();
    ASSERT_FALSE(wait(text->lendToTerminal([] { return false; })));
    EXPECT_TRUE(text->isLentToTerminal());
    text->noteChord();
    TestRequestor pasting(*peer_, "PRIMARY");
    EXPECT_EQ(pasting.fetch("UTF8_STRING")->value, "answer");
    EXPECT_TRUE(wasRead()) << "nobody but who pastes reads it";
}

TEST_F(BridgedPasteboardTest, IsThereWhereTheDisplayIs) {
    qputenv("DISPLAY", server_.display());
    const BridgedClipboard bridged = openBridgedClipboard();
    qunsetenv("DISPLAY");
    EXPECT_NE(bridged.pasteboard, nullptr);
    EXPECT_TRUE(bridged.readPrimary);
    EXPECT_EQ(openBridgedClipboard().pasteboard, nullptr);
}

TEST_F(BridgedPasteboardTest, AServerThatSaysNothingIsWaitedForNoLongerThanTheLimit) {
    const QTemporaryDir folder;
    QLocalServer silent;
    ASSERT_TRUE(silent.listen(folder.filePath(QStringLiteral("silent"))));
    qputenv("DISPLAY", silent.fullServerName().toLocal8Bit());
    const QDeadlineTimer patience(10s);
    EXPECT_EQ(X11Connection::openWithin(100ms), nullptr);
    qunsetenv("DISPLAY");
    EXPECT_FALSE(patience.hasExpired());
}

} // namespace

} // namespace quillmender::x11

int main(int argc, char **argv) {
    return quillmender::x11::runX11Tests(argc, argv);
}
