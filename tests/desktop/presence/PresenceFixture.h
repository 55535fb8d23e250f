#pragma once

#include "desktop/harness/DesktopTest.h"
#include "desktop/harness/ProductProcess.h"

#include <optional>

namespace quillmender {

/// The program on a desktop, seen from outside: status area, bus, windows.
class PresenceFixture : public harness::DesktopTest {
  protected:
    /// Starts it, or starts it once more after it has ended.
    harness::ProductProcess &startProgram(const harness::ProductProcess::Setup &setup = {});
    harness::ProductProcess &program() { return *program_; }
    void waitUntilProgramHasEnded();

    /// Runs a program of this desktop to its end; answers its exit code.
    int run(const QString &program, const QStringList &arguments);

    /// Waits until a window with this title is shown and active.
    xcb_window_t waitForWindow(const QString &title);
    void closeWindow(const QString &title);

    /// Where a menu is open now, whoever shows it.
    std::optional<QRect> menu();
    QRect waitForMenu();

    /// The middle of what the status area shows of the program: its badge's colour. Waits for it.
    QPoint waitForIcon();
    /// Where it is seen now, if it is.
    std::optional<QRect> icon();

    /// Ends the program before the desktop.
    void TearDown() override;

  private:
    bool isMenu(xcb_window_t window);

    std::optional<harness::ProductProcess> program_;
};

} // namespace quillmender
