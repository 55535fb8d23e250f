#pragma once

#include "desktop/harness/AnyDesktop.h"

#include <gtest/gtest.h>

namespace quillmender::harness {

/// A fixture with a desktop. When a wait fails, what the screen shows at that moment and all logs
/// are kept in a folder named after the test, in $QUILLMENDER_ARTIFACTS or build/artifacts. After
/// any other failure the same is kept at the end of the test.
class AnyDesktopTest : public testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    /// Null before it is started.
    virtual AnyDesktop *startedDesktop() = 0;

  private:
    void keepArtifacts();

    bool kept_ = false;
};

} // namespace quillmender::harness
