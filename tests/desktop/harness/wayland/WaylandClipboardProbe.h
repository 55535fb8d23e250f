#pragma once

#include "desktop/harness/ClipboardContents.h"
#include "desktop/harness/wayland/DataControl.h"

#include <optional>

namespace quillmender::harness {

/// Another application that reads a clipboard of a compositor, byte by byte.
class WaylandClipboardProbe {
  public:
    explicit WaylandClipboardProbe(const QString &socketPath,
                                   SelectionKind kind = SelectionKind::clipboard)
        : control_(socketPath),
          kind_(kind) {}

    bool isEmpty() { return control_.current(kind_) == nullptr; }

    /// All types with their bytes, in the order of the offer. Throws HarnessError when the owner
    /// does not come to the end of one in time.
    ClipboardContents read(std::chrono::milliseconds deadline = defaultDeadline);

    /// Absent when it is not offered.
    std::optional<QByteArray> readType(const QByteArray &type,
                                       std::chrono::milliseconds deadline = defaultDeadline);

    /// The first type of plain text that is offered; absent when there is none.
    std::optional<QByteArray> readText(std::chrono::milliseconds deadline = defaultDeadline);

    /// The same, empty when there is none.
    QString text();

  private:
    QByteArray receive(const DataControl::Offer &offer, const QByteArray &type,
                       std::chrono::milliseconds deadline);

    DataControl control_;
    SelectionKind kind_;
};

} // namespace quillmender::harness
