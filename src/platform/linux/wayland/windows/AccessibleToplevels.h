#pragma once

#include "platform/linux/FrontWindows.h"
#include "platform/linux/wayland/Toplevels.h"

#include <QTimer>

namespace quillmender::wayland {

/// The windows of a compositor that tells of none, as the applications themselves tell of them.
/// None of them can be activated: the compositor gives the keyboard back when a window of ours is
/// hidden.
class AccessibleToplevels : public Toplevels {
    Q_OBJECT

  public:
    /// How long after it a window that has let go of the keyboard counts as the active one, while
    /// ours is getting it or has let go of it, too. It passes on within a tenth of a second.
    static constexpr std::chrono::milliseconds handover{1000};

    /// The windows must outlive the object.
    explicit AccessibleToplevels(const FrontWindows &windows);

    std::optional<Toplevel> active() const override;
    bool hasKeyboard(const QByteArray &id) const override;
    bool activate(const QByteArray &id) override;

  private:
    void handleFront();
    void handleFocus();

    const FrontWindows &windows_;
    QTimer handover_; ///< runs while the keyboard is on its way between it and us
};

} // namespace quillmender::wayland
