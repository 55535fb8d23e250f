#include "FrameworksTest.h"
#include "platform/macos/ObjcRef.h"
#include "platform/macos/ObjcText.h"

#import <Foundation/Foundation.h>

namespace quillmender {

namespace {

class OwnershipTest : public FrameworksTest {
  protected:
    /// What is uneven so far; forgotten then.
    static std::string uneven() {
        const std::string text = doubles::LiveObjects::shared().uneven();
        doubles::LiveObjects::shared().clear();
        return text;
    }
};

NSObject *made() {
    return [[NSObject alloc] init];
}

} // namespace

TEST_F(OwnershipTest, AdoptedReferenceIsGivenBackOnce) {
    {
        const auto object = ObjcRef<NSObject>::adopted(made());
        EXPECT_EQ([object.get() retainCount], 1U);
    }
    EXPECT_EQ(uneven(), "");
}

TEST_F(OwnershipTest, CopiesAndMovesCountEachHolder) {
    auto first = ObjcRef<NSObject>::adopted(made());
    auto second = first;
    EXPECT_EQ([first.get() retainCount], 2U);
    const auto third = std::move(second);
    EXPECT_FALSE(second); // NOLINT(bugprone-use-after-move): what a move leaves is the question
    EXPECT_EQ([first.get() retainCount], 2U);
    first = ObjcRef<NSObject>::retained(third.get());
    EXPECT_EQ([first.get() retainCount], 2U);
    first = {};
    EXPECT_EQ([third.get() retainCount], 1U);
}

TEST_F(OwnershipTest, DoublesNoticeALeak) {
    made();
    EXPECT_EQ(uneven(), "NSObject 1");
}

TEST_F(OwnershipTest, DoublesNoticeAnOverRelease) {
    NSObject *object = made();
    [object release];
    [object release];
    EXPECT_EQ(uneven(), "message release to deallocated NSObject -1");
}

TEST_F(OwnershipTest, DoublesNoticeAnObjectLostWithItsPool) {
    NSString *text = nil;
    @autoreleasepool {
        text = [NSString string];
    }
    EXPECT_EQ([text length], 0U);
    EXPECT_EQ(uneven(), "message length to deallocated NSString -1");
}

TEST_F(OwnershipTest, DoublesNoticeAMissingPool) {
    NSString *text = [NSString string];
    EXPECT_EQ([text length], 0U);
    EXPECT_EQ(uneven(), "NSString 1 autoreleased without a pool: NSString 1");
}

TEST_F(OwnershipTest, TextsKeepEveryUnit) {
    @autoreleasepool {
        for (const QString &text :
             {QString(), QStringLiteral("plain"), QStringLiteral("a\U0001F600\u00e9\0z"),
              QString(QChar(0xd83d))}) {
            const ObjcRef<NSString> native = toNSString(text);
            EXPECT_EQ([native.get() length], NSUInteger(text.size()));
            EXPECT_EQ(toQString(native.get()), text);
        }
        EXPECT_EQ(toQString(nil), QString());
        EXPECT_EQ(toQString(@"literal"), QStringLiteral("literal"));
    }
}

} // namespace quillmender
