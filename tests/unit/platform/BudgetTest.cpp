#include "platform/linux/atspi/Budget.h"

#include <gtest/gtest.h>

namespace quillmender {
namespace {

using std::chrono::milliseconds;

TEST(BudgetTest, OneCallHasItsLimit) {
    const auto budget = std::make_shared<Budget>();
    const Budget::Use use(budget);
    EXPECT_EQ(budget->nextCall(), milliseconds(250));
}

TEST(BudgetTest, LargeTextsHaveMoreTime) {
    EXPECT_EQ(Budget::transferAllowance(400), milliseconds(0));
    EXPECT_EQ(Budget::transferAllowance(10'000'000), milliseconds(20000));
    const auto budget = std::make_shared<Budget>();
    const Budget::Use use(budget);
    EXPECT_EQ(budget->nextCall(milliseconds(500)), milliseconds(750));
    EXPECT_EQ(budget->nextCall(), milliseconds(750));
    budget->renew();
    EXPECT_EQ(budget->nextCall(), milliseconds(750));
}

TEST(BudgetTest, SilenceIsRemembered) {
    Budget budget;
    budget.noteSilence(QStringLiteral(":1.1"));
    EXPECT_TRUE(budget.isSilent(QStringLiteral(":1.1")));
    EXPECT_FALSE(budget.isSilent(QStringLiteral(":1.2")));
}

} // namespace
} // namespace quillmender
