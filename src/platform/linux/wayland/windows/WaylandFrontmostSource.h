#pragma once

#include "platform/linux/FrontmostSource.h"
#include "platform/linux/terminal/TerminalCatalog.h"

#include <functional>

namespace quillmender::wayland {

class SourceApplications;
class WaylandRunningApplication;

/// The application in front by what its window says: its process and the name of its .desktop file.
class WaylandFrontmostSource : public FrontmostSource {
  public:
    using ReadPrimary = std::function<QCoro::Task<std::optional<QString>>()>;

    /// `readPrimary` tells the text of the PRIMARY selection; it may be empty. Whose that is nobody
    /// tells on Wayland: it is one of the window that has the keyboard. The applications must
    /// outlive the object.
    WaylandFrontmostSource(SourceApplications &applications, ReadPrimary readPrimary)
        : applications_(applications),
          readPrimary_(std::move(readPrimary)) {}

    RunningApplicationRef application() const override;
    bool isTerminal() const override;
    bool prepareMore() override { return terminals_.prepareMore(); }
    QCoro::Task<std::optional<QString>> primarySelection() override;

    bool isTerminalWindow(const WaylandRunningApplication &application) const;

  private:
    SourceApplications &applications_;
    ReadPrimary readPrimary_;
    TerminalCatalog terminals_;
};

} // namespace quillmender::wayland
