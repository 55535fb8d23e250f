#pragma once

#include "desktop/harness/ProductPanel.h"
#include "desktop/harness/gnome/GnomeDesktopTest.h"
#include "desktop/sessions/SessionSteps.h"

namespace quillmender {

/// Whole sessions of the real program on a GNOME desktop of its own, whose user has agreed to the
/// hot key. At the end of every test the program's log must be empty, unless the test says
/// otherwise. Skipped where the program says that it finds no source applications: then it can work
/// in none.
class GnomeSessionFixture : public harness::GnomeDesktopTest, public SessionSteps {
  public:
    harness::AnyDesktop &sessionDesktop() override { return desktop(); }

    void SetUp() override;
    void TearDown() override;

    /// All is started already.
    void start() override {}

    using SessionSteps::waitForPanel;
    harness::WindowId waitForPanel() override;
    void waitUntilPanelIsGone() override;

    QPoint middleOf(const harness::Accessible &widget) override;

  protected:
    bool isToBeLogged(const QByteArray &line) override;

  private:
    harness::ProductPanel panel() { return {desktop(), programId()}; }
    void agreeToHotKey();
};

} // namespace quillmender
