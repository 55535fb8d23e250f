#include "fuzz/Require.h"
#include "model/ActionDocuments.h"
#include "model/DecodingError.h"

#include <cstddef>
#include <cstdint>

using namespace quillmender;
using fuzz::require;

namespace {

template <typename Action>
void checkRoundTrip(const QByteArray &document, QList<Action> (*decode)(const QByteArray &),
                    QByteArray (*encode)(const QList<Action> &)) {
    try {
        const QList<Action> actions = decode(document);
        require(decode(encode(actions)) == actions, "what is stored is what is loaded again");
    } catch (const DecodingError &error) {
        require(!error.errorDescription().isEmpty(), "an unreadable document is described");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray document(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    checkRoundTrip(document, &decodeBuiltInActions, &encodeBuiltInActions);
    checkRoundTrip(document, &decodeCustomActions, &encodeCustomActions);

    const QList<BuiltInActionConfig> builtIn = loadedBuiltInActions(document);
    require(builtIn.size() == allTextActions.size(), "every built-in action is there");
    for (qsizetype i = 0; i < builtIn.size(); ++i)
        require(builtIn[i].action == allTextActions[i], "the built-in actions keep their order");
    loadedCustomActions(document);
    return 0;
}
