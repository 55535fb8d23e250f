#include "ui/AboutWindowController.h"

#include "ui/AboutView.h"
#include "ui/HostedWindow.h"

namespace quillmender {

namespace {
constexpr QSize contentSize(520, 420);
} // namespace

AboutWindowController::AboutWindowController(const QString &version, Theme &theme,
                                             OwnWindows &ownWindows)
    : window_(std::make_unique<HostedWindow>(QStringLiteral("About Quillmender"), contentSize,
                                             new AboutView(theme, version), ownWindows)) {}

AboutWindowController::~AboutWindowController() = default;

void AboutWindowController::centre() {
    window_->centre();
}

void AboutWindowController::makeKeyAndOrderFront() {
    window_->makeKeyAndOrderFront();
}

} // namespace quillmender
