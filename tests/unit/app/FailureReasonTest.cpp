#include "app/FailureReason.h"

#include "model/AppFailure.h"
#include "platform/Clock.h"
#include "selection/UncertainReplacement.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quillmender {

namespace {

class ForeignError : public UserVisibleError {
  public:
    explicit ForeignError(const QString &message) : UserVisibleError(message) {}
};

template <typename Error> std::string reasonOf(const Error &error) {
    return failureReason(std::make_exception_ptr(error)).toStdString();
}

} // namespace

TEST(FailureReasonTest, EachHasItsOwn) {
    const std::vector reasons{reasonOf(AppFailure::missingAPIKey(AIProvider::openAI)),
                              reasonOf(AppFailure::openAIError(QStringLiteral("x"))),
                              reasonOf(AppFailure::accessibilityPermissionRequired()),
                              reasonOf(AppFailure::missingFrontmostApplication()),
                              reasonOf(AppFailure::noSelectionFound()),
                              reasonOf(AppFailure::invalidEndpoint()),
                              reasonOf(AppFailure::invalidResponse()),
                              reasonOf(AppFailure::replacementFailed()),
                              reasonOf(UncertainReplacement()),
                              reasonOf(CancellationError()),
                              reasonOf(ForeignError(QStringLiteral("x"))),
                              reasonOf(std::runtime_error("x"))};
    const std::set<std::string> different(reasons.begin(), reasons.end());
    EXPECT_EQ(different.size(), reasons.size());
    EXPECT_FALSE(different.contains(std::string()));
}

TEST(FailureReasonTest, NothingIsQuoted) {
    const QString secret = QStringLiteral("typed by the user");
    for (const std::string &reason :
         {reasonOf(AppFailure::openAIError(secret)), reasonOf(ForeignError(secret)),
          reasonOf(std::runtime_error(secret.toStdString()))})
        EXPECT_EQ(reason.find(secret.toStdString()), std::string::npos) << reason;
}

} // namespace quillmender
