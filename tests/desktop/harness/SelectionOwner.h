#pragma once

#include <QByteArray>
#include <QList>

namespace quillmender::harness {

/// An application that has put something on a clipboard and serves it, as long as this object lives
/// and no other application has taken the clipboard.
class SelectionOwner {
  public:
    virtual ~SelectionOwner() = default;

    /// False once another application has taken the clipboard.
    virtual bool ownsSelection() const = 0;

    /// The data types that were asked for so far, in order.
    virtual QList<QByteArray> requests() const = 0;
};

} // namespace quillmender::harness
