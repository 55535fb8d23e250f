#include "desktop/sessions/Letter.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

namespace quillmender {
namespace {

using harness::CompositorKind;

/// Sessions with the mouse on screens of other scales than 1.
class WaylandScaleTest : public WaylandSessionFixture, public testing::WithParamInterface<double> {
  protected:
    CompositorKind kind() const override { return CompositorKind::sway; }
};

TEST_P(WaylandScaleTest, ThePanelIsWhereTheMouseFindsIt) {
    const QSize pixels = QSize(1280, 800) * GetParam();
    startDesktop({.compositor = {.screen = pixels, .scale = GetParam()}});
    startProgram();
    Letter letter(*this, Letter::Route::accessibility);
    letter.selectWrong();
    pressHotKey();
    waitForPanel(Letter::wrong);
    EXPECT_EQ(desktop().screenshot().size(), pixels);
    answerWith(Letter::right);
    click(QStringLiteral("Fix My Grammar"));
    waitUntilWritten();
    letter.expectText(Letter::mended);
    expectClipboardUntouched();
}

INSTANTIATE_TEST_SUITE_P(On, WaylandScaleTest, testing::Values(1.25, 1.5, 2.0),
                         [](const auto &instance) {
                             constexpr int percent = 100;
                             return std::to_string(qRound(instance.param * percent));
                         });

} // namespace
} // namespace quillmender
