#pragma once

#include "desktop/harness/Desktop.h"

namespace quillmender::applications {

/// While it exists, an application that starts finds no accessibility bus by any of the ways there
/// are: the environment, the root window, and the switch on the session bus.
class HiddenBus {
  public:
    /// Changes the environment of the command that is to be started.
    HiddenBus(harness::Desktop &desktop, harness::Command &command);
    HiddenBus(const HiddenBus &) = delete;
    HiddenBus &operator=(const HiddenBus &) = delete;
    ~HiddenBus();

  private:
    harness::Desktop &desktop_;
    QByteArray address_;
};

} // namespace quillmender::applications
