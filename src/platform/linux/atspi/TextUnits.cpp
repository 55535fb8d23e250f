#include "platform/linux/atspi/TextUnits.h"

#include <algorithm>

namespace quillmender::atspi {

namespace {

constexpr char16_t padding = 0xfeff;

bool isPairAt(QStringView text, qsizetype index) {
    return index + 1 < text.size() && text[index].isHighSurrogate() &&
           text[index + 1].isLowSurrogate();
}

bool isFullyPadded(const QString &raw) {
    for (qsizetype index = 0; index < raw.size(); ++index) {
        if (!isPairAt(raw, index))
            continue;
        if (index + 2 >= raw.size() || raw[index + 2] != QChar(padding))
            return false;
        index += 2;
    }
    return true;
}

/// The code-point offset that becomes `reported` when it is taken for a UTF-16 offset.
std::optional<qint64> beforeMisreading(const QString &text, qint64 reported) {
    const auto offset = toUtf16(text, reported, OffsetUnit::codePoints);
    if (!offset || *offset > codePointCount(text))
        return std::nullopt;
    return offset;
}

} // namespace

QString withoutPadding(const QString &raw) {
    if (!raw.contains(QChar(padding)))
        return raw;
    QString text;
    text.reserve(raw.size());
    for (qsizetype index = 0; index < raw.size(); ++index) {
        const bool isPadding =
            raw[index] == QChar(padding) && index >= 2 && isPairAt(raw, index - 2);
        if (!isPadding)
            text.append(raw[index]);
    }
    return text;
}

bool hasAstral(const QString &text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isHighSurrogate(); });
}

qint64 codePointCount(QStringView text) {
    qint64 count = text.size();
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (isPairAt(text, index)) {
            --count;
            ++index;
        }
    }
    return count;
}

DecodedText decodeText(const QString &raw, qint64 count, bool padded) {
    if (!hasAstral(raw)) {
        if (count == raw.size())
            return {raw, OffsetUnit::utf16};
        return {raw, std::nullopt};
    }
    const qint64 points = codePointCount(raw);
    if (padded && isFullyPadded(raw)) {
        if (count == points)
            return {withoutPadding(raw), OffsetUnit::utf16};
        return {withoutPadding(raw), std::nullopt};
    }
    if (count == raw.size())
        return {raw, OffsetUnit::utf16};
    if (count == points)
        return {raw, OffsetUnit::codePoints};
    return {raw, std::nullopt};
}

std::optional<qint64> toUtf16(const QString &text, qint64 offset, OffsetUnit unit) {
    if (offset < 0 || offset > text.size())
        return std::nullopt;
    if (unit == OffsetUnit::utf16)
        return offset;
    qsizetype index = 0;
    for (qint64 passed = 0; passed < offset; ++passed) {
        if (index >= text.size())
            return std::nullopt;
        index += isPairAt(text, index) ? 2 : 1;
    }
    return index;
}

std::optional<qint64> fromUtf16(const QString &text, qint64 offset, OffsetUnit unit) {
    if (offset < 0 || offset > text.size())
        return std::nullopt;
    if (offset > 0 && isPairAt(text, offset - 1))
        return std::nullopt;
    if (unit == OffsetUnit::utf16)
        return offset;
    return codePointCount(QStringView(text).left(offset));
}

std::optional<OffsetPair> untangledSelection(const QString &text, OffsetPair reported,
                                             qint64 caret) {
    const auto fits = [caret](OffsetPair pair) {
        return pair.start < pair.end && (pair.start == caret || pair.end == caret);
    };
    const auto start = beforeMisreading(text, reported.start);
    const auto end = beforeMisreading(text, reported.end);
    std::optional<OffsetPair> misread;
    if (start && end && fits({*start, *end}))
        misread = OffsetPair{*start, *end};
    if (!fits(reported))
        return misread;
    if (misread && *misread != reported)
        return std::nullopt;
    return reported;
}

bool mayHideSelection(const QString &text) {
    const qint64 last = std::min<qint64>(codePointCount(text), text.size() - 1);
    for (qint64 offset = 1; offset <= last; ++offset) {
        if (isPairAt(text, offset - 1))
            return true;
    }
    return false;
}

} // namespace quillmender::atspi
