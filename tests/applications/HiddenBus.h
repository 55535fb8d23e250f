#pragma once

#include "desktop/harness/AnyDesktop.h"
#include "desktop/harness/XcbConnection.h"

namespace quillmender::applications {

/// While it exists, an application that starts finds no accessibility bus by any of the ways there
/// are: the environment, the root window, and the switch on the session bus.
class HiddenBus {
  public:
    /// Changes the environment of the command that is to be started.
    HiddenBus(harness::AnyDesktop &desktop, harness::Command &command);
    HiddenBus(const HiddenBus &) = delete;
    HiddenBus &operator=(const HiddenBus &) = delete;
    ~HiddenBus();

  private:
    harness::AnyDesktop &desktop_;
    /// Null where there is no X server.
    std::unique_ptr<harness::XcbConnection> server_;
    QByteArray address_;
};

} // namespace quillmender::applications
