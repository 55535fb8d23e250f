#pragma once

#include <QCoroTask>
#include <QString>

#include <functional>

namespace quillmender::wayland {

/// The key combinations that are typed for the user.
enum class TypedKeys { controlC, controlV, shiftInsert };

/// What came of typing.
struct TypedOutcome {
    bool isTyped = false;
    /// Nothing was typed, and this way of typing is not to be had on this desktop, rather than not
    /// at this moment.
    bool isUnavailable = false;
    QString reason{}; ///< why nothing was typed, in words for the log
};

/// One way to type into the application that has the keyboard. It does not know which one that is;
/// who asks sees to it first.
class KeyTyping {
  public:
    KeyTyping() = default;
    KeyTyping(const KeyTyping &) = delete;
    KeyTyping &operator=(const KeyTyping &) = delete;
    virtual ~KeyTyping() = default;

    /// Waits, for a second at most, until the user has let go of the modifiers that would mix with
    /// what is typed, where they would; asks `isStillMeant` and, if so, calls `beforeLast` and
    /// types the keys without letting anything come in between. Completes when they are out, or
    /// when it is certain that they will not be: all or none of them are typed, and what was
    /// pressed is let go of whatever happens.
    virtual QCoro::Task<TypedOutcome> type(TypedKeys keys, std::function<bool()> isStillMeant,
                                           std::function<void()> beforeLast) = 0;
};

} // namespace quillmender::wayland
