#pragma once

#include "desktop/harness/AnyDesktopTest.h"
#include "desktop/harness/Desktop.h"

namespace quillmender::harness {

/// A fixture with a desktop on X11.
class DesktopTest : public AnyDesktopTest {
  protected:
    /// Tests that want another desktop call this first.
    Desktop &startDesktop(const Desktop::Options &options);

    /// The standard desktop, unless another one was started before.
    Desktop &desktop();

    AnyDesktop *startedDesktop() override { return desktop_.get(); }

  private:
    std::unique_ptr<Desktop> desktop_;
};

} // namespace quillmender::harness
