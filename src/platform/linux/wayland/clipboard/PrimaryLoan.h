#pragma once

#include "platform/linux/wayland/clipboard/SelectionOwner.h"

#include <optional>

namespace quillmender::wayland {

/// The PRIMARY selection, borrowed for a paste into a terminal and then given back with what it
/// held before.
class PrimaryLoan {
  public:
    explicit PrimaryLoan(DataControl &control) : owner_(control, Selection::primary) {}

    /// What will be given back, where it need not be read from another application.
    std::optional<OfferedContents> before() const;

    /// Offers the contents as PRIMARY. Null when that cannot be; the loan is as it was then.
    DataSource *take(OfferedContents contents, OfferedContents before);

    /// Does nothing without a loan, or when the user has selected something else meanwhile.
    void giveBack();

    bool isOwner() const { return owner_.isOwner(); }

  private:
    SelectionOwner owner_;
    std::optional<OfferedContents> before_;
};

} // namespace quillmender::wayland
