#include "platform/linux/x11/selection/PrimaryLoan.h"

namespace quillmender::x11 {

std::optional<SelectionContents> PrimaryLoan::before() const {
    if (!before_ && owner_.isOwner())
        return owner_.contents();
    return before_;
}

void PrimaryLoan::take(SelectionContents contents, SelectionContents before, xcb_window_t reader) {
    before_ = std::move(before);
    owner_.own(std::move(contents), reader);
}

void PrimaryLoan::giveBack() {
    if (!before_)
        return;
    if (owner_.isOwner()) {
        if (before_->isEmpty())
            owner_.release();
        else
            owner_.own(std::move(*before_));
    }
    before_.reset();
}

} // namespace quillmender::x11
