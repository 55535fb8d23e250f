#pragma once

#include "desktop/harness/ProductPanel.h"
#include "desktop/harness/wayland/WaylandDesktopTest.h"
#include "desktop/sessions/SessionSteps.h"

namespace quillmender {

/// Whole sessions of the real program on a Wayland desktop of its own, with another application's
/// clipboard of text, HTML, a picture and three megabytes of its own kind. At the end of every test
/// the program's log must be empty, unless the test says otherwise.
class WaylandSessionFixture : public harness::WaylandDesktopTest, public SessionSteps {
  public:
    harness::AnyDesktop &sessionDesktop() override { return desktop(); }

    /// The keyboard of the user with these layouts, and the clipboard. On a compositor that leaves
    /// hot keys to its user's configuration, that has the line which the program's settings offer.
    void startDesktop(harness::WaylandDesktop::Options options = {});

    void start() override;

    /// The window is 0 where the panel is none to the compositor, but a layer.
    using SessionSteps::waitForPanel;
    harness::WindowId waitForPanel() override;
    void waitUntilPanelIsGone() override;

    QPoint middleOf(const harness::Accessible &widget) override;

    static QList<harness::ClipboardRepresentation> offer();

    void TearDown() override;

  protected:
    bool isToBeLogged(const QByteArray &line) override;
    bool panelKeepsKeyboard() const override { return kind() == harness::CompositorKind::sway; }

  private:
    harness::ProductPanel panel();
};

} // namespace quillmender
