#include "desktop/harness/TestApplication.h"
#include "desktop/wayland/sessions/WaylandSessionFixture.h"

namespace quillmender {
namespace {

using harness::CompositorKind;
using harness::TestApplication;
using harness::waitUntil;

const QString nothingSelected =
    QStringLiteral("Select some text, or place the cursor inside a normal text field so "
                   "Quillmender can capture the whole field when possible.");

/// An application begins to hang in the moment of the copy, and copies long after it was given up.
class LateCopyTest : public WaylandSessionFixture,
                     public testing::WithParamInterface<CompositorKind> {
  protected:
    CompositorKind kind() const override { return GetParam(); }

    void captureTooEarly() {
        pressHotKey();
        waitForPanel(nothingSelected);
        click(QStringLiteral("Close"));
        waitUntilPanelIsGone();
    }

    static void waitUntilCopied(const TestApplication &source) {
        waitUntil([&] { return source.title().endsWith(QStringLiteral("copied")); },
                  QStringLiteral("it has copied"));
    }

    void waitUntilTheUsersIsBack() {
        waitUntil([&] { return desktop().readClipboard().representations == offer(); },
                  QStringLiteral("the user's clipboard is back"));
    }
};

TEST_P(LateCopyTest, OfAProgramOnTheAccessibilityBus) {
    start();
    const auto source = TestApplication::sampleEditor(desktop(), QStringLiteral("stalling"),
                                                      QStringLiteral("recieve"));
    captureTooEarly();
    waitUntilCopied(source);
    waitUntilTheUsersIsBack();
}

TEST_P(LateCopyTest, OfAProgramOffTheBus) {
    start();
    const auto source = TestApplication::sampleEditorOffTheBus(
        desktop(), QStringLiteral("stalling"), QStringLiteral("recieve"));
    captureTooEarly();
    waitUntilCopied(source);
    waitUntilTheUsersIsBack();
}

INSTANTIATE_TEST_SUITE_P(On, LateCopyTest,
                         testing::Values(CompositorKind::sway, CompositorKind::kwin),
                         harness::compositorName);

} // namespace
} // namespace quillmender
