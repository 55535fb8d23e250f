#pragma once

#include "platform/Capabilities.h"
#include "ui/Theme.h"

#include <QWidget>

namespace quillmender {

class PushButton;
class StatusLabel;
class TextLabel;

/// Something that the session lacks, and what can be done. Where the user can be asked for it: how
/// that stands, what asking means, and a button that asks.
class LackRow : public QWidget {
    Q_OBJECT

  public:
    LackRow(Theme &theme, const Lack &lack, QWidget *parent = nullptr);

  private:
    void addButton(Theme &theme);
    void render();

    std::shared_ptr<Permission> permission_; ///< may be null
    StatusLabel *status_;
    TextLabel *remedy_;
    PushButton *button_ = nullptr; ///< where there is a permission
};

} // namespace quillmender
