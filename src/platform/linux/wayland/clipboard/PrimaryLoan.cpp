#include "platform/linux/wayland/clipboard/PrimaryLoan.h"

#include <utility>

namespace quillmender::wayland {

std::optional<OfferedContents> PrimaryLoan::before() const {
    if (!before_ && owner_.isOwner())
        return owner_.contents();
    return before_;
}

DataSource *PrimaryLoan::take(OfferedContents contents, OfferedContents before) {
    DataSource *const source = owner_.own(std::move(contents));
    if (source)
        before_ = std::move(before);
    return source;
}

void PrimaryLoan::giveBack() {
    const auto before = std::exchange(before_, std::nullopt);
    if (!before || !owner_.isOwner())
        return;
    if (before->isEmpty())
        owner_.clear();
    else
        owner_.own(*before);
}

} // namespace quillmender::wayland
