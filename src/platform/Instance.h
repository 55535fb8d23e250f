#pragma once

#include <QString>

#include <functional>

namespace quillmender {

/// The actions by which the desktop reaches the running program from outside.
namespace instanceAction {
inline constexpr auto activate = "";
inline constexpr auto transform = "transform";
inline constexpr auto settings = "settings";
inline constexpr auto about = "about";
inline constexpr auto quit = "quit";
} // namespace instanceAction

/// What came of a claim to be the only copy.
struct InstanceClaim {
    enum class Outcome {
        held,           ///< this copy is the one that runs
        otherActivated, ///< another copy runs and was asked to show itself
        failed,         ///< neither: this copy cannot run
    };
    Outcome outcome = Outcome::held;
    QString reason{}; ///< why it failed, in words for the user
};

/// At most one running copy of the program in a session, and the way to it for a second launch,
/// a compositor's key binding, or a desktop without a status area.
class Instance {
  public:
    Instance() = default;
    Instance(const Instance &) = delete;
    Instance &operator=(const Instance &) = delete;
    virtual ~Instance() = default;

    /// Held also where the system sees to it itself. `onAction` is called with the name of an
    /// action, whatever somebody outside made up, on the main thread.
    virtual InstanceClaim claim(std::function<void(const QString &action)> onAction) = 0;
};

} // namespace quillmender
