#pragma once

#include "desktop/harness/ClipboardContents.h"
#include "desktop/harness/Waiter.h"

#include <QString>

#include <memory>
#include <optional>

namespace quillmender::harness {

class XcbConnection;

/// Another application that reads an X selection, byte by byte.
class ClipboardProbe {
  public:
    explicit ClipboardProbe(const QString &display, QByteArray selection = "CLIPBOARD");
    ClipboardProbe(const ClipboardProbe &) = delete;
    ClipboardProbe &operator=(const ClipboardProbe &) = delete;
    ~ClipboardProbe();

    /// XCB_WINDOW_NONE when the selection has no owner.
    xcb_window_t owner();

    /// All targets with their bytes. Throws HarnessError when the owner does not answer in time.
    ClipboardContents read(std::chrono::milliseconds deadline = defaultDeadline);

    /// One target; absent when the owner refuses it.
    std::optional<ClipboardRepresentation>
    readTarget(const QByteArray &target, std::chrono::milliseconds deadline = defaultDeadline);

    /// UTF8_STRING; empty when there is none.
    QString text();

  private:
    struct Property {
        xcb_atom_t type = XCB_ATOM_NONE;
        int format = 8;
        QByteArray bytes;
    };

    Property takeProperty();
    void request(xcb_atom_t target);
    xcb_atom_t waitForAnswer(std::chrono::milliseconds deadline);
    void waitForNewValue(std::chrono::milliseconds deadline);

    std::unique_ptr<XcbConnection> connection_;
    xcb_atom_t selection_;
    xcb_window_t window_;
};

} // namespace quillmender::harness
