#pragma once

#include "ui/Theme.h"

#include <QPushButton>

namespace quillmender {

/// What every button of ours has in common: Space and Enter press it, its caption is its accessible
/// name, and it has no mnemonic, so that a caption never makes a shortcut. A button that is
/// disabled keeps the keyboard focus, so that the next key cannot press another one.
class Button : public QPushButton {
    Q_OBJECT

  public:
    explicit Button(Theme &theme, QWidget *parent = nullptr);

    QString caption() const { return accessibleName(); }
    void setCaption(const QString &caption);

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent *event) override = 0;

    /// What the tool tip says; empty when everything of the button can be read.
    virtual QString unreadablePart() const { return {}; }
    bool isHovered() const { return isEnabled() && underMouse(); }

    Theme &theme_;
};

} // namespace quillmender
