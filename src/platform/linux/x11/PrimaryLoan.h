#pragma once

#include "platform/linux/x11/SelectionOwner.h"

#include <QCoroTask>

#include <optional>

namespace quillmender {

/// The PRIMARY selection, borrowed for a paste into a terminal and then given back with what it
/// held before.
class PrimaryLoan {
  public:
    PrimaryLoan(X11Connection &connection, const PasteRecord &pastes);

    /// Offers the contents as PRIMARY after what is there now has been read.
    QCoro::Task<> take(SelectionContents contents);

    /// As the owner of both selections does.
    void exchange(SelectionContents contents) { owner_.exchange(std::move(contents)); }

    /// Does nothing without a loan, or when the user has selected something else meanwhile.
    void giveBack();

    /// As the owner of both selections does.
    void refuse(xcb_window_t window) { owner_.refuse(window); }

    const SelectionOwner &owner() const { return owner_; }

  private:
    X11Connection &connection_;
    SelectionOwner owner_;
    std::optional<SelectionContents> before_;
};

} // namespace quillmender
