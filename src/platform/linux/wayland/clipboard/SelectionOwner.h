#pragma once

#include "platform/linux/wayland/clipboard/DataControl.h"
#include "platform/linux/wayland/clipboard/DataSource.h"

#include <QObject>
#include <QPointer>

namespace quillmender::wayland {

/// What this program offers as one selection, and who has it.
class SelectionOwner : public QObject {
    Q_OBJECT

  public:
    SelectionOwner(DataControl &control, Selection selection);

    /// Takes the selection, or gives it new contents. Null when the compositor is gone, or has no
    /// seat. What is offered is the control's own; it may go before.
    DataSource *own(OfferedContents contents);

    /// Leaves the selection empty, whoever has it.
    void clear();

    /// As far as it was told.
    bool isOwner() const { return source_ != nullptr; }

    /// What is offered; empty when nothing is.
    OfferedContents contents() const;

  Q_SIGNALS:
    /// Somebody else has taken the selection, or whoever had it has given it up.
    void changedByOthers();

  private:
    void handleOffer();
    void lose();

    DataControl &control_;
    Selection selection_;
    QPointer<DataSource> source_;
    int clearings_ = 0; ///< that the compositor has not taken note of yet
};

} // namespace quillmender::wayland
