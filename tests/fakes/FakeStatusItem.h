#pragma once

#include "fakes/CallLog.h"
#include "platform/StatusItem.h"

namespace quillmender::fakes {

/// Keeps what is shown, for the test to look at and to choose from.
class FakeStatusItem : public StatusItem {
  public:
    explicit FakeStatusItem(CallLog log) : log_(std::move(log)) {}

    void show(const StatusItemContents &shown) override {
        log_->append(QStringLiteral("showStatusItem"));
        contents = shown;
    }
    void updateMenuItem(int index, const QString &title, bool hidden) override {
        contents.menu[index].title = title;
        contents.menu[index].hidden = hidden;
    }

    StatusItemContents contents;

  private:
    CallLog log_;
};

} // namespace quillmender::fakes
