#include "FrameworksTest.h"
#include "doubles/appkit/GeneralPasteboard.h"
#include "fakes/Await.h"
#include "platform/macos/MacPasteboard.h"
#include "platform/none/NoneChords.h"
#include "selection/PasteboardManager.h"

namespace quillmender {

namespace {

using doubles::GeneralPasteboard;
using fakes::await;
using testing::ElementsAre;

const QString plainText = QStringLiteral("public.utf8-plain-text");

class PasteboardTest : public FrameworksTest {
  protected:
    PasteboardTest() { calls(); }

    PasteboardSnapshot snapshot() { return await(manager.snapshot()); }

    GeneralPasteboard &system = GeneralPasteboard::shared();
    MacPasteboard pasteboard;
    NoneChords chords;
    PasteboardManager manager{pasteboard, chords};
};

} // namespace

TEST_F(PasteboardTest, SnapshotReadsEveryTypeOfEveryItemAndTheCountLast) {
    system.items = {{{"public.utf8-plain-text", "one"}, {"public.rtf", std::string("\0r\xff", 3)}},
                    {{"public.png", "png"}}};
    const PasteboardSnapshot taken = snapshot();
    EXPECT_THAT(calls(),
                ElementsAre("NSPasteboard pasteboardItems",
                            "NSPasteboardItem dataForType public.utf8-plain-text",
                            "NSPasteboardItem dataForType public.rtf",
                            "NSPasteboardItem dataForType public.png", "NSPasteboard changeCount"));
    EXPECT_EQ(taken.changeCount, 7);
    ASSERT_EQ(taken.items.size(), 2);
    ASSERT_EQ(taken.items[0].representations().size(), 2);
    EXPECT_EQ(taken.items[0].representations()[0].type, plainText);
    EXPECT_EQ(taken.items[0].representations()[0].data, QByteArray("one"));
    EXPECT_EQ(taken.items[0].representations()[1].data, QByteArray("\0r\xff", 3));
    EXPECT_EQ(taken.items[1].representations()[0].type, QStringLiteral("public.png"));
}

TEST_F(PasteboardTest, UnreadableTypeIsSkippedAndItsItemStays) {
    system.items = {{{"public.png", std::nullopt}, {"public.tiff", "tiff"}},
                    {{"public.html", std::nullopt}}};
    const PasteboardSnapshot taken = snapshot();
    ASSERT_EQ(taken.items.size(), 2);
    ASSERT_EQ(taken.items[0].representations().size(), 1);
    EXPECT_EQ(taken.items[0].representations()[0].type, QStringLiteral("public.tiff"));
    EXPECT_TRUE(taken.items[1].representations().isEmpty());
}

TEST_F(PasteboardTest, NoListOfItemsIsAnEmptySnapshot) {
    system.hasNoItemList = true;
    EXPECT_TRUE(snapshot().items.isEmpty());
}

TEST_F(PasteboardTest, RestorePutsTheSameItemsBackInOneWrite) {
    const std::vector<GeneralPasteboard::Item> original = {
        {{"public.utf8-plain-text", "one"}, {"public.rtf", std::string("\0r", 2)}},
        {{"public.png", ""}},
        {}};
    system.items = original;
    const PasteboardSnapshot taken = snapshot();
    system.copyFromElsewhere({{{"public.utf8-plain-text", "of another program"}}});
    calls();
    manager.restore(taken);
    EXPECT_THAT(calls(), ElementsAre("NSPasteboard clearContents", "NSPasteboard writeObjects 3"));
    EXPECT_EQ(system.items, original);
    EXPECT_GT(system.changeCount, taken.changeCount);
}

TEST_F(PasteboardTest, RestoringNothingOnlyClears) {
    const PasteboardSnapshot taken = snapshot();
    system.copyFromElsewhere({{{"public.utf8-plain-text", "copied"}}});
    calls();
    manager.restore(taken);
    EXPECT_THAT(calls(), ElementsAre("NSPasteboard clearContents"));
    EXPECT_TRUE(system.items.empty());
}

TEST_F(PasteboardTest, TypeThatIsRefusedIsLostAlone) {
    system.items = {{{"strange", "1"}, {"public.rtf", "rtf"}}};
    const PasteboardSnapshot taken = snapshot();
    system.refusedType = "strange";
    manager.restore(taken);
    EXPECT_EQ(system.items, std::vector<GeneralPasteboard::Item>({{{"public.rtf", "rtf"}}}));
}

TEST_F(PasteboardTest, WriteThatIsRefusedIsTriedOnce) {
    system.refusesWrites = true;
    PasteboardItem item;
    item.setData(plainText, "text");
    pasteboard.replaceContents({item});
    EXPECT_THAT(calls(), ElementsAre("NSPasteboard clearContents", "NSPasteboard writeObjects 1"));
    EXPECT_NE(pasteboard.lend(QStringLiteral("text"), nullptr), nullptr);
    EXPECT_THAT(calls(), ElementsAre("NSPasteboard clearContents",
                                     "NSPasteboard setString text public.utf8-plain-text"));
}

TEST_F(PasteboardTest, TextIsLentAsPlainTextAndNothingElse) {
    EXPECT_NE(pasteboard.lend(QStringLiteral("r\u00e9ponse"), nullptr), nullptr);
    EXPECT_THAT(calls(), ElementsAre("NSPasteboard clearContents",
                                     "NSPasteboard setString r\u00e9ponse public.utf8-plain-text"));
    EXPECT_EQ(system.text(), "r\u00e9ponse");
}

TEST_F(PasteboardTest, StringIsThePlainTextIfThereIsAny) {
    EXPECT_EQ(await(pasteboard.string()), std::nullopt);
    system.items = {{{"public.rtf", "rtf"}}};
    EXPECT_EQ(await(pasteboard.string()), std::nullopt);
    system.items = {{{"public.rtf", "rtf"}, {"public.utf8-plain-text", "\U0001F600"}}};
    calls();
    EXPECT_EQ(await(pasteboard.string()), QStringLiteral("\U0001F600"));
    EXPECT_THAT(calls(), ElementsAre("NSPasteboard stringForType public.utf8-plain-text"));
}

TEST_F(PasteboardTest, NothingIsWaitedFor) {
    const LentTextRef lent = pasteboard.lend(QStringLiteral("text"), nullptr);
    calls();
    EXPECT_TRUE(await(lent->wasRead(std::chrono::hours(1))));
    pasteboard.replaceContents({});
    calls();
    EXPECT_TRUE(await(lent->wasRead(std::chrono::hours(1))));
    await(pasteboard.handOver());
    EXPECT_THAT(calls(), ElementsAre());
}

TEST_F(PasteboardTest, ChangeCountIsTheSystems) {
    system.changeCount = (1LL << 40) + 1;
    EXPECT_EQ(pasteboard.changeCount(), (1LL << 40) + 1);
}

} // namespace quillmender
