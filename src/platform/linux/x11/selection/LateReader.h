#pragma once

#include <QObject>
#include <QTimer>
#include <xcb/xcb.h>

namespace quillmender::x11 {

class ChordWatch;
class SelectionOwner;

/// Refuses the selections to an application that has its paste still ahead of it when the text has
/// been given up: it would paste what is there by then. It is refused until it has come round.
class LateReader : public QObject {
    Q_OBJECT

  public:
    LateReader(const ChordWatch &watch, SelectionOwner &clipboard, SelectionOwner &primary);

    /// Whether the paste that was typed into this window may still be ahead of it.
    bool isLate(xcb_window_t window) const;

    void refuse(xcb_window_t window);

    /// Refuses nobody, from now on.
    void forgive();

  private:
    void tellOwners(xcb_window_t window);

    const ChordWatch &watch_;
    SelectionOwner &clipboard_;
    SelectionOwner &primary_;
    QTimer end_;
};

} // namespace quillmender::x11
