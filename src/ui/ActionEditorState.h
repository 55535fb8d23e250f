#pragma once

#include "model/ActionRecord.h"

#include <optional>

namespace quillmender {

/// What the action editor edits: a built-in action, one of the user's, or one that is yet to be.
class ActionEditorState {
  public:
    static ActionEditorState builtIn(BuiltInActionConfig config) {
        return ActionEditorState(std::move(config));
    }
    static ActionEditorState custom(CustomAction action) {
        return ActionEditorState(std::move(action));
    }
    static ActionEditorState newAction() { return ActionEditorState(std::nullopt); }

    /// That of the action, or "new".
    QString id() const;
    QString heading() const;
    QString initialTitle() const;
    QString initialTemplate() const;

    /// Absent for a new action.
    const std::optional<ActionRecord> &record() const { return record_; }

  private:
    explicit ActionEditorState(std::optional<ActionRecord> record) : record_(std::move(record)) {}

    std::optional<ActionRecord> record_;
};

} // namespace quillmender
