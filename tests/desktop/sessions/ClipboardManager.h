#pragma once

#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/XcbConnection.h"

#include <QSocketNotifier>

#include <optional>

namespace quillmender {

/// What desktops run so that the clipboard outlives the program that filled it: asked to, it takes
/// over everything that the clipboard's owner has. Works while the event loop runs.
class ClipboardManager {
  public:
    explicit ClipboardManager(const QString &display);
    ClipboardManager(const ClipboardManager &) = delete;
    ClipboardManager &operator=(const ClipboardManager &) = delete;
    ~ClipboardManager();

    bool hasTakenOver() const { return saved_.has_value(); }

  private:
    void handleEvents();
    void save(const xcb_selection_request_event_t &request);

    QString display_;
    harness::XcbConnection connection_;
    xcb_window_t window_;
    std::optional<harness::ClipboardOwner> saved_;
    QSocketNotifier notifier_;
};

} // namespace quillmender
