#include "fuzz/Require.h"
#include "model/PromptAction.h"
#include "model/TextRules.h"

#include <cstddef>
#include <cstdint>

using namespace quillmender;
using fuzz::require;

namespace {

/// The rule once more, written for being obvious.
QString expectedPrompt(const QString &promptTemplate, const QString &text) {
    const QStringList pieces = trimmed(promptTemplate).split(QStringLiteral("{{text}}"));
    if (pieces.size() == 1)
        return pieces.first() + QStringLiteral("\n\nText:\n") + text;
    return pieces.join(text);
}

} // namespace

// The template, a NUL, the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const qsizetype separator = bytes.indexOf('\0');
    const QString promptTemplate = QString::fromUtf8(bytes.left(separator));
    const QString text = separator < 0 ? QString() : QString::fromUtf8(bytes.mid(separator + 1));
    const auto action = PromptAction::custom({QUuid(), QStringLiteral("Own"), promptTemplate});
    require(action.prompt(text) == expectedPrompt(promptTemplate, text),
            "the text stands in each place, itself unchanged");
    return 0;
}
