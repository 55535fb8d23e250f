#pragma once

#include "fakes/CallLog.h"
#include "platform/AccessibilityAccess.h"

namespace quillmender::fakes {

class FakeAccessibilityAccess : public AccessibilityAccess {
  public:
    explicit FakeAccessibilityAccess(CallLog log) : log_(std::move(log)) {}

    void ask() override { log_->append(QStringLiteral("access.ask")); }
    bool isGranted() override {
        log_->append(QStringLiteral("access.isGranted"));
        return granted;
    }
    void request() override {
        log_->append(QStringLiteral("access.request"));
        granted = granted || grantsOnRequest;
    }

    bool granted = true;
    bool grantsOnRequest = false;

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
