#include "desktop/atspi/AtspiTest.h"

namespace quillmender::atspi {
namespace {

using harness::TestApplication;

class LargeTextTest : public AtspiTest {};

QString manyWords(qsizetype size) {
    const QString line = QStringLiteral("The quick brown fox jumps over the l\u00e4zy dog.\n");
    return line.repeated(size / line.size());
}

TEST_F(LargeTextTest, TenMillionCharactersAreReadAndWritten) {
    start();
    const QString words = manyWords(10'000'000);
    const TestApplication application = TestApplication::mousepad(desktop(), words);
    const FocusReading before = waitForValue(words);
    const QString other = words.toUpper();
    EXPECT_EQ(replace(before.element, {0, words.size()}, other).outcome,
              Replacement::Outcome::done);
    const FocusReading after = read();
    EXPECT_TRUE(after.selectedText == other);
    EXPECT_EQ(after.selectedRange, (TextRange{0, other.size()}));
}

} // namespace
} // namespace quillmender::atspi
