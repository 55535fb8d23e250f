#include "PanelFixture.h"

#include <QSignalSpy>

namespace quillmender {

namespace {

class RenderTest : public PanelFixture {};

} // namespace

TEST_F(RenderTest, ManyChangesOfOneTurnRenderOnce) {
    show();
    settle();
    const QSignalSpy rendered(controller.view(), &ActionPickerView::rendered);
    for (int i = 0; i < 50; ++i)
        model.change([i](auto &state) { state.preview = QString::number(i); });
    EXPECT_EQ(rendered.count(), 0) << "the change has only been announced";
    settle();
    EXPECT_EQ(rendered.count(), 1);
    EXPECT_TRUE(shows("49"));
    settle();
    EXPECT_EQ(rendered.count(), 1);
}

TEST_F(RenderTest, HiddenPanelDoesNotReadTheModel) {
    show();
    controller.orderOut();
    settle();
    model.reads = 0;
    change([](auto &state) { state.preview = QStringLiteral("later"); });
    EXPECT_EQ(model.reads, 0);
    controller.makeKeyAndOrderFront();
    EXPECT_TRUE(shows("later")) << "before the first frame";
    EXPECT_EQ(model.reads, 1);
    settle();
    EXPECT_EQ(model.reads, 1);
}

TEST_F(RenderTest, ChangesJustBeforeTheShowAreShownByIt) {
    show();
    model.change([](auto &state) { state.preview = QStringLiteral("new"); });
    controller.makeKeyAndOrderFront();
    EXPECT_TRUE(shows("new"));
}

TEST_F(RenderTest, AViewThatIsGoneIsNotRendered) {
    {
        ActionPanelController other(model, theme, ownWindows);
        other.makeKeyAndOrderFront();
        model.change([](auto &state) { state.preview = QStringLiteral("x"); });
    }
    settle();
    model.change([](auto &state) { state.preview = QStringLiteral("y"); });
    settle();
}

} // namespace quillmender
