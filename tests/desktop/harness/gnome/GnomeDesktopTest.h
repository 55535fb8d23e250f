#pragma once

#include "desktop/harness/AnyDesktopTest.h"
#include "desktop/harness/gnome/GnomeDesktop.h"

namespace quillmender::harness {

/// A fixture with a GNOME desktop. It is skipped where GNOME is not installed.
class GnomeDesktopTest : public AnyDesktopTest {
  protected:
    /// Tests that want another desktop call this first.
    GnomeDesktop &startDesktop(const GnomeDesktop::Options &options);

    /// The standard desktop, unless another one was started before.
    GnomeDesktop &desktop();

    void SetUp() override;
    AnyDesktop *startedDesktop() override { return desktop_.get(); }

  private:
    std::unique_ptr<GnomeDesktop> desktop_;
};

} // namespace quillmender::harness
