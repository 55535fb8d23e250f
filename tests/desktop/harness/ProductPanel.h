#pragma once

#include "desktop/harness/Accessible.h"

#include <optional>

namespace quillmender::harness {

class AnyDesktop;

/// The panel of the program under test, as the accessibility bus tells of it: not every desktop
/// lists it among its windows.
class ProductPanel {
  public:
    ProductPanel(AnyDesktop &desktop, qint64 processId)
        : desktop_(desktop),
          processId_(processId) {}

    bool isShown() const { return shown().has_value(); }
    /// Shown, and it has the keyboard.
    bool isActive() const;

    /// Where on the screen a widget of it has its middle. Where programs are not told where they
    /// are, a panel that is no window stands in the middle of the screen.
    QPoint middleOf(const Accessible &widget) const;

  private:
    std::optional<Accessible> shown() const;

    AnyDesktop &desktop_;
    qint64 processId_;
};

} // namespace quillmender::harness
