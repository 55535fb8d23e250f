#pragma once

#include "platform/ChordContext.h"
#include "platform/TextRange.h"
#include "platform/Workspace.h"

#include <QCoroTask>
#include <QString>

#include <memory>
#include <variant>

namespace quillmender {

/// An opaque handle of one user-interface element, of whichever application. Only the
/// implementation that made it can look inside.
class AccessibilityElement {
  public:
    AccessibilityElement() = default;
    AccessibilityElement(const AccessibilityElement &) = delete;
    AccessibilityElement &operator=(const AccessibilityElement &) = delete;
    virtual ~AccessibilityElement() = default;

    /// Whether it was found in that application (on X11: in that window of it). True where the
    /// system cannot tell.
    virtual bool isOf(const RunningApplicationRef &) const { return true; }
};

using AccessibilityElementRef = std::shared_ptr<const AccessibilityElement>;

/// What an attribute can hold; `std::monostate` stands for a value of any other type.
using AccessibilityValue =
    std::variant<std::monostate, QString, TextRange, AccessibilityElementRef>;

/// The codes of the macOS accessibility interface; 0 is success.
enum class AccessibilityError : qint32 {
    success = 0,
    failure = -25200,
    illegalArgument = -25201,
    invalidElement = -25202,
    cannotComplete = -25204,
    attributeUnsupported = -25205,
    apiDisabled = -25211,
    noValue = -25212,
};

/// `value` means something only when `error` is success.
struct AttributeResult {
    AccessibilityError error = AccessibilityError::noValue;
    AccessibilityValue value;
};

/// What a paste would replace, as far as can be told.
enum class PasteTarget {
    selected, ///< the range was seen to be selected, or the system leaves that to applications
    unknown,  ///< nobody told what is selected
    gone,     ///< the text has become too short for the range
    another,  ///< something else was seen to be selected, or nothing
};

namespace attribute {
inline constexpr auto focusedElement = "AXFocusedUIElement";     ///< on the system-wide element
inline constexpr auto selectedText = "AXSelectedText";           ///< QString
inline constexpr auto value = "AXValue";                         ///< QString
inline constexpr auto selectedTextRange = "AXSelectedTextRange"; ///< TextRange
} // namespace attribute

/// Reads and writes the text of other applications' user interfaces, after the model of the macOS
/// accessibility interface. All texts and ranges are UTF-16 above this border. Every operation has
/// a deadline of its own; a silent application gives `cannotComplete`, never a hang.
class Accessibility {
  public:
    Accessibility() = default;
    Accessibility(const Accessibility &) = delete;
    Accessibility &operator=(const Accessibility &) = delete;
    virtual ~Accessibility() = default;

    /// Whether this process may read and write other applications' texts now.
    virtual bool isProcessTrusted() = 0;

    /// Asks the system to grant that access (with a prompt where it has one), then answers the
    /// same question.
    virtual bool isProcessTrustedWithPrompt() = 0;

    /// The element that is asked for the focused element. Never null.
    virtual AccessibilityElementRef createSystemWide() = 0;

    /// What a chord needs to know of the focused element, once it was asked for. Null where chords
    /// need nothing.
    virtual ChordContextRef chordContext(const AccessibilityElementRef &systemWide) = 0;

    /// A password field answers `noValue` for its text, whatever it holds.
    virtual QCoro::Task<AttributeResult> copyAttributeValue(AccessibilityElementRef element,
                                                            QString attribute) = 0;

    /// Success means that the element was seen to hold the new value afterwards, where the system
    /// can tell. `cannotComplete` means that an order is out whose outcome could not be learned in
    /// some seconds: it may be carried out yet, and no other way may be tried. After every other
    /// error the element holds what it held before.
    virtual QCoro::Task<AccessibilityError> setAttributeValue(AccessibilityElementRef element,
                                                              QString attribute,
                                                              AccessibilityValue value) = 0;

    /// Selects the range again just before a paste, so that the paste replaces what was captured.
    /// Does nothing on macOS, where applications keep their selection.
    virtual QCoro::Task<PasteTarget> selectBeforePaste(AccessibilityElementRef element,
                                                       TextRange range) = 0;
};

} // namespace quillmender
