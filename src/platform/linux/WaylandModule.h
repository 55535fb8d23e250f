#pragma once

#include "platform/linux/WindowSystemServices.h"

namespace quillmender {

/// The Wayland backend as a module that lies beside the program and is loaded where it is wanted:
/// in a session with an X server neither it nor the libraries behind it weigh anything.
class WaylandModule {
  public:
    /// It is never unloaded.
    WaylandModule();

    /// As wayland::makeWindowSystem(); nothing where it could not be loaded.
    WindowSystemServices makeWindowSystem(const WindowSystemNeeds &needs) const;

    /// As wayland::serveClipboard(); a failure where it could not be loaded.
    int serveClipboard(int argc, char *argv[]) const;

  private:
    void *handle_;
};

} // namespace quillmender
