#pragma once

#include "desktop/harness/Desktop.h"

#include <gtest/gtest.h>

namespace quillmender::harness {

/// A fixture with a desktop. When a wait fails, what the screen shows at that moment and all logs
/// are kept in a folder named after the test, in $QUILLMENDER_ARTIFACTS or build/artifacts. After
/// any other failure the same is kept at the end of the test.
class DesktopTest : public testing::Test {
  protected:
    /// Tests that want another desktop call this first.
    Desktop &startDesktop(const Desktop::Options &options);

    /// The standard desktop, unless another one was started before.
    Desktop &desktop();

    void SetUp() override;
    void TearDown() override;

  private:
    void keepArtifacts();

    bool kept_ = false;
    std::unique_ptr<Desktop> desktop_;
};

} // namespace quillmender::harness
