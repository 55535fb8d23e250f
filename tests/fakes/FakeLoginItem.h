#pragma once

#include "fakes/CallLog.h"
#include "platform/LoginItem.h"

namespace quillmender::fakes {

class FakeLoginItem : public LoginItem {
  public:
    explicit FakeLoginItem(CallLog log) : log_(std::move(log)) {}

    LoginItemStatus status() override { return current; }
    std::optional<QString> registerItem() override {
        log_->append(QStringLiteral("registerItem"));
        if (!error)
            current = afterRegistration;
        return error;
    }
    std::optional<QString> unregisterItem() override {
        log_->append(QStringLiteral("unregisterItem"));
        if (!error)
            current = LoginItemStatus::notRegistered;
        return error;
    }
    void openSystemSettings() override { log_->append(QStringLiteral("openLoginItemSettings")); }

    LoginItemStatus current = LoginItemStatus::notRegistered;
    LoginItemStatus afterRegistration = LoginItemStatus::enabled;
    std::optional<QString> error;

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
