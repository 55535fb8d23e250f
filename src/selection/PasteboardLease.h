#pragma once

#include "platform/Lease.h"

#include <QCoroTask>
#include <QObject>

namespace quillmender {

/// Hands the borrowed pasteboard to one operation at a time. A capture that began while a paste has
/// the answer on the pasteboard would take that answer for the user's own contents.
class PasteboardLease : public QObject {
    Q_OBJECT

  public:
    /// Completes when nobody else holds it.
    QCoro::Task<Lease> acquire();

    /// Which one in the row of holders the present one is, or the last one was.
    quint64 turn() const { return turn_; }

  Q_SIGNALS:
    void released();

  private:
    bool isHeld_ = false;
    quint64 turn_ = 0;
};

} // namespace quillmender
