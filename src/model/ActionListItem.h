#pragma once

#include "model/ActionRecord.h"

namespace quillmender {

/// A row of the list of actions in the settings.
class ActionListItem {
  public:
    static ActionListItem builtIn(BuiltInActionConfig config) {
        return ActionListItem(std::move(config));
    }
    static ActionListItem custom(CustomAction action) { return ActionListItem(std::move(action)); }

    QString id() const { return actionId(record_); }
    QString systemImage() const { return actionSystemImage(record_); }
    const ActionRecord &record() const { return record_; }

    friend bool operator==(const ActionListItem &, const ActionListItem &) = default;

  private:
    explicit ActionListItem(ActionRecord record) : record_(std::move(record)) {}

    ActionRecord record_;
};

} // namespace quillmender
