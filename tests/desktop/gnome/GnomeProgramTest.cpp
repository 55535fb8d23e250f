#include "desktop/harness/ProductPanel.h"
#include "desktop/harness/ProductProcess.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"

#include <X11/keysym.h>

namespace quillmender {
namespace {

using harness::ProductProcess;
using harness::waitUntil;

/// The program and its hot key.
class GnomeProgramTest : public harness::GnomeDesktopTest {
  protected:
    void startProgram() {
        program_.emplace(desktop(),
                         ProductProcess::openAi(QStringLiteral("http://127.0.0.1:9/v1/responses")));
        program_->waitUntilReady();
    }

    bool isPanelActive() { return harness::ProductPanel(desktop(), program_->pid()).isActive(); }

    // Again and again: the program may not yet have heard what the portal has answered.
    void pressUntilPanel() {
        constexpr std::chrono::seconds aWhile{1};
        waitUntil(
            [&] {
                EXPECT_FALSE(desktop().dialogs().asksForKeys());
                desktop().input().chord({XK_Control_L, XK_Alt_L, XK_space});
                return harness::becomesTrue([&] { return isPanelActive(); }, aWhile);
            },
            QStringLiteral("the hot key opens the panel"));
    }

    std::optional<ProductProcess> program_;
};

TEST_F(GnomeProgramTest, TheHotKeyOpensThePanelAndTheNextStartAsksNobody) {
    startProgram();
    desktop().dialogs().acceptKeys();
    pressUntilPanel();
    EXPECT_FALSE(program_->log().contains("no hot key"));
    program_.reset();
    startProgram();
    pressUntilPanel();
    EXPECT_FALSE(program_->log().contains("no hot key"));
    EXPECT_FALSE(desktop().dialogs().asksForKeys());
}

TEST_F(GnomeProgramTest, RefusedItSaysSoAndLives) {
    startProgram();
    desktop().dialogs().refuseKeys();
    waitUntil([&] { return program_->log().contains("there is no hot key: "); },
              QStringLiteral("the program says why"));
    program_->activateAction(QStringLiteral("transform"));
    waitUntil([&] { return isPanelActive(); }, QStringLiteral("the panel is shown"));
    EXPECT_TRUE(program_->process().isRunning());
    EXPECT_FALSE(desktop().dialogs().asksForKeys());
}

} // namespace
} // namespace quillmender
