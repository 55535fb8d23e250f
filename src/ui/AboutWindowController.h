#pragma once

#include "platform/OwnWindows.h"
#include "ui/Theme.h"

#include <memory>

namespace quillmender {

class HostedWindow;

/// Owns the one about window. It is made once and reused; closing only hides it.
class AboutWindowController {
  public:
    /// Theme and own windows outlive the controller.
    AboutWindowController(const QString &version, Theme &theme, OwnWindows &ownWindows);
    AboutWindowController(const AboutWindowController &) = delete;
    AboutWindowController &operator=(const AboutWindowController &) = delete;
    ~AboutWindowController();

    void centre();
    void makeKeyAndOrderFront();

    HostedWindow *window() const { return window_.get(); }

  private:
    std::unique_ptr<HostedWindow> window_;
};

} // namespace quillmender
