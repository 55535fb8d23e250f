#include "platform/linux/wayland/clipboard/SelectionOwner.h"

#include <utility>

namespace quillmender::wayland {

SelectionOwner::SelectionOwner(DataControl &control, Selection selection)
    : control_(control),
      selection_(selection) {
    connect(&control_, &DataControl::offered, this, [this](Selection changed) {
        if (changed == selection_)
            handleOffer();
    });
    connect(&control_, &DataControl::ended, this, &SelectionOwner::lose);
}

DataSource *SelectionOwner::own(OfferedContents contents) {
    if (!control_.isUsable())
        return nullptr;
    auto *const source = new DataSource(control_, std::move(contents));
    connect(source, &DataSource::cancelled, this, [this, source] {
        if (source_ == source)
            lose();
    });
    // The former one goes afterwards: nobody sees an emptiness in between.
    control_.set(selection_, source->proxy());
    if (const QPointer<DataSource> former = std::exchange(source_, source))
        former->retire();
    return source;
}

void SelectionOwner::clear() {
    if (!control_.isUsable())
        return;
    control_.set(selection_, nullptr);
    if (const QPointer<DataSource> former = std::exchange(source_, nullptr))
        former->retire();
    ++clearings_;
    control_.afterRoundTrip(this, [this] {
        --clearings_;
        if (clearings_ == 0 && !source_ && control_.offer(selection_))
            Q_EMIT changedByOthers();
    });
}

OfferedContents SelectionOwner::contents() const {
    return source_ ? source_->contents() : OfferedContents();
}

void SelectionOwner::handleOffer() {
    // Until a source of ours is cancelled, what is said to be offered is that one, or an older one
    // that it has replaced; and an emptiness made here is known already.
    if (!source_ && clearings_ == 0)
        Q_EMIT changedByOthers();
}

void SelectionOwner::lose() {
    if (const QPointer<DataSource> former = std::exchange(source_, nullptr))
        former->deleteLater();
    Q_EMIT changedByOthers();
}

} // namespace quillmender::wayland
