#include "app/FailureReason.h"

#include "model/AppFailure.h"
#include "platform/Clock.h"
#include "selection/UncertainReplacement.h"

namespace quillmender {

namespace {

const char *reasonOf(AppFailure::Case failure) {
    switch (failure) {
    case AppFailure::Case::missingAPIKey:
        return "there is no API key";
    case AppFailure::Case::openAIError:
        return "the provider reports an error";
    case AppFailure::Case::accessibilityPermissionRequired:
        return "accessibility is not granted";
    case AppFailure::Case::missingFrontmostApplication:
        return "no application is in front";
    case AppFailure::Case::noSelectionFound:
        return "there is no text";
    case AppFailure::Case::invalidEndpoint:
        return "the endpoint is no address";
    case AppFailure::Case::invalidResponse:
        return "the answer holds no text";
    case AppFailure::Case::replacementFailed:
        return "it could not be put in place";
    }
    return "";
}

} // namespace

QString failureReason(const std::exception_ptr &error) {
    try {
        std::rethrow_exception(error);
    } catch (const UncertainReplacement &) {
        return QStringLiteral("nobody knows whether it was put in place");
    } catch (const AppFailure &failure) {
        return QLatin1String(reasonOf(failure.failureCase()));
    } catch (const CancellationError &) {
        return QStringLiteral("it was called off");
    } catch (const UserVisibleError &) {
        return QStringLiteral("the request failed");
    } catch (...) {
        return QStringLiteral("something unforeseen");
    }
}

} // namespace quillmender
