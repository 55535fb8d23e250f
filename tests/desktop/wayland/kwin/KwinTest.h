#pragma once

#include "desktop/harness/Waiter.h"
#include "desktop/wayland/kwin/TestUser.h"
#include "desktop/wayland/kwin/TestWindowProcess.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <gtest/gtest.h>

namespace quillmender {

/// A connection of the product's own and somebody in front of the machine.
class KwinTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(connection_);
        user_.emplace();
    }

    const std::unique_ptr<wayland::WaylandConnection> connection_ =
        wayland::WaylandConnection::open();
    std::optional<TestUser> user_;
};

} // namespace quillmender
