#include "PanelFixture.h"

namespace quillmender {

namespace {

class ControlsTest : public PanelFixture {};

struct Case {
    const char *name;
    bool working;
    bool error;
    bool captured;
    const char *instruction;
    bool actions;
    bool generate;
    bool captureAndSettings;
};

class EnabledTest : public PanelFixture, public testing::WithParamInterface<Case> {};

const Case cases[] = {
    {"captured", false, false, true, "do it", true, true, true},
    {"capturedWithError", false, true, true, "do it", true, true, true},
    {"nothingCaptured", false, false, false, "do it", true, false, true},
    {"nothingCapturedWithError", false, true, false, "do it", false, false, true},
    {"noInstruction", false, false, true, "", true, false, true},
    {"blankInstruction", false, false, true, " \t\n\u3000", true, false, true},
    {"working", true, false, true, "do it", false, false, false},
    {"workingWithError", true, true, true, "do it", false, false, false},
    {"workingNothingCaptured", true, true, false, "", false, false, false},
};

} // namespace

TEST_P(EnabledTest, Matrix) {
    const Case &expected = GetParam();
    show();
    change([&](auto &state) {
        state.working = expected.working;
        if (expected.error)
            state.error = QStringLiteral("failed");
        if (!expected.captured)
            state.preview.clear();
        state.instruction = QString::fromUtf8(expected.instruction);
        state.granted = false;
    });
    EXPECT_EQ(isEnabled("Formalize"), expected.actions);
    EXPECT_EQ(isEnabled("Fix My Grammar"), expected.actions);
    EXPECT_EQ(isEnabled("Generate"), expected.generate);
    EXPECT_EQ(isEnabled("Capture Again"), expected.captureAndSettings);
    EXPECT_EQ(isEnabled("Settings"), expected.captureAndSettings);
    EXPECT_TRUE(isEnabled("Close"));
    EXPECT_TRUE(editor()->isEnabled());
    EXPECT_FALSE(editor()->isReadOnly());
    EXPECT_EQ(button(QStringLiteral("Request Accessibility Access")) != nullptr, expected.error);
}

INSTANTIATE_TEST_SUITE_P(, EnabledTest, testing::ValuesIn(cases),
                         [](const auto &one) { return std::string(one.param.name); });

TEST_F(ControlsTest, EachControlCallsItsOperation) {
    model.change([](auto &state) {
        state.error = QStringLiteral("failed");
        state.granted = false;
        state.instruction = QStringLiteral("do it");
    });
    show();
    for (const char *caption : {"Simplify", "Request Accessibility Access", "Generate",
                                "Capture Again", "Settings", "Close"})
        button(QString::fromLatin1(caption))->click();
    EXPECT_EQ(model.calls,
              QStringList({QStringLiteral("run builtin-simplify"),
                           QStringLiteral("requestAccessibilityAccess"),
                           QStringLiteral("runCustomInstruction"), QStringLiteral("beginWorkflow"),
                           QStringLiteral("openSettings"), QStringLiteral("hidePanel")}));
}

TEST_F(ControlsTest, DisabledActionDoesNotRun) {
    model.change([](auto &state) { state.working = true; });
    show();
    QTest::mouseClick(button(QStringLiteral("Formalize")), Qt::LeftButton);
    EXPECT_EQ(model.calls, QStringList());
}

} // namespace quillmender
