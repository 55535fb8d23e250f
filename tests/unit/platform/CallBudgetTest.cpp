#include "platform/linux/atspi/CallBudget.h"

#include <gtest/gtest.h>

namespace quillmender::atspi {
namespace {

using std::chrono::milliseconds;

TEST(CallBudgetTest, OneCallHasItsLimit) {
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    EXPECT_EQ(budget->nextCall(), milliseconds(250));
}

TEST(CallBudgetTest, LargeTextsHaveMoreTime) {
    EXPECT_EQ(CallBudget::transferAllowance(400), milliseconds(0));
    EXPECT_EQ(CallBudget::transferAllowance(1'000'000), milliseconds(2000));
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    EXPECT_EQ(budget->nextCall(milliseconds(500)), milliseconds(750));
    EXPECT_EQ(budget->nextCall(), milliseconds(750));
    budget->renew();
    EXPECT_EQ(budget->nextCall(), milliseconds(750));
}

TEST(CallBudgetTest, NobodyWaitsLongerThanSomeSeconds) {
    EXPECT_EQ(CallBudget::transferAllowance(2'147'483'647), milliseconds(4000));
    EXPECT_EQ(CallBudget::transferAllowance(-1), milliseconds(0));
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    for (int call = 0; call < 100; ++call)
        EXPECT_LE(budget->nextCall(CallBudget::transferAllowance(2'147'483'647)),
                  milliseconds(5600));
}

TEST(CallBudgetTest, AnOrderIsAwaitedLonger) {
    const auto budget = std::make_shared<CallBudget>();
    const CallBudget::Use use(budget);
    budget->noteSilence(QStringLiteral(":1.1"));
    budget->beginWait(CallBudget::orderPatience);
    EXPECT_EQ(budget->nextCall(), CallBudget::orderPatience);
    EXPECT_FALSE(budget->isSilent(QStringLiteral(":1.1")));
    budget->renew();
    EXPECT_EQ(budget->nextCall(), milliseconds(250));
}

TEST(CallBudgetTest, SilenceIsRemembered) {
    CallBudget budget;
    budget.noteSilence(QStringLiteral(":1.1"));
    EXPECT_TRUE(budget.isSilent(QStringLiteral(":1.1")));
    EXPECT_FALSE(budget.isSilent(QStringLiteral(":1.2")));
}

} // namespace
} // namespace quillmender::atspi
