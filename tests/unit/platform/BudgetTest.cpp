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
    EXPECT_EQ(Budget::transferAllowance(1'000'000), milliseconds(2000));
    const auto budget = std::make_shared<Budget>();
    const Budget::Use use(budget);
    EXPECT_EQ(budget->nextCall(milliseconds(500)), milliseconds(750));
    EXPECT_EQ(budget->nextCall(), milliseconds(750));
    budget->renew();
    EXPECT_EQ(budget->nextCall(), milliseconds(750));
}

TEST(BudgetTest, NobodyWaitsLongerThanSomeSeconds) {
    EXPECT_EQ(Budget::transferAllowance(2'147'483'647), milliseconds(4000));
    EXPECT_EQ(Budget::transferAllowance(-1), milliseconds(0));
    const auto budget = std::make_shared<Budget>();
    const Budget::Use use(budget);
    for (int call = 0; call < 100; ++call)
        EXPECT_LE(budget->nextCall(Budget::transferAllowance(2'147'483'647)), milliseconds(5600));
}

TEST(BudgetTest, AnOrderIsAwaitedLonger) {
    const auto budget = std::make_shared<Budget>();
    const Budget::Use use(budget);
    budget->noteSilence(QStringLiteral(":1.1"));
    budget->beginWait(Budget::orderPatience);
    EXPECT_EQ(budget->nextCall(), Budget::orderPatience);
    EXPECT_FALSE(budget->isSilent(QStringLiteral(":1.1")));
    budget->renew();
    EXPECT_EQ(budget->nextCall(), milliseconds(250));
}

TEST(BudgetTest, SilenceIsRemembered) {
    Budget budget;
    budget.noteSilence(QStringLiteral(":1.1"));
    EXPECT_TRUE(budget.isSilent(QStringLiteral(":1.1")));
    EXPECT_FALSE(budget.isSilent(QStringLiteral(":1.2")));
}

} // namespace
} // namespace quillmender
