#pragma once

#include "model/AppFailure.h"
#include "providers/LLMClient.h"
#include "providers/QtHttpTransport.h"
#include "support/LoopbackServer.h"
#include "support/ProviderAnswers.h"
#include "support/RunTask.h"

#include <gmock/gmock.h>

#include <functional>

namespace quillmender::test {

inline constexpr qint64 mebibyte = qint64{1024} * 1024;

/// The text of the key in every request of these tests.
inline const QString testKey = QStringLiteral("sk-test-9f8e7d");

/// A client that talks to a loopback server.
class ProviderTest : public testing::Test {
  protected:
    /// For the provider's usual path on the server, with the model "m".
    LLMConfiguration configuration(AIProvider provider) const;

    /// Runs the transformation to its end; rethrows what it throws.
    QString transform(const LLMConfiguration &configuration,
                      const QString &prompt = QStringLiteral("Fix this"));

    /// The same for a provider that answers 200 with this body.
    QString answerTo(AIProvider provider, const QByteArray &body);

    /// The one request that the server has had.
    ReceivedRequest onlyRequest() const;

    LoopbackServer server;
    QtHttpTransport transport{std::chrono::seconds(20)};
    LLMClient client{transport};
};

/// The description of the exception of type Error that `action` throws; fails the test when it
/// throws none or another.
template <typename Error> QString descriptionOf(const std::function<void()> &action) {
    try {
        action();
    } catch (const Error &error) {
        return error.errorDescription();
    } catch (const std::exception &error) {
        ADD_FAILURE() << "another exception: " << error.what();
        return {};
    }
    ADD_FAILURE() << "no exception";
    return {};
}

/// Likewise the case of an AppFailure.
AppFailure::Case failureCaseOf(const std::function<void()> &action);

/// Runs the event loop until the condition holds. False when the time is over before.
bool waitUntil(const std::function<bool()> &condition,
               std::chrono::milliseconds deadline = std::chrono::seconds(20));

} // namespace quillmender::test

namespace quillmender {
void PrintTo(AppFailure::Case failureCase, std::ostream *stream);
}

/// Readable failure messages.
void PrintTo(const QString &text, std::ostream *stream);
void PrintTo(const QByteArray &bytes, std::ostream *stream);
