#include "unit/providers/ProviderTest.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <ostream>

namespace quillmender::test {

LLMConfiguration ProviderTest::configuration(AIProvider provider) const {
    const auto path = QUrl(defaultEndpoint(provider)).path();
    return {provider, testKey, QStringLiteral("m"), server.baseUrl() + path};
}

QString ProviderTest::transform(const LLMConfiguration &configuration, const QString &prompt) {
    return runTask(client.transform(prompt, configuration));
}

QString ProviderTest::answerTo(AIProvider provider, const QByteArray &body) {
    server.setAnswer(ScriptedAnswer::http(200, body));
    return transform(configuration(provider));
}

ReceivedRequest ProviderTest::onlyRequest() const {
    const auto requests = server.requests();
    EXPECT_EQ(requests.size(), 1U);
    return requests.empty() ? ReceivedRequest() : requests.front();
}

AppFailure::Case failureCaseOf(const std::function<void()> &action) {
    try {
        action();
    } catch (const AppFailure &failure) {
        return failure.failureCase();
    } catch (const std::exception &error) {
        ADD_FAILURE() << "another exception: " << error.what();
        throw;
    }
    ADD_FAILURE() << "no exception";
    throw std::logic_error("no exception");
}

bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds deadline) {
    QEventLoop loop;
    QTimer poll;
    const QDeadlineTimer limit(deadline);
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (condition() || limit.hasExpired())
            loop.quit();
    });
    poll.start(1);
    loop.exec();
    return condition();
}

} // namespace quillmender::test

void quillmender::PrintTo(AppFailure::Case failureCase, std::ostream *stream) {
    *stream << "case " << static_cast<int>(failureCase);
}

void PrintTo(const QString &text, std::ostream *stream) {
    *stream << '"' << text.toStdString() << '"';
}

void PrintTo(const QByteArray &bytes, std::ostream *stream) {
    *stream << '"' << bytes.toStdString() << '"';
}
