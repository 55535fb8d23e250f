#pragma once

#include <QString>

#include <array>
#include <optional>

namespace quillmender {

/// The built-in transformations, in the order in which they are listed.
enum class TextAction {
    formalize,
    simplify,
    casual,
    translateFrench,
    translatePortugueseBrazil,
    translateEnglish,
    fixGrammar,
};

inline constexpr std::array allTextActions{TextAction::formalize,
                                           TextAction::simplify,
                                           TextAction::casual,
                                           TextAction::translateFrench,
                                           TextAction::translatePortugueseBrazil,
                                           TextAction::translateEnglish,
                                           TextAction::fixGrammar};

/// The name of the case, as it is stored.
QString rawValue(TextAction action);

/// The action of exactly this raw value, if there is one.
std::optional<TextAction> textActionFromRawValue(const QString &rawValue);

QString defaultTitle(TextAction action);
QString defaultPromptTemplate(TextAction action);

/// Fixed; not stored and not editable.
QString subtitle(TextAction action);

/// The name of the action's symbol image. Fixed.
QString systemImage(TextAction action);

} // namespace quillmender
