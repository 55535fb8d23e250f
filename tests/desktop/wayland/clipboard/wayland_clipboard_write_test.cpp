#include "desktop/wayland/clipboard/ClipboardTest.h"
#include "platform/linux/wayland/clipboard/PipeWriter.h"

#include <array>
#include <fcntl.h>

namespace quillmender::wayland {

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ClipboardWriteTest : public ClipboardTest {};

TEST_F(ClipboardWriteTest, ChangesTheClipboardOnceForEachReplacement) {
    const int seen = other_->changes();
    const qint64 before = pasteboard().changeCount();
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    const qint64 lent = pasteboard().changeCount();
    EXPECT_NE(lent, before);
    settle();
    EXPECT_EQ(pasteboard().changeCount(), lent) << "its own change was counted when it was made";
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "the user's"));
    const qint64 replaced = pasteboard().changeCount();
    EXPECT_NE(replaced, lent);
    settle();
    EXPECT_EQ(pasteboard().changeCount(), replaced);
    EXPECT_EQ(other_->changes(), seen + 2) << "nobody saw an emptiness in between";
    pasteboard().replaceContents({});
    const qint64 cleared = pasteboard().changeCount();
    EXPECT_NE(cleared, replaced);
    settle();
    EXPECT_EQ(pasteboard().changeCount(), cleared);
}

TEST_F(ClipboardWriteTest, LeavesTheClipboardEmptyWithoutItems) {
    other_->offer("UTF8_STRING", "x");
    settle();
    pasteboard().replaceContents({});
    settle();
    EXPECT_FALSE(other_->isOwner());
    EXPECT_THAT(other_->types(), IsEmpty());
    EXPECT_THAT(wait(pasteboard().items()), IsEmpty());
    // An item may have come to nothing when it was read.
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    pasteboard().replaceContents({PasteboardItem()});
    settle();
    EXPECT_THAT(other_->types(), IsEmpty());
}

TEST_F(ClipboardWriteTest, RestoresAnEmptyClipboardAsEmpty) {
    const auto items = wait(pasteboard().items());
    ASSERT_NE(lend(QStringLiteral("text")), nullptr);
    settle();
    EXPECT_FALSE(other_->types().isEmpty());
    pasteboard().replaceContents(items);
    settle();
    EXPECT_THAT(other_->types(), IsEmpty());
    EXPECT_EQ(other_->fetch("UTF8_STRING"), std::nullopt);
}

TEST_F(ClipboardWriteTest, HearsOfWhatIsCopiedWhileItClears) {
    pasteboard().replaceContents({});
    const qint64 cleared = pasteboard().changeCount();
    other_->declare("UTF8_STRING", "copied");
    other_->own();
    other_->settleAlone();
    EXPECT_TRUE(waitFor([&] { return pasteboard().changeCount() != cleared; }));
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("copied"));
}

TEST_F(ClipboardWriteTest, OffersTextInItsUsualTypesWithTheHistoryMark) {
    ASSERT_NE(lend(QStringLiteral("é€")), nullptr);
    settle();
    const QList<QByteArray> texts{"text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "STRING",
                                  "TEXT"};
    EXPECT_EQ(other_->types(), texts + QList<QByteArray>{"x-kde-passwordManagerHint"});
    for (const QByteArray &type : texts)
        EXPECT_EQ(other_->fetch(type), "é€") << type.toStdString();
    EXPECT_EQ(other_->fetch("x-kde-passwordManagerHint"), "secret");
    EXPECT_EQ(other_->fetch("image/png"), "");
    EXPECT_EQ(wait(pasteboard().string()), QStringLiteral("é€"));
}

TEST_F(ClipboardWriteTest, KeepsTheHistoryMarkOfTheUserAndAddsNone) {
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "plain"));
    settle();
    EXPECT_THAT(other_->types(), ElementsAre("UTF8_STRING"));
    pasteboard().replaceContents(itemOf(QStringLiteral("x-kde-passwordManagerHint"), "secret"));
    settle();
    EXPECT_EQ(other_->fetch("x-kde-passwordManagerHint"), "secret");
}

TEST_F(ClipboardWriteTest, ReadsItsOwnContentsFromMemory) {
    PasteboardItem item;
    item.setData(QStringLiteral("image/png"), pattern(3'000'000));
    item.setData(QStringLiteral("TARGETS"), "kept as it was given");
    pasteboard().replaceContents({item});
    int asked = 0;
    for (const DataSource *source : control_->findChildren<DataSource *>())
        QObject::connect(source, &DataSource::asked, control_.get(), [&asked] { ++asked; });
    settle();
    EXPECT_TRUE(wait(pasteboard().items()) == QList<PasteboardItem>{item});
    EXPECT_TRUE(wait(pasteboard().itemsWithin(100ms)) == QList<PasteboardItem>{item});
    EXPECT_EQ(wait(pasteboard().string()), std::nullopt);
    EXPECT_EQ(asked, 0);
}

TEST_F(ClipboardWriteTest, PutsBackItsOwnContentsAsTheyAre) {
    const auto item = itemOf(QStringLiteral("UTF8_STRING"), "x");
    pasteboard().replaceContents(item);
    settle();
    const auto items = wait(pasteboard().items());
    const int seen = other_->changes();
    pasteboard().replaceContents(items);
    settle();
    EXPECT_EQ(other_->changes(), seen);
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "x");
}

TEST_F(ClipboardWriteTest, ServesLargeDataToSeveralReadersAfterLosingTheClipboard) {
    const QByteArray large = pattern(20'000'003);
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), large));
    settle();
    Descriptor first = other_->ask("image/png");
    Descriptor second = other_->ask("image/png");
    settle();
    other_->offer("UTF8_STRING", "newer");
    settle();
    EXPECT_TRUE(readToEnd(std::move(first)) == large);
    EXPECT_TRUE(readToEnd(std::move(second)) == large);
}

TEST_F(ClipboardWriteTest, AnswersWhoHasAskedBeforeTheReplacement) {
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "first"));
    settle();
    Descriptor early = other_->ask("UTF8_STRING");
    other_->settleAlone();
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "second"));
    EXPECT_EQ(readToEnd(std::move(early)), "first");
    EXPECT_TRUE(waitFor([&] { return control_->findChildren<DataSource *>().size() == 1; }));
}

TEST_F(ClipboardWriteTest, OutlivesAReaderThatGoesAwayHalfWay) {
    const QByteArray large = pattern(20'000'000);
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), large));
    settle();
    Descriptor dying = other_->ask("image/png");
    settle();
    std::array<char, 1000> some{};
    EXPECT_EQ(::read(dying.get(), some.data(), some.size()), 1000);
    dying.close();
    EXPECT_TRUE(other_->fetch("image/png") == large);
    EXPECT_TRUE(waitFor([&] { return control_->findChildren<PipeWriter *>().isEmpty(); }));
}

TEST_F(ClipboardWriteTest, IsNotHeldUpByReadersThatNeverRead) {
    const QByteArray large = pattern(3'000'000);
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), large));
    settle();
    const Descriptor first = other_->ask("image/png");
    const Descriptor second = other_->ask("image/png");
    settle();
    EXPECT_TRUE(other_->fetch("image/png") == large);
    pasteboard().replaceContents(itemOf(QStringLiteral("UTF8_STRING"), "next"));
    settle();
    EXPECT_EQ(other_->fetch("UTF8_STRING"), "next");
}

TEST_F(ClipboardWriteTest, GivesUpOnAReaderThatStopsTaking) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    Descriptor reading(ends[0]);
    std::optional<bool> isComplete;
    auto *const writer =
        new PipeWriter(Descriptor(ends[1]), pattern(3'000'000), control_.get(), 50ms);
    QObject::connect(writer, &PipeWriter::finished, control_.get(),
                     [&](bool isAll) { isComplete = isAll; });
    ASSERT_TRUE(waitFor([&] { return isComplete.has_value(); }));
    EXPECT_EQ(isComplete, false);
    EXPECT_LT(readToEnd(std::move(reading)).size(), 3'000'000) << "the end comes all the same";
    EXPECT_TRUE(waitFor([&] { return control_->findChildren<PipeWriter *>().isEmpty(); }));
}

TEST_F(ClipboardWriteTest, RefusesMoreReadersThanItCanServe) {
    pasteboard().replaceContents(itemOf(QStringLiteral("image/png"), pattern(3'000'000)));
    settle();
    std::vector<Descriptor> stuck;
    for (int i = 0; i < 256; ++i)
        stuck.push_back(other_->ask("image/png"));
    settle();
    EXPECT_EQ(other_->fetch("image/png"), "");
    stuck.clear();
    EXPECT_TRUE(waitFor([&] { return control_->findChildren<PipeWriter *>().isEmpty(); }));
    EXPECT_EQ(other_->fetch("image/png")->size(), 3'000'000);
}

} // namespace

} // namespace quillmender::wayland

int main(int argc, char **argv) {
    return quillmender::wayland::runClipboardTests(argc, argv);
}
