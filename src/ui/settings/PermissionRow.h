#pragma once

#include "platform/Capabilities.h"
#include "ui/Theme.h"

#include <QWidget>

namespace quillmender {

class PushButton;
class StatusLabel;
class TextLabel;

/// Something that the session lacks until the user agrees: how it stands, what asking means, and a
/// button that asks.
class PermissionRow : public QWidget {
    Q_OBJECT

  public:
    /// Of a lack that has a permission.
    PermissionRow(Theme &theme, const Lack &lack, QWidget *parent = nullptr);

  private:
    void render();

    std::shared_ptr<Permission> permission_;
    StatusLabel *status_;
    TextLabel *remedy_;
    PushButton *button_;
};

} // namespace quillmender
