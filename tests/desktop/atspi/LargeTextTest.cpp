#include "desktop/atspi/AtspiTest.h"

namespace quillmender {
namespace {

using harness::TestApplication;
using harness::waitUntil;

class LargeTextTest : public AtspiTest {};

QString manyWords(qsizetype size) {
    const QString line = QStringLiteral("The quick brown fox jumps over the l\u00e4zy dog.\n");
    return line.repeated(size / line.size());
}

TEST_F(LargeTextTest, TenMillionCharactersAreReadAndWritten) {
    start();
    const QString words = manyWords(10'000'000);
    const TestApplication application = TestApplication::mousepad(desktop(), words);
    const auto element = waitForFocusedElement();
    waitUntil([&] { return text(element, attribute::value).value_or(QString()) == words; },
              QStringLiteral("the text is loaded"));
    const QString other = words.toUpper();
    EXPECT_EQ(set(element, attribute::value, other), AccessibilityError::success);
    EXPECT_EQ(set(element, attribute::selectedTextRange, TextRange{0, other.size()}),
              AccessibilityError::success);
    EXPECT_TRUE(text(element, attribute::selectedText) == other);
    EXPECT_EQ(range(element), (TextRange{0, other.size()}));
}

} // namespace
} // namespace quillmender
