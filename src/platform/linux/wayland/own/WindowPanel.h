#pragma once

#include "platform/linux/wayland/own/PanelStanding.h"

#include <QPointer>
#include <QString>
#include <QWindow>

#include <functional>

namespace quillmender::wayland {

/// The panel as an ordinary window, where there is no layer shell: the compositor gives a window
/// that appears the keyboard, as a rule, and may tile it or put others above it.
class WindowPanel : public PanelStanding {
  public:
    /// `swayCommand` runs a command of a compositor that speaks sway's; empty elsewhere.
    explicit WindowPanel(std::function<void(const QString &)> swayCommand);

    void prepare(QWindow &panel) override;
    void aboutToShow(bool takesKeyboard) override;
    void takeKeyboard() override;
    void giveWay() override {}

  private:
    std::function<void(const QString &)> swayCommand_;
    QPointer<QWindow> panel_;
};

} // namespace quillmender::wayland
