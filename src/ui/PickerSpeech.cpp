#include "ui/PickerSpeech.h"

#include "ui/ActionPickerModel.h"
#include "ui/Announcer.h"

#include <utility>

namespace quillmender {

PickerSpeech::PickerSpeech(const ActionPickerModel &model, QWidget &view)
    : model_(model),
      view_(view),
      announcer_(new Announcer(&view)) {}

QString PickerSpeech::description() const {
    const QString captured = model_.selectedTextPreview();
    QStringList parts;
    if (captured.isEmpty())
        parts.append(QStringLiteral("No text captured yet."));
    else
        parts.append(QStringLiteral("%1: %2").arg(model_.captureTitle(), captured));
    parts.append(model_.captureDescription());
    // An error of an open panel is announced, and not told again with every look at it.
    if (!view_.isVisible())
        parts.append(model_.errorMessage().value_or(QString()));
    parts.removeAll(QString());
    return parts.join(u'\n');
}

void PickerSpeech::render() {
    QWidget *window = view_.window();
    if (const QString now = description(); now != window->accessibleDescription())
        window->setAccessibleDescription(now);

    const bool isWorking = model_.isWorking();
    const bool hasBegun = isWorking && !wasWorking_;
    const bool hasEnded = !isWorking && wasWorking_;
    const std::optional<QString> error = model_.errorMessage();
    const bool hasFailed = error && (hasEnded || error != lastError_);
    wasWorking_ = isWorking;
    lastError_ = error;
    // What is so when the panel comes is a part of its description.
    if (!view_.isVisible())
        return;
    if (hasFailed)
        announcer_->say(*error);
    else if (hasBegun)
        announcer_->say(
            QStringLiteral("Processing\u2026 %1").arg(model_.currentActionTitle()).trimmed());
}

} // namespace quillmender
