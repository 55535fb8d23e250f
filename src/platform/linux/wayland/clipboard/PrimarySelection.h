#pragma once

#include "platform/linux/wayland/clipboard/DataControl.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

namespace quillmender::wayland {

/// What is selected with the mouse, for the middle button (PRIMARY). Nobody knows in which
/// application: what changed while one was in front is most likely its own.
class PrimarySelection : public QObject {
  public:
    /// It outlives this.
    explicit PrimarySelection(DataControl &control);

    /// The plain text that is selected; absent when there is none, or it cannot be had in time. Not
    /// to be asked while the focus is in a password field.
    QCoro::Task<std::optional<QString>> primaryText(std::chrono::milliseconds limit);

    /// Differs from an earlier answer when something else has been selected in between, or nothing.
    qint64 changeCount() const { return changes_; }

  private:
    DataControl &control_;
    qint64 changes_ = 0;
};

} // namespace quillmender::wayland
