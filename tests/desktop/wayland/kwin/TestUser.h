#pragma once

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/kwin/KwinProxies.h"

#include <memory>

namespace quillmender {

/// Types as somebody in front of the machine would, on a connection of its own.
class TestUser {
  public:
    TestUser();
    /// Lets go of everything.
    ~TestUser();

    void press(quint32 code);
    void release(quint32 code);
    void tap(quint32 code);

  private:
    void send(quint32 code, bool isDown);

    std::unique_ptr<wayland::WaylandConnection> connection_;
    wayland::Proxy<org_kde_kwin_fake_input> input_;
    QList<quint32> down_;
};

} // namespace quillmender
