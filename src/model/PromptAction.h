#pragma once

#include "model/ActionRecord.h"

namespace quillmender {

/// An action that can be picked and run: a built-in one as the user has it, or one of the user's.
class PromptAction {
  public:
    static PromptAction builtIn(BuiltInActionConfig config) {
        return PromptAction(std::move(config));
    }
    static PromptAction custom(CustomAction action) { return PromptAction(std::move(action)); }

    QString id() const { return actionId(record_); }
    QString title() const { return actionTitle(record_); }
    QString subtitle() const;
    QString systemImage() const { return actionSystemImage(record_); }

    /// The user prompt: the trimmed template with the text in place of each "{{text}}", or the
    /// text under a heading after it when it has none. The text itself is not changed.
    QString prompt(const QString &text) const;

    const ActionRecord &record() const { return record_; }

    friend bool operator==(const PromptAction &, const PromptAction &) = default;

  private:
    explicit PromptAction(ActionRecord record) : record_(std::move(record)) {}

    ActionRecord record_;
};

/// What the picker shows: the built-in actions that are not hidden, then the user's own.
QList<PromptAction> visibleActions(const QList<BuiltInActionConfig> &builtInActions,
                                   const QList<CustomAction> &customActions);

} // namespace quillmender
