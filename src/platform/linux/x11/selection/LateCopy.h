#pragma once

#include "platform/PasteboardItem.h"

#include <QList>
#include <QObject>
#include <xcb/xcb.h>

#include <optional>

namespace quillmender::x11 {

class ChordWatch;
class X11Connection;

/// Waits for the copy of an application that was typed the chord and had not come round to it when
/// the contents from before were put back.
class LateCopy : public QObject {
    Q_OBJECT

  public:
    LateCopy(X11Connection &connection, const ChordWatch &watch);

    /// To be told of what is put back; waits only where a copy may be to come.
    void expect(const QList<PasteboardItem> &restored);

    void forget() { restored_.reset(); }

    /// To be told of each new owner of the clipboard. What is to be put back again, when that owner
    /// is the application with its late copy; what anybody else copied meanwhile is the user's.
    std::optional<QList<PasteboardItem>> undoneFor(xcb_window_t owner);

  private:
    X11Connection &connection_;
    const ChordWatch &watch_;
    std::optional<QList<PasteboardItem>> restored_;
};

} // namespace quillmender::x11
