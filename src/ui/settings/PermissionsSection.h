#pragma once

#include "platform/Capabilities.h"
#include "selection/PermissionManager.h"
#include "ui/FormSection.h"

namespace quillmender {

class StatusLabel;

/// Whether texts of other applications can be read, and how to get there; and what else the
/// desktop lacks.
class PermissionsSection : public FormSection {
    Q_OBJECT

  public:
    PermissionsSection(PermissionManager &permissionManager, const MissingCapabilities &missing,
                       Theme &theme, QWidget *parent = nullptr);

    void render() override;

  private:
    void refresh();

    PermissionManager &permissionManager_;
    StatusLabel *status_;
};

} // namespace quillmender
