#include "DoublesTest.h"
#include "doubles/cf/Data.h"
#include "doubles/cf/Number.h"
#include "doubles/cf/String.h"
#include "platform/macos/CFConversions.h"

namespace quillmender {
namespace {

class CoreFoundationTest : public DoublesTest {};

TEST_F(CoreFoundationTest, TextsKeepTheirUnits) {
    for (const QString &text : {QString(), QStringLiteral("word"),
                                QStringLiteral("\u00E9\U0001F642\n"), QString(QChar(0xD83D))}) {
        const CFRef<CFStringRef> string = toCFString(text);
        EXPECT_EQ(CFStringGetLength(string.get()), text.size());
        EXPECT_EQ(stringFrom(string.get()), text);
    }
}

TEST_F(CoreFoundationTest, BytesStayAsTheyAre) {
    for (const QByteArray &bytes : {QByteArray(), QByteArray("a\0b\xFF", 4)}) {
        const CFRef<CFDataRef> data = toCFData(bytes);
        EXPECT_EQ(bytesFrom(data.get()), bytes);
    }
}

TEST_F(CoreFoundationTest, AnotherTypeIsNothing) {
    const auto string = CFRef<CFStringRef>::adopted(doubles::makeString(u"text"));
    const auto data = CFRef<CFDataRef>::adopted(doubles::makeData("bytes"));
    EXPECT_EQ(stringFrom(data.get()), std::nullopt);
    EXPECT_EQ(stringFrom(kCFBooleanTrue), std::nullopt);
    EXPECT_EQ(stringFrom(nullptr), std::nullopt);
    EXPECT_EQ(bytesFrom(string.get()), std::nullopt);
    EXPECT_EQ(bytesFrom(nullptr), std::nullopt);
}

TEST_F(CoreFoundationTest, AReferenceIsGivenBackOnce) {
    auto first = CFRef<CFStringRef>::adopted(doubles::makeString(u"first"));
    auto second = CFRef<CFStringRef>::retained(first.get());
    const CFRef<CFStringRef> third = std::move(first);
    EXPECT_FALSE(first); // NOLINT(bugprone-use-after-move): a moved-from reference is null
    second = CFRef<CFStringRef>::adopted(doubles::makeString(u"second"));
    EXPECT_EQ(stringFrom(third.get()), QStringLiteral("first"));
    EXPECT_EQ(stringFrom(second.get()), QStringLiteral("second"));
    EXPECT_FALSE(CFRef<CFStringRef>::retained(nullptr));
    EXPECT_FALSE(CFRef<CFStringRef>());
}

} // namespace
} // namespace quillmender
