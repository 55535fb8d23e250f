#include "desktop/soak/SoakRun.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

namespace quillmender {
namespace {

using harness::TestApplication;

class WaylandSoakTest : public WaylandSessionFixture {
  protected:
    harness::CompositorKind kind() const override { return harness::CompositorKind::sway; }
};

TEST_F(WaylandSoakTest, ManySessionsLeaveNothingBehind) {
    start();
    SoakRun run(*this);
    run.add(makeField(*this, TestApplication::mousepad(desktop(), soakLetter())));
    run.add(makeField(
        *this, TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), soakLetter())));
    run.add(makeTerminal(*this));
    run.play([] { return 0; });
}

} // namespace
} // namespace quillmender
