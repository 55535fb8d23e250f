#pragma once

#include "fakes/CallLog.h"
#include "platform/Workspace.h"

namespace quillmender::fakes {

class FakeWorkspace : public Workspace {
  public:
    explicit FakeWorkspace(CallLog log) : log_(std::move(log)) {}

    RunningApplicationRef frontmostApplication() override {
        log_->append(QStringLiteral("frontmostApplication"));
        return frontmost;
    }
    bool activate(RunningApplicationRef application) override {
        log_->append(application == frontmost ? QStringLiteral("activate source")
                                              : QStringLiteral("activate another"));
        return true;
    }
    std::optional<DesktopRect> windowFrame(RunningApplicationRef) override { return std::nullopt; }
    bool openUrl(const QUrl &url) override {
        log_->append(QStringLiteral("openUrl ") + url.toString());
        return true;
    }
    bool openSettingsPage(SettingsPage page) override {
        log_->append(page == SettingsPage::accessibility
                         ? QStringLiteral("openSettingsPage accessibility")
                         : QStringLiteral("openSettingsPage another"));
        return true;
    }

    RunningApplicationRef frontmost = std::make_shared<const RunningApplication>();

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
