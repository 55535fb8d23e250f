#include "SelectionFixture.h"
#include "platform/none/NonePasteboard.h"
#include "selection/PermissionManager.h"

namespace quillmender {
namespace {

class PasteboardManagerTest : public SelectionFixture {};

TEST_F(PasteboardManagerTest, readsTheChangeCountAfterTheItems) {
    const PasteboardSnapshot snapshot = fakes::await(manager.snapshot());
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.items"),
                                 QStringLiteral("pasteboard.changeCount")}));
    EXPECT_EQ(snapshot.items, twoItems());
    EXPECT_EQ(snapshot.changeCount, 7);
}

TEST_F(PasteboardManagerTest, takesAQuickSnapshotWhenTheOwnerIsQuick) {
    const auto snapshot = fakes::await(manager.snapshotWithin(std::chrono::seconds(1)));
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.itemsWithin 1000"),
                                 QStringLiteral("pasteboard.changeCount")}));
    EXPECT_TRUE(snapshot.isComplete);
    EXPECT_EQ(snapshot.items, twoItems());
    EXPECT_EQ(snapshot.changeCount, 7);
}

TEST_F(PasteboardManagerTest, hasNoHalfSnapshotOfASlowOwner) {
    pasteboard.isOwnerSlow = true;
    const auto snapshot = fakes::await(manager.snapshotWithin(std::chrono::seconds(1)));
    EXPECT_FALSE(snapshot.isComplete);
    EXPECT_TRUE(snapshot.items.isEmpty());
}

TEST_F(PasteboardManagerTest, restoresItemsInTheirOrderInOneWrite) {
    const PasteboardSnapshot snapshot = fakes::await(manager.snapshot());
    pasteboard.copyFromElsewhere(QStringLiteral("other"));
    log->clear();
    manager.restore(snapshot);
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.clear"),
                                 QStringLiteral("pasteboard.writeItems 2")}));
    EXPECT_EQ(pasteboard.contents, twoItems());
}

TEST_F(PasteboardManagerTest, anEmptySnapshotClearsAndWritesNothing) {
    pasteboard.contents.clear();
    const PasteboardSnapshot snapshot = fakes::await(manager.snapshot());
    EXPECT_TRUE(snapshot.items.isEmpty());
    pasteboard.copyFromElsewhere(QStringLiteral("other"));
    log->clear();
    manager.restore(snapshot);
    EXPECT_EQ(*log, QStringList({QStringLiteral("pasteboard.clear")}));
    EXPECT_EQ(pasteboard.text, std::nullopt);
}

TEST_F(PasteboardManagerTest, ignoresARefusedWrite) {
    pasteboard.acceptsWrites = false;
    manager.restore({7, twoItems()});
    EXPECT_EQ(log->last(), QStringLiteral("pasteboard.writeItems 2"));
}

TEST(PasteboardItemTest, aLaterDuplicateOverwritesInPlace) {
    PasteboardItem item;
    item.setData(QStringLiteral("a"), "1");
    item.setData(QStringLiteral("b"), "2");
    item.setData(QStringLiteral("a"), "3", "tag");
    ASSERT_EQ(item.representations().size(), 2);
    EXPECT_EQ(item.representations().at(0).data, "3");
    EXPECT_EQ(item.find(QStringLiteral("a"))->platformTag, "tag");
    EXPECT_EQ(item.find(QStringLiteral("c")), nullptr);
}

TEST(NonePasteboardTest, keepsTheContract) {
    NonePasteboard pasteboard;
    const qint64 count = pasteboard.changeCount();
    pasteboard.setString(QStringLiteral("text"));
    EXPECT_NE(pasteboard.changeCount(), count);
    EXPECT_EQ(fakes::await(pasteboard.string()), QStringLiteral("text"));
    EXPECT_EQ(fakes::await(pasteboard.items()).size(), 1);
    EXPECT_EQ(fakes::await(pasteboard.items()).size(), 1);
    pasteboard.clearContents();
    EXPECT_TRUE(fakes::await(pasteboard.items()).isEmpty());
    EXPECT_EQ(fakes::await(pasteboard.string()), std::nullopt);
}

TEST(PermissionManagerTest, asksOnlyWhenItIsTold) {
    const fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeAccessibility accessibility(log);
    fakes::FakeWorkspace workspace(log);
    PermissionManager manager(accessibility, workspace);
    EXPECT_FALSE(manager.accessibilityGranted());
    EXPECT_TRUE(log->isEmpty());

    accessibility.trusted = false;
    accessibility.grantsOnPrompt = true;
    manager.requestAccessibilityPermission();
    EXPECT_TRUE(manager.accessibilityGranted());
    EXPECT_EQ(*log, QStringList({QStringLiteral("isProcessTrustedWithPrompt"),
                                 QStringLiteral("isProcessTrusted")}));

    accessibility.trusted = false;
    EXPECT_TRUE(manager.accessibilityGranted());
    manager.refresh();
    EXPECT_FALSE(manager.accessibilityGranted());
}

TEST(PermissionManagerTest, opensThePrivacySettings) {
    const fakes::CallLog log = fakes::makeCallLog();
    fakes::FakeAccessibility accessibility(log);
    fakes::FakeWorkspace workspace(log);
    PermissionManager(accessibility, workspace).openAccessibilitySettings();
    EXPECT_EQ(*log, QStringList(QStringLiteral("openSettingsPage accessibility")));
}

} // namespace
} // namespace quillmender
