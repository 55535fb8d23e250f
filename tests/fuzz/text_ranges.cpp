#include "fuzz/Require.h"
#include "platform/CharacterBoundary.h"
#include "platform/linux/atspi/TextSplice.h"
#include "platform/linux/atspi/TextUnits.h"

#include <QList>
#include <QStringList>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>

using namespace quillmender;
using namespace quillmender::atspi;
using fuzz::require;

namespace {

QString takeText(FuzzedDataProvider &input, std::size_t mostBytes) {
    const std::string bytes = input.ConsumeRandomLengthString(mostBytes);
    QString text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += QChar(static_cast<std::uint8_t>(bytes[i]), static_cast<std::uint8_t>(bytes[i + 1]));
    return text;
}

bool isBoundary(const QString &text, qint64 position) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(position);
    return position == 0 || position == text.size() || finder.isAtBoundary();
}

void checkUnits(const QString &text, qint64 offset) {
    for (const OffsetUnit unit : {OffsetUnit::utf16, OffsetUnit::codePoints}) {
        if (const auto theirs = fromUtf16(text, offset, unit)) {
            require(toUtf16(text, *theirs, unit) == offset, "an offset comes back as it went");
        }
        if (const auto ours = toUtf16(text, offset, unit))
            require(*ours >= 0 && *ours <= text.size(), "an offset lies in its text");
    }
}

/// For the scripts of South and South-East Asia the finder's answers about marks without a letter
/// depend on where a text begins.
bool hasPlainScripts(const QString &text) {
    const QList<uint> characters = text.toUcs4();
    return std::ranges::all_of(characters, [](uint each) {
        switch (QChar::script(each)) {
        case QChar::Script_Common:
        case QChar::Script_Inherited:
        case QChar::Script_Unknown:
        case QChar::Script_Latin:
        case QChar::Script_Greek:
        case QChar::Script_Cyrillic:
        case QChar::Script_Hebrew:
        case QChar::Script_Arabic:
        case QChar::Script_Hangul:
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
        case QChar::Script_Han:
            return true;
        default:
            return false;
        }
    });
}

void checkBoundaries(const QString &text, TextRange range) {
    if (!hasPlainScripts(text))
        return;
    const bool isInside = range.location >= 0 && range.length >= 0 &&
                          range.location <= text.size() &&
                          range.length <= text.size() - range.location;
    const bool expected = isInside && isBoundary(text, range.location) &&
                          isBoundary(text, range.location + range.length);
    require(fallsOnCharacterBoundaries(text, range) == expected,
            "looking at the neighbourhood is as good as at the whole text");
}

void checkSplice(const QString &from, const QString &to) {
    const TextSplice splice = computeSplice(from, to);
    require(splice.start >= 0 && splice.start + splice.removed.size() <= from.size(),
            "a change lies in its text");
    require(from.mid(splice.start, splice.removed.size()) == splice.removed,
            "what a change removes is there");
    QString result = from;
    result.replace(splice.start, splice.removed.size(), splice.inserted);
    require(result == to, "a change leads to the other text");
    require(computeSplice(from, from).isEmpty(), "equal texts need no change");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    constexpr std::size_t mostBytes = 400;
    FuzzedDataProvider input(data, size);
    const auto first = input.ConsumeIntegralInRange<qint64>(-2, 300);
    const auto second = input.ConsumeIntegralInRange<qint64>(-2, 300);
    const auto caret = input.ConsumeIntegralInRange<qint64>(-2, 300);
    const bool isPadded = input.ConsumeBool();
    const QString text = takeText(input, mostBytes);
    const QString other = takeText(input, mostBytes);

    checkUnits(text, first);
    checkBoundaries(text, {first, second});
    checkSplice(text, other);
    if (const auto decoded = decodeText(text, first, isPadded); decoded.unit) {
        require(toUtf16(decoded.text, first, *decoded.unit).has_value() || isPadded,
                "the end of a text that fits its count is an offset");
    }
    if (const auto pair = untangledSelection(text, {first, second}, caret)) {
        require(pair->start < pair->end, "a selection that was found out is not empty");
        require(pair->start == caret || pair->end == caret, "the caret is at one of its ends");
    }
    mayHideSelection(text);
    return 0;
}
