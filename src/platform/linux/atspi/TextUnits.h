#pragma once

#include <QString>

#include <optional>

namespace quillmender::atspi {

/// What a toolkit's offsets count. Its name does not tell; its count of a text with characters
/// outside the basic plane does.
enum class OffsetUnit { utf16, codePoints };

/// A text as the application means it.
struct DecodedText {
    QString text;
    std::optional<OffsetUnit> unit; ///< nothing: the count fits neither, offsets are meaningless
};

/// `count` is the toolkit's own CharacterCount for `raw`. `padded`: the toolkit puts U+FEFF after
/// each character outside the basic plane, so that its offsets are UTF-16 units; they are removed.
DecodedText decodeText(const QString &raw, qint64 count, bool padded);

/// Removes U+FEFF behind surrogate pairs.
QString withoutPadding(const QString &raw);

bool hasAstral(const QString &text);
qint64 codePointCount(QStringView text);

/// Nothing when the offset lies outside the text.
std::optional<qint64> toUtf16(const QString &text, qint64 offset, OffsetUnit unit);

/// Nothing when the offset lies outside the text or inside a surrogate pair.
std::optional<qint64> fromUtf16(const QString &text, qint64 offset, OffsetUnit unit);

/// A selection in code points.
struct OffsetPair {
    qint64 start = 0;
    qint64 end = 0;

    friend bool operator==(const OffsetPair &, const OffsetPair &) = default;
};

/// Chromium turns the ends of a selection from UTF-16 into code points twice, the caret once.
/// Finds the selection that explains what was reported, with the caret at one of its ends;
/// nothing when more than one does, or none.
std::optional<OffsetPair> untangledSelection(const QString &text, OffsetPair reported,
                                             qint64 caret);

/// Whether some selection of this text would be reported by Chromium as none: an end that falls
/// inside a surrogate pair when it is converted the second time makes the whole disappear.
bool mayHideSelection(const QString &text);

} // namespace quillmender::atspi
