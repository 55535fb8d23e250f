#pragma once

#include "fakes/CallLog.h"
#include "platform/Presence.h"

namespace quillmender::fakes {

class FakePresence : public Presence {
  public:
    explicit FakePresence(CallLog log) : log_(std::move(log)) {}

    void setAccessoryPolicy() override { log_->append(QStringLiteral("setAccessoryPolicy")); }
    void showStatusItem(const StatusItem &item) override {
        log_->append(QStringLiteral("showStatusItem"));
        statusItem = item;
    }
    void updateStatusMenuItem(int index, const QString &title, bool hidden) override {
        statusItem.menu[index].title = title;
        statusItem.menu[index].hidden = hidden;
    }
    void applyPanelAttributes(quintptr) override {}
    void applyWindowAttributes(quintptr) override {}
    void activateWindow(quintptr) override {}
    QByteArray symbolImage(const QString &, int, quint32) override { return {}; }
    Appearance appearance() override { return {}; }
    void onAppearanceChange(std::function<void()>) override {}

    StatusItem statusItem;

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
