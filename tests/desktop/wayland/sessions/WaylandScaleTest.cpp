#include "desktop/harness/wayland/SwayCompositor.h"
#include "desktop/sessions/Letter.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

#include <QJsonArray>
#include <QJsonObject>

namespace quillmender {
namespace {

using harness::CompositorKind;

/// Sessions with the mouse on screens of other scales than 1.
class WaylandScaleTest : public WaylandSessionFixture, public testing::WithParamInterface<double> {
  protected:
    CompositorKind kind() const override { return CompositorKind::sway; }

    double scaleOfScreen() {
        const harness::SwayIpc &ipc =
            dynamic_cast<harness::SwayCompositor &>(desktop().compositor()).ipc();
        return ipc.ask(harness::SwayIpc::Message::getOutputs)
            .array()
            .first()
            .toObject()
            .value(QLatin1String("scale"))
            .toDouble();
    }
};

TEST_P(WaylandScaleTest, ThePanelIsWhereTheMouseFindsIt) {
    startDesktop({.compositor = {.screen = QSize(1280, 800) * GetParam(), .scale = GetParam()}});
    ASSERT_EQ(scaleOfScreen(), GetParam());
    startProgram();
    Letter letter(*this, Letter::Route::accessibility);
    letter.selectWrong();
    pressHotKey();
    waitForPanel(Letter::wrong);
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
