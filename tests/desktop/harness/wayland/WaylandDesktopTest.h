#pragma once

#include "desktop/harness/AnyDesktopTest.h"
#include "desktop/harness/wayland/WaylandDesktop.h"

#include <ostream>
#include <string>

namespace quillmender::harness {

/// A fixture with a desktop on Wayland. It is skipped where the compositor is not installed.
class WaylandDesktopTest : public AnyDesktopTest {
  protected:
    virtual CompositorKind kind() const = 0;

    /// Tests that want another desktop call this first; the compositor stays the fixture's.
    WaylandDesktop &startDesktop(WaylandDesktop::Options options);

    /// The standard desktop, unless another one was started before.
    WaylandDesktop &desktop();

    void SetUp() override;
    AnyDesktop *startedDesktop() override { return desktop_.get(); }

  private:
    std::unique_ptr<WaylandDesktop> desktop_;
};

/// The same with the compositor as its parameter.
class EachCompositorTest : public WaylandDesktopTest,
                           public testing::WithParamInterface<CompositorKind> {
  protected:
    CompositorKind kind() const override { return GetParam(); }
};

/// For INSTANTIATE_TEST_SUITE_P: each compositor, and its name.
inline auto everyCompositor() {
    return testing::Values(CompositorKind::sway, CompositorKind::labwc, CompositorKind::kwin);
}
inline std::string compositorName(const testing::TestParamInfo<CompositorKind> &instance) {
    return nameOf(instance.param);
}
inline void PrintTo(CompositorKind kind, std::ostream *stream) {
    *stream << nameOf(kind);
}

} // namespace quillmender::harness
