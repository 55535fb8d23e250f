#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

namespace quillmender::kwin {

/// Waits for the user to let go of the modifiers of a hot key, where these would mix with keys that
/// are typed for the user and cannot be released for the user.
class HeldModifiers {
  public:
    HeldModifiers() = default;
    HeldModifiers(const HeldModifiers &) = delete;
    HeldModifiers &operator=(const HeldModifiers &) = delete;
    virtual ~HeldModifiers() = default;

    /// Waits a second at most. Why they still stand in the way, in words for the log; absent when
    /// all of them are up.
    virtual QCoro::Task<std::optional<QString>> waitUntilUp() = 0;
};

} // namespace quillmender::kwin
