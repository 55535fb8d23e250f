#pragma once

#include "platform/StatusItem.h"

namespace quillmender {

/// The program's status item and what its menu offers.
class StatusMenu {
  public:
    struct Handlers {
        std::function<void()> transformSelection;
        std::function<void()> openSettings;
        std::function<void()> openAvailableUpdate;
        std::function<void()> openAbout;
        std::function<void()> quit;
    };

    /// The status item outlives this object.
    StatusMenu(StatusItem &statusItem, Handlers handlers);

    void show();

    /// Shows the item that downloads the newer release, which is hidden before.
    void offerUpdate(const QString &version);

  private:
    StatusItem &statusItem_;
    Handlers handlers_;
};

} // namespace quillmender
