#pragma once

#include "platform/linux/x11/selection/SelectionOwner.h"

#include <optional>

namespace quillmender::x11 {

/// The PRIMARY selection, borrowed for a paste into a terminal and then given back with what it
/// held before.
class PrimaryLoan {
  public:
    PrimaryLoan(X11Connection &connection, SelectionReach reach)
        : owner_(connection, XCB_ATOM_PRIMARY, reach) {}

    /// What will be given back, where it need not be read from another application.
    std::optional<SelectionContents> before() const;

    /// Offers the contents as PRIMARY to who acts for the window `reader`.
    void take(SelectionContents contents, SelectionContents before, xcb_window_t reader);

    /// Does nothing without a loan, or when the user has selected something else meanwhile.
    void giveBack();

    SelectionOwner &owner() { return owner_; }

  private:
    SelectionOwner owner_;
    std::optional<SelectionContents> before_;
};

} // namespace quillmender::x11
