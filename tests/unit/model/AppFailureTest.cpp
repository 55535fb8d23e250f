#include "model/AppFailure.h"

#include "model/DecodingError.h"
#include "model/UserMessage.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quillmender {

namespace {

TEST(AppFailureTest, EveryFailureHasItsSentence) {
    const std::vector<std::pair<AppFailure, const char *>> rows{
        {AppFailure::missingAPIKey(AIProvider::openAI),
         "Add your OpenAI API key in Settings before using Quillmender."},
        {AppFailure::missingAPIKey(AIProvider::anthropic),
         "Add your Claude API key in Settings before using Quillmender."},
        {AppFailure::missingAPIKey(AIProvider::gemini),
         "Add your Gemini API key in Settings before using Quillmender."},
        {AppFailure::openAIError(QStringLiteral(" as it is\n")), " as it is\n"},
        {AppFailure::openAIError(QString()), ""},
        {AppFailure::accessibilityPermissionRequired(),
         "Quillmender needs Accessibility access to read and replace selected text across apps."},
        {AppFailure::missingFrontmostApplication(),
         "Quillmender could not determine the frontmost app."},
        {AppFailure::noSelectionFound(),
         "Select some text, or place the cursor inside a normal text field so Quillmender can "
         "capture the whole field when possible."},
        {AppFailure::invalidEndpoint(), "The OpenAI endpoint URL in Settings is not valid."},
        {AppFailure::invalidResponse(), "OpenAI returned a response Quillmender could not parse."},
        {AppFailure::replacementFailed(),
         "Quillmender could not replace the selected text back in the source app."},
    };
    for (const auto &[failure, sentence] : rows) {
        EXPECT_EQ(failure.errorDescription().toStdString(), sentence);
        EXPECT_STREQ(failure.what(), sentence);
        EXPECT_EQ(userMessage(std::make_exception_ptr(failure)).toStdString(), sentence);
    }
}

TEST(AppFailureTest, AFailureKnowsItsCaseAndPayload) {
    const auto failure = AppFailure::missingAPIKey(AIProvider::gemini);
    EXPECT_EQ(failure.failureCase(), AppFailure::Case::missingAPIKey);
    EXPECT_EQ(failure.provider(), AIProvider::gemini);
    const std::pair<AppFailure, AppFailure::Case> rows[] = {
        {AppFailure::openAIError(QString()), AppFailure::Case::openAIError},
        {AppFailure::accessibilityPermissionRequired(),
         AppFailure::Case::accessibilityPermissionRequired},
        {AppFailure::missingFrontmostApplication(), AppFailure::Case::missingFrontmostApplication},
        {AppFailure::noSelectionFound(), AppFailure::Case::noSelectionFound},
        {AppFailure::invalidEndpoint(), AppFailure::Case::invalidEndpoint},
        {AppFailure::invalidResponse(), AppFailure::Case::invalidResponse},
        {AppFailure::replacementFailed(), AppFailure::Case::replacementFailed},
    };
    for (const auto &[other, failureCase] : rows) {
        EXPECT_EQ(other.failureCase(), failureCase);
        EXPECT_EQ(other.provider(), std::nullopt);
    }
    EXPECT_EQ(AppFailure::replacementFailed(), AppFailure::replacementFailed());
    EXPECT_FALSE(AppFailure::openAIError(QStringLiteral("a")) ==
                 AppFailure::openAIError(QStringLiteral("b")));
}

TEST(AppFailureTest, OtherErrorsTellTheirOwnDescription) {
    EXPECT_EQ(userMessage(std::make_exception_ptr(DecodingError(QStringLiteral("caf\u00e9")))),
              QStringLiteral("caf\u00e9"));
    EXPECT_EQ(userMessage(std::make_exception_ptr(std::runtime_error("why"))),
              QStringLiteral("why"));
    EXPECT_EQ(userMessage(std::make_exception_ptr(1)),
              QStringLiteral("The operation could not be completed."));
    EXPECT_EQ(userMessage(nullptr), QStringLiteral("The operation could not be completed."));
}

} // namespace

} // namespace quillmender
