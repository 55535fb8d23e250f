#pragma once

#include "platform/StatusItem.h"

namespace quillmender {

/// A desktop without status area.
class NoneStatusItem : public StatusItem {
  public:
    void show(const StatusItemContents &) override {}
    void updateMenuItem(int, const QString &, bool) override {}
};

} // namespace quillmender
