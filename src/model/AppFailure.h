#pragma once

#include "model/AIProvider.h"
#include "model/UserVisibleError.h"

#include <optional>

namespace quillmender {

/// The failures of the program's own making, each with a fixed sentence for the user.
class AppFailure : public UserVisibleError {
  public:
    enum class Case {
        missingAPIKey,
        openAIError,
        accessibilityPermissionRequired,
        missingFrontmostApplication,
        noSelectionFound,
        invalidEndpoint,
        invalidResponse,
        replacementFailed,
    };

    static AppFailure missingAPIKey(AIProvider provider);

    /// An error that any provider reported, in its own words. They may be empty.
    static AppFailure openAIError(const QString &message);

    static AppFailure accessibilityPermissionRequired();
    static AppFailure missingFrontmostApplication();
    static AppFailure noSelectionFound();

    /// For every provider, although the sentence names one.
    static AppFailure invalidEndpoint();

    /// For every provider, although the sentence names one.
    static AppFailure invalidResponse();

    static AppFailure replacementFailed();

    Case failureCase() const { return case_; }

    /// Present for `missingAPIKey` only.
    std::optional<AIProvider> provider() const { return provider_; }

    friend bool operator==(const AppFailure &left, const AppFailure &right) {
        return left.case_ == right.case_ && left.errorDescription() == right.errorDescription();
    }

  private:
    AppFailure(Case failureCase, const QString &description,
               std::optional<AIProvider> provider = std::nullopt)
        : UserVisibleError(description),
          case_(failureCase),
          provider_(provider) {}

    Case case_;
    std::optional<AIProvider> provider_;
};

} // namespace quillmender
