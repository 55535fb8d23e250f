#include "fuzz/CannedTransport.h"
#include "fuzz/Require.h"
#include "model/AppFailure.h"
#include "model/DecodingError.h"
#include "model/TextRules.h"
#include "providers/LLMClient.h"

#include <array>
#include <cstddef>
#include <cstdint>

using namespace quillmender;
using fuzz::require;

namespace {

const QString key = QStringLiteral("sk-never-to-be-seen-0123456789");

QCoro::Task<> ask(const LLMClient &client, LLMConfiguration configuration, bool &isAnswered) {
    try {
        const QString answer = co_await client.transform(QStringLiteral("text"), configuration);
        require(!answer.isEmpty(), "an answer has a text");
        require(trimmed(answer) == answer, "an answer is trimmed");
        require(!answer.contains(QChar::Null), "an answer can be written whole");
    } catch (const AppFailure &failure) {
        require(!failure.errorDescription().contains(key), "no failure tells the key");
        require(failure.errorDescription().size() < 5000, "a failure can be shown");
    } catch (const DecodingError &error) {
        require(!error.errorDescription().isEmpty(), "an unreadable answer is described");
    }
    isAnswered = true;
}

} // namespace

// The first byte picks provider and status; the others are the body of the answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr std::array statuses{200, 204, 299, 300, 401, 500, 503, 199};
    if (size == 0)
        return 0;
    const AIProvider provider = allProviders[data[0] % allProviders.size()];
    const int status = statuses[(data[0] / allProviders.size()) % statuses.size()];
    const QByteArray body(reinterpret_cast<const char *>(data + 1),
                          static_cast<qsizetype>(size) - 1);
    fuzz::CannedTransport transport(HttpResponse{.status = status, .body = body});
    const LLMClient client(transport);
    bool isAnswered = false;
    const auto asking =
        ask(client, {provider, key, defaultModel(provider), defaultEndpoint(provider)}, isAnswered);
    require(isAnswered, "every answer ends the request, with a result or a described failure");
    return 0;
}
