#include "platform/linux/x11/PrimaryLoan.h"

#include "platform/linux/x11/SelectionReader.h"

namespace quillmender {

using namespace std::chrono_literals;

PrimaryLoan::PrimaryLoan(X11Connection &connection, const PasteRecord &pastes)
    : connection_(connection),
      owner_(connection, XCB_ATOM_PRIMARY, pastes) {}

QCoro::Task<> PrimaryLoan::take(SelectionContents contents) {
    if (!before_ && owner_.isOwner()) {
        before_ = owner_.contents();
    } else if (!before_) {
        SelectionReader reader(connection_, XCB_ATOM_PRIMARY);
        // The paste waits for it.
        const SelectionReader::Reading reading = co_await reader.readAll(TransferBudget(1s));
        before_ = reading.contents;
    }
    owner_.own(std::move(contents), SelectionOwner::Audience::sourceOfPaste);
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

} // namespace quillmender
