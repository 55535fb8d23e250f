#pragma once

#include "model/Observable.h"
#include "model/PromptAction.h"

#include <QList>
#include <QString>

#include <optional>

namespace quillmender {

/// Everything the action picker shows and everything its controls call. `objectWillChange()` is
/// emitted before any of the properties changes; the view reads them all again afterwards.
class ActionPickerModel : public Observable {
    Q_OBJECT

  public:
    using Observable::Observable;

    virtual QString captureTitle() const = 0;
    virtual QString captureDescription() const = 0;
    virtual QString selectedTextPreview() const = 0;
    virtual std::optional<QString> errorMessage() const = 0;
    virtual bool isWorking() const = 0;
    virtual QString currentActionTitle() const = 0;
    virtual QString customInstruction() const = 0;
    virtual void setCustomInstruction(const QString &instruction) = 0;
    virtual QList<PromptAction> actions() const = 0;
    virtual bool accessibilityGranted() const = 0;

    virtual void run(const PromptAction &action) = 0;
    virtual void runCustomInstruction() = 0;
    virtual void requestAccessibilityAccess() = 0;
    virtual void beginWorkflow() = 0;
    virtual void openSettings() = 0;
    virtual void hidePanel() = 0;
};

} // namespace quillmender
