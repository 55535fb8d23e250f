#include "PanelFixture.h"
#include "ui/ActionTile.h"
#include "ui/Spinner.h"

#include <QScrollArea>
#include <QScrollBar>

namespace quillmender {

namespace {

class ContentTest : public PanelFixture {};

} // namespace

TEST_F(ContentTest, TextsAreThose) {
    show();
    EXPECT_TRUE(shows("Quillmender"));
    EXPECT_TRUE(shows("Transform the captured text and replace it in place."));
    EXPECT_TRUE(shows("Selected Text"));
    EXPECT_TRUE(shows("some text"));
    EXPECT_TRUE(shows("Using only the highlighted text."));
    EXPECT_TRUE(shows("Generate From Prompt"));
    EXPECT_TRUE(shows("Type what you want to generate. Quillmender will use the captured text as "
                      "the source prompt or raw notes."));
    EXPECT_EQ(editor()->placeholderText().toStdString(),
              "Example: Turn this into a formal complaint email asking for a refund.");
}

TEST_F(ContentTest, NothingCapturedIsSaid) {
    model.change([](auto &state) {
        state.preview.clear();
        state.description.clear();
    });
    show();
    EXPECT_TRUE(shows("No text captured yet."));
    EXPECT_FALSE(shows(""));
}

TEST_F(ContentTest, ProgressRowNamesTheRunningAction) {
    show();
    EXPECT_FALSE(shows("Fix My Grammar"));
    change([](auto &state) {
        state.working = true;
        state.running = QStringLiteral("Fix My Grammar");
    });
    EXPECT_TRUE(shows("Fix My Grammar"));
    change([](auto &state) { state.running.clear(); });
    EXPECT_TRUE(shows("Processing\u2026"));
    change([](auto &state) { state.working = false; });
    EXPECT_FALSE(shows("Processing\u2026"));
}

TEST_F(ContentTest, SpinnerTurnsOnlyWhileItIsSeen) {
    show();
    const auto *spinner = controller.panel()->findChild<Spinner *>();
    EXPECT_FALSE(spinner->isAnimating());
    change([](auto &state) { state.working = true; });
    EXPECT_TRUE(spinner->isAnimating());
    controller.orderOut();
    EXPECT_FALSE(spinner->isAnimating());
    controller.makeKeyAndOrderFront();
    EXPECT_TRUE(spinner->isAnimating());
    change([](auto &state) { state.working = false; });
    EXPECT_FALSE(spinner->isAnimating());
}

TEST_F(ContentTest, ErrorIsShownWithTheAccessButtonOnlyWhileAccessIsMissing) {
    show();
    const QString request = QStringLiteral("Request Accessibility Access");
    EXPECT_FALSE(button(request));
    change([](auto &state) { state.granted = false; });
    EXPECT_FALSE(button(request)) << "no error";
    change([](auto &state) { state.error = QStringLiteral("It failed."); });
    EXPECT_TRUE(shows("It failed."));
    EXPECT_TRUE(button(request));
    change([](auto &state) { state.granted = true; });
    EXPECT_TRUE(shows("It failed."));
    EXPECT_FALSE(button(request));
    change([](auto &state) { state.error.reset(); });
    EXPECT_FALSE(shows("It failed."));
}

TEST_F(ContentTest, ActionsStandInTwoColumnsInTheirOrder) {
    show();
    settle();
    const auto tiles = controller.panel()->findChildren<ActionTile *>();
    ASSERT_EQ(tiles.size(), 7);
    for (qsizetype i = 0; i < tiles.size(); ++i) {
        EXPECT_EQ(tiles[i]->action(), model.state().actions[i]);
        EXPECT_GE(tiles[i]->height(), 72);
        EXPECT_EQ(tiles[i]->x() > 0, i % 2 == 1);
        EXPECT_EQ(tiles[i]->y(), tiles[i - i % 2]->y());
    }
    EXPECT_EQ(tiles[1]->x() - tiles[0]->geometry().right() - 1, 12);
    EXPECT_EQ(tiles[2]->y() - tiles[0]->geometry().bottom() - 1, 12);
}

TEST_F(ContentTest, ActionsComeAndGoWithTheModel) {
    show();
    change([](auto &state) {
        for (int i = 0; i < 40; ++i)
            state.actions.append(PromptAction::custom(
                {QUuid::createUuid(), QStringLiteral("Custom %1").arg(i), QString()}));
    });
    EXPECT_TRUE(button(QStringLiteral("Custom 39")));
    EXPECT_EQ(buttons().size(), 47 + 4);
    change([](auto &state) { state.actions = state.actions.mid(1, 2); });
    EXPECT_EQ(buttons().size(), 2 + 4);
    EXPECT_FALSE(button(QStringLiteral("Formalize")));
    EXPECT_TRUE(button(QStringLiteral("Simplify")));
}

TEST_F(ContentTest, TallContentScrollsBetweenHeaderAndFooter) {
    model.change([](auto &state) { state.error = QString(5000, u'e'); });
    show();
    auto *area = controller.panel()->findChild<QScrollArea *>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return area->verticalScrollBar()->maximum() > 0; }, 5000));
    const Button *close = button(QStringLiteral("Close"));
    EXPECT_FALSE(area->isAncestorOf(close));
    EXPECT_GE(close->mapTo(controller.panel(), QPoint()).y(), area->geometry().bottom());
    EXPECT_EQ(area->widget()->width(), area->viewport()->width()) << "never sideways";
}

} // namespace quillmender
