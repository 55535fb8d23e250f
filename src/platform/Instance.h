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

/// At most one running copy of the program in a session, and the way to it for a second launch,
/// a compositor's key binding, or a desktop without a status area.
class Instance {
  public:
    Instance() = default;
    Instance(const Instance &) = delete;
    Instance &operator=(const Instance &) = delete;
    virtual ~Instance() = default;

    /// False when another copy runs; that one was asked to activate itself. `onAction` is called
    /// with the name of an action, on the main thread. True where the system sees to it itself.
    virtual bool claim(std::function<void(const QString &action)> onAction) = 0;
};

} // namespace quillmender
