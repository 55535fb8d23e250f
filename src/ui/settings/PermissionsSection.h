#pragma once

#include "selection/PermissionManager.h"
#include "ui/FormSection.h"

namespace quillmender {

class StatusLabel;

/// Whether texts of other applications can be read, and how to get there.
class PermissionsSection : public FormSection {
    Q_OBJECT

  public:
    PermissionsSection(PermissionManager &permissionManager, Theme &theme,
                       QWidget *parent = nullptr);

    void render() override;

  private:
    void refresh();

    PermissionManager &permissionManager_;
    StatusLabel *status_;
};

} // namespace quillmender
