#include "ui/settings/PermissionsSection.h"

#include "ui/PushButton.h"
#include "ui/StatusLabel.h"
#include "ui/settings/LackRow.h"

#include <QHBoxLayout>

namespace quillmender {

PermissionsSection::PermissionsSection(PermissionManager &permissionManager,
                                       const MissingCapabilities &missing, Theme &theme,
                                       QWidget *parent)
    : FormSection(theme, QStringLiteral("Permissions"), parent),
      permissionManager_(permissionManager) {
    addCaption(QStringLiteral(
        "Accessibility access is required so Quillmender can read the selected text and paste the "
        "transformed result back into the source app."));
    const auto makeButton = [&](const QString &caption, auto operation) {
        auto *button = new PushButton(theme, caption, PushButton::Prominence::standard, card());
        connect(button, &QPushButton::clicked, this, operation);
        return button;
    };
    auto *statusRow = new QWidget(card());
    status_ = new StatusLabel(theme, TextStyle::body, TextLabel::Tone::primary, statusRow);
    auto *row = new QHBoxLayout(statusRow);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(status_, 1, Qt::AlignVCenter);
    auto *refreshButton = makeButton(QStringLiteral("Refresh"), [this] { refresh(); });
    row->addWidget(refreshButton);
    addRow(statusRow);
    addButtons({makeButton(QStringLiteral("Request Access"),
                           [this] { permissionManager_.requestAccessibilityPermission(); }),
                makeButton(QStringLiteral("Open Privacy Settings"),
                           [this] { permissionManager_.openAccessibilitySettings(); })});
    for (auto lack = missing.cbegin(); lack != missing.cend(); ++lack) {
        // The shortcut has a section of its own.
        if (lack.key() != Capability::hotKeys)
            addRow(new LackRow(theme, *lack, card()));
    }
}

void PermissionsSection::refresh() {
    const QString before = status_->text();
    permissionManager_.refresh();
    render();
    // Who has asked is answered, also when nothing has changed.
    if (status_->text() == before)
        status_->repeat();
}

void PermissionsSection::render() {
    const bool granted = permissionManager_.accessibilityGranted();
    status_->setTone(granted ? TextLabel::Tone::success : TextLabel::Tone::error);
    status_->tell(granted ? QStringLiteral("Accessibility access granted")
                          : QStringLiteral("Accessibility access not granted"));
}

} // namespace quillmender
