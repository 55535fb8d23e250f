#pragma once

#include "platform/linux/BridgedClipboard.h"
#include "platform/linux/x11/keys/ChordWatch.h"
#include "platform/linux/x11/selection/X11Pasteboard.h"
#include "platform/linux/x11/windows/WindowPing.h"

namespace quillmender::x11 {

/// The CLIPBOARD of the X server beside a compositor, on a connection of its own: the compositor
/// hands on what is copied on either side to the other, whoever has the focus.
class BridgedPasteboard : public Pasteboard {
  public:
    explicit BridgedPasteboard(std::unique_ptr<X11Connection> connection);

    QCoro::Task<QList<PasteboardItem>> items() override { return pasteboard_.items(); }
    QCoro::Task<std::optional<QList<PasteboardItem>>>
    itemsWithin(std::chrono::milliseconds limit) override {
        return pasteboard_.itemsWithin(limit);
    }
    qint64 changeCount() override { return pasteboard_.changeCount(); }
    void replaceContents(const QList<PasteboardItem> &items) override;
    QCoro::Task<std::optional<QString>> string() override { return pasteboard_.string(); }

    /// The text is for whomever asks when the chord is out: of a reader nobody tells.
    LentTextRef lend(const QString &text, RunningApplicationRef reader) override;

    /// The compositor keeps the text when we have gone, and nothing besides.
    QCoro::Task<> handOver() override { return pasteboard_.handOver(); }

    X11Connection &connection() const { return *connection_; }

  private:
    std::unique_ptr<X11Connection> connection_;
    WindowPing ping_;
    ChordWatch watch_; ///< of chords that are typed on the server: there are none
    X11Pasteboard pasteboard_;
};

/// Of the server that `DISPLAY` names. Waits for ten seconds where the server is only started by this,
/// since a session that has just begun is busy. Empty when there is none.
BridgedClipboard openBridgedClipboard();

} // namespace quillmender::x11
