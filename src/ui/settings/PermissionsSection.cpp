#include "ui/settings/PermissionsSection.h"

#include "ui/PushButton.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

namespace quillmender {

PermissionsSection::PermissionsSection(PermissionManager &permissionManager, Theme &theme,
                                       QWidget *parent)
    : FormSection(theme, QStringLiteral("Permissions"), parent),
      permissionManager_(permissionManager) {
    addCaption(QStringLiteral(
        "Accessibility access is required so Quillmender can read the selected text and paste the "
        "transformed result back into the source app."));
    const auto makeButton = [&](const QString &caption, void (PermissionManager::*operation)()) {
        auto *button = new PushButton(theme, caption, PushButton::Prominence::standard, card());
        connect(button, &QPushButton::clicked, this,
                [this, operation] { (permissionManager_.*operation)(); });
        return button;
    };
    auto *statusRow = new QWidget(card());
    status_ = new AlertLabel(theme, TextStyle::body, TextLabel::Tone::primary, statusRow);
    auto *row = new QHBoxLayout(statusRow);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(status_, 1, Qt::AlignVCenter);
    row->addWidget(makeButton(QStringLiteral("Refresh"), &PermissionManager::refresh));
    addRow(statusRow);
    addButtons({makeButton(QStringLiteral("Request Access"),
                           &PermissionManager::requestAccessibilityPermission),
                makeButton(QStringLiteral("Open Privacy Settings"),
                           &PermissionManager::openAccessibilitySettings)});
}

void PermissionsSection::render() {
    const bool granted = permissionManager_.accessibilityGranted();
    status_->setTone(granted ? TextLabel::Tone::success : TextLabel::Tone::error);
    status_->show(granted ? QStringLiteral("Accessibility access granted")
                          : QStringLiteral("Accessibility access not granted"));
}

} // namespace quillmender
