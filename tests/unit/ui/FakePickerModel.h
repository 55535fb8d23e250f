#pragma once

#include "ui/ActionPickerModel.h"

#include <QStringList>

namespace quillmender {

/// Published values that a test sets through `change`, and a log of what the view called.
class FakePickerModel : public ActionPickerModel {
    Q_OBJECT

  public:
    struct State {
        QString title = QStringLiteral("Selected Text");
        QString description = QStringLiteral("Using only the highlighted text.");
        QString preview = QStringLiteral("some text");
        std::optional<QString> error;
        bool working = false;
        QString running;
        QString instruction;
        QList<PromptAction> actions = visibleActions(starterActions(), {});
        bool granted = true;
    };

    const State &state() const { return state_; }

    /// One published change.
    template <typename Change> void change(Change apply) {
        Q_EMIT objectWillChange();
        apply(state_);
    }

    QStringList calls;
    mutable int reads = 0;
    /// Whether a run begins at once, as the real one does.
    bool runsAtOnce = false;

    QString captureTitle() const override { return state_.title; }
    QString captureDescription() const override { return state_.description; }
    QString selectedTextPreview() const override { return state_.preview; }
    std::optional<QString> errorMessage() const override { return state_.error; }
    bool isWorking() const override { return state_.working; }
    QString currentActionTitle() const override { return state_.running; }
    QString customInstruction() const override { return state_.instruction; }
    void setCustomInstruction(const QString &text) override { publish(state_.instruction, text); }
    QList<PromptAction> actions() const override {
        ++reads;
        return state_.actions;
    }
    bool accessibilityGranted() const override { return state_.granted; }

    void run(const PromptAction &action) override { begin(QStringLiteral("run ") + action.id()); }
    void runCustomInstruction() override { begin(QStringLiteral("runCustomInstruction")); }
    void requestAccessibilityAccess() override {
        calls.append(QStringLiteral("requestAccessibilityAccess"));
    }
    void beginWorkflow() override { calls.append(QStringLiteral("beginWorkflow")); }
    void openSettings() override { calls.append(QStringLiteral("openSettings")); }
    void hidePanel() override { calls.append(QStringLiteral("hidePanel")); }

  private:
    void begin(const QString &call) {
        calls.append(call);
        if (runsAtOnce)
            change([](State &state) { state.working = true; });
    }

    State state_;
};

} // namespace quillmender
