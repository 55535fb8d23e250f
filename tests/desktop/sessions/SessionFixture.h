#pragma once

#include "desktop/harness/ClipboardOwner.h"
#include "desktop/harness/ClipboardProbe.h"
#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/TestApplication.h"
#include "desktop/sessions/SessionSteps.h"

namespace quillmender {

/// Whole sessions of the real program on an X11 desktop of its own: somebody else's clipboard, a
/// provider on the loopback, a real editor. At the end of every test the program's log must be
/// empty, unless the test says otherwise.
class SessionFixture : public harness::DesktopTest, public SessionSteps {
  public:
    harness::AnyDesktop &sessionDesktop() override { return desktop(); }

    /// A desktop whose clipboard holds text, HTML and a picture of another application.
    void startDesktop(const harness::Desktop::Options &options = {});

    /// Both.
    void start() override;

    harness::ClipboardOwner &clipboard() {
        return static_cast<harness::ClipboardOwner &>(clipboardOwner());
    }
    harness::InputDriver &input() { return desktop().input(); }

    using SessionSteps::waitForPanel;
    xcb_window_t waitForPanel() override;
    void waitUntilPanelIsGone() override;

    void TearDown() override;
};

} // namespace quillmender
