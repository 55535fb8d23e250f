#include "SelectionFixture.h"
#include "fakes/FakeChords.h"
#include "fakes/FakePasteboard.h"
#include "platform/none/NoneChords.h"
#include "platform/none/NonePasteboard.h"

namespace quillmender {
namespace {

class PasteboardManagerTest : public testing::Test {
  protected:
    static QList<PasteboardItem> twoItems() {
        PasteboardItem text;
        text.setData(QStringLiteral("text/plain"), "one", "tag");
        PasteboardItem image;
        image.setData(QStringLiteral("image/png"), "pixels");
        return {text, image};
    }

    PasteboardManagerTest() { pasteboard.contents = twoItems(); }

    fakes::CallLog log = fakes::makeCallLog();
    fakes::FakePasteboard pasteboard{log};
    fakes::FakeChords chords{log};
    PasteboardManager manager{pasteboard, chords};
};

TEST_F(PasteboardManagerTest, ReadsTheChangeCountAfterTheItems) {
    const PasteboardSnapshot snapshot = fakes::await(manager.snapshot());
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.items"),
                                 QStringLiteral("pasteboard.changeCount")}));
    EXPECT_EQ(snapshot.items, twoItems());
    EXPECT_EQ(snapshot.changeCount, 7);
}

TEST_F(PasteboardManagerTest, TakesAQuickSnapshotWhenTheOwnerIsQuick) {
    const auto snapshot = fakes::await(manager.snapshotWithin(std::chrono::seconds(1)));
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.itemsWithin 1000"),
                                 QStringLiteral("pasteboard.changeCount")}));
    EXPECT_TRUE(snapshot.isComplete);
    EXPECT_EQ(snapshot.items, twoItems());
    EXPECT_EQ(snapshot.changeCount, 7);
}

TEST_F(PasteboardManagerTest, HasNoHalfSnapshotOfASlowOwner) {
    pasteboard.isOwnerSlow = true;
    const auto snapshot = fakes::await(manager.snapshotWithin(std::chrono::seconds(1)));
    EXPECT_FALSE(snapshot.isComplete);
    EXPECT_TRUE(snapshot.items.isEmpty());
}

TEST_F(PasteboardManagerTest, RestoresItemsInTheirOrderAtOnce) {
    const PasteboardSnapshot snapshot = fakes::await(manager.snapshot());
    pasteboard.copyFromElsewhere(QStringLiteral("other"));
    log->clear();
    manager.restore(snapshot);
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.replaceContents 2")}));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(PasteboardManagerTest, AnEmptySnapshotEmptiesThePasteboard) {
    pasteboard.contents.clear();
    const PasteboardSnapshot snapshot = fakes::await(manager.snapshot());
    EXPECT_TRUE(snapshot.items.isEmpty());
    pasteboard.copyFromElsewhere(QStringLiteral("other"));
    log->clear();
    manager.restore(snapshot);
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.replaceContents 0")}));
    EXPECT_EQ(pasteboard.text, std::nullopt);
}

TEST_F(PasteboardManagerTest, TypesTheChordThatItIsGiven) {
    ChordTarget target;
    target.text = pasteboard.lend(QStringLiteral("text"), nullptr);
    log->clear();
    chords.result = {ChordResult::Outcome::withheld, QStringLiteral("why")};
    const ChordResult result = fakes::await(manager.postCommandKeystroke(Chord::paste, target));
    EXPECT_EQ(*log, QStringList({QStringLiteral("type paste")}));
    EXPECT_EQ(chords.targets.constLast().text, target.text);
    EXPECT_EQ(result.outcome, ChordResult::Outcome::withheld);
    EXPECT_EQ(result.reason, QStringLiteral("why"));
}

TEST(PasteboardItemTest, ALaterDuplicateOverwritesInPlace) {
    PasteboardItem item;
    item.setData(QStringLiteral("a"), "1");
    item.setData(QStringLiteral("b"), "2");
    item.setData(QStringLiteral("a"), "3", "tag");
    ASSERT_EQ(item.representations().size(), 2);
    EXPECT_EQ(item.representations().at(0).data, "3");
    EXPECT_EQ(item.find(QStringLiteral("a"))->platformTag, "tag");
    EXPECT_EQ(item.find(QStringLiteral("c")), nullptr);
}

TEST(NonePasteboardTest, KeepsTheContract) {
    NonePasteboard pasteboard;
    const qint64 before = pasteboard.changeCount();
    const LentTextRef lent = pasteboard.lend(QStringLiteral("text"), nullptr);
    ASSERT_NE(lent, nullptr);
    const qint64 afterLoan = pasteboard.changeCount();
    EXPECT_NE(afterLoan, before);
    EXPECT_EQ(fakes::await(pasteboard.string()), QStringLiteral("text"));
    const QList<PasteboardItem> items = fakes::await(pasteboard.items());
    EXPECT_EQ(items.size(), 1);
    EXPECT_EQ(fakes::await(pasteboard.items()), items);
    EXPECT_TRUE(fakes::await(lent->wasRead(std::chrono::hours(1))));

    pasteboard.replaceContents({});
    EXPECT_NE(pasteboard.changeCount(), afterLoan);
    EXPECT_TRUE(fakes::await(pasteboard.items()).isEmpty());
    EXPECT_EQ(fakes::await(pasteboard.string()), std::nullopt);
    EXPECT_TRUE(fakes::await(lent->wasRead(std::chrono::hours(1))));
    pasteboard.replaceContents(items);
    EXPECT_EQ(fakes::await(pasteboard.items()), items);
    EXPECT_EQ(fakes::await(pasteboard.string()), QStringLiteral("text"));
}

TEST(NoneChordsTest, AreUnavailable) {
    NoneChords chords;
    for (const Chord chord : {Chord::copy, Chord::paste}) {
        const ChordResult result = fakes::await(chords.type(chord, {}));
        EXPECT_EQ(result.outcome, ChordResult::Outcome::unavailable);
        EXPECT_FALSE(result.reason.isEmpty());
    }
}

} // namespace
} // namespace quillmender
