#pragma once

#include "DoublesTest.h"
#include "doubles/Frameworks.h"

namespace quillmender {

/// The base of tests on the Objective-C frameworks: a fresh system for each. Fails when an observer
/// is left behind.
class FrameworksTest : public DoublesTest {
  protected:
    FrameworksTest() { doubles::resetFrameworks(); }
    ~FrameworksTest() override { EXPECT_EQ(doubles::observerCount(), 0U); }
};

} // namespace quillmender
