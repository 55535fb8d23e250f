#include "model/AppFailure.h"

namespace quillmender {

AppFailure AppFailure::missingAPIKey(AIProvider provider) {
    return {Case::missingAPIKey,
            QStringLiteral("Add your %1 API key in Settings before using Quillmender.")
                .arg(displayName(provider)),
            provider};
}

AppFailure AppFailure::openAIError(const QString &message) {
    return {Case::openAIError, message};
}

AppFailure AppFailure::accessibilityPermissionRequired() {
    return {Case::accessibilityPermissionRequired,
            QStringLiteral("Quillmender needs Accessibility access to read and replace selected "
                           "text across apps.")};
}

AppFailure AppFailure::missingFrontmostApplication() {
    return {Case::missingFrontmostApplication,
            QStringLiteral("Quillmender could not determine the frontmost app.")};
}

AppFailure AppFailure::noSelectionFound() {
    return {Case::noSelectionFound,
            QStringLiteral("Select some text, or place the cursor inside a normal text field so "
                           "Quillmender can capture the whole field when possible.")};
}

AppFailure AppFailure::invalidEndpoint() {
    return {Case::invalidEndpoint,
            QStringLiteral("The OpenAI endpoint URL in Settings is not valid.")};
}

AppFailure AppFailure::invalidResponse() {
    return {Case::invalidResponse,
            QStringLiteral("OpenAI returned a response Quillmender could not parse.")};
}

AppFailure AppFailure::replacementFailed() {
    return {
        Case::replacementFailed,
        QStringLiteral("Quillmender could not replace the selected text back in the source app.")};
}

} // namespace quillmender
