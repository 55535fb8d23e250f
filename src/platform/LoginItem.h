#pragma once

#include <QString>

#include <optional>

namespace quillmender {

enum class LoginItemStatus : int {
    notRegistered = 0,
    enabled = 1,
    requiresApproval = 2,
    notFound = 3,
};

/// The program's own registration to be started when the user logs in.
class LoginItem {
  public:
    LoginItem() = default;
    LoginItem(const LoginItem &) = delete;
    LoginItem &operator=(const LoginItem &) = delete;
    virtual ~LoginItem() = default;

    virtual LoginItemStatus status() = 0;

    /// Both answer the system's own description of what went wrong, or nothing on success.
    virtual std::optional<QString> registerItem() = 0;
    virtual std::optional<QString> unregisterItem() = 0;

    /// Opens the system's page of login items, where there is one.
    virtual void openSystemSettings() = 0;
};

} // namespace quillmender
