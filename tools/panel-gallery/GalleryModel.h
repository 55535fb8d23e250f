#pragma once

#include "ui/ActionPickerModel.h"

namespace quillmender {

/// A picker model whose properties are plain values and whose operations do nothing.
class GalleryModel : public ActionPickerModel {
    Q_OBJECT

  public:
    QString title = QStringLiteral("Selected Text");
    QString description = QStringLiteral("Using only the highlighted text.");
    QString preview;
    std::optional<QString> error;
    bool working = false;
    QString running;
    QString instruction;
    QList<PromptAction> actionList;
    bool granted = true;

    GalleryModel() { actionList = visibleActions(starterActions(), {}); }

    QString captureTitle() const override { return title; }
    QString captureDescription() const override { return description; }
    QString selectedTextPreview() const override { return preview; }
    std::optional<QString> errorMessage() const override { return error; }
    bool isWorking() const override { return working; }
    QString currentActionTitle() const override { return running; }
    QString customInstruction() const override { return instruction; }
    void setCustomInstruction(const QString &text) override { publish(instruction, text); }
    QList<PromptAction> actions() const override { return actionList; }
    bool accessibilityGranted() const override { return granted; }

    void run(const PromptAction &) override {}
    void runCustomInstruction() override {}
    void requestAccessibilityAccess() override {}
    void beginWorkflow() override {}
    void openSettings() override {}
    void hidePanel() override {}
};

} // namespace quillmender
