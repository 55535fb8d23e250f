#include "desktop/harness/TestApplication.h"
#include "desktop/harness/wayland/WaylandDesktop.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

// Starts a desktop of the compositor with that number, and an editor, prints its folder, and dies
// without a chance to clean up.
int main(int argc, char *argv[]) {
    using namespace quillmender::harness;
    const QCoreApplication application(argc, argv);
    const auto kind = static_cast<CompositorKind>(QCoreApplication::arguments().value(1).toInt());
    WaylandDesktop desktop({.kind = kind});
    const auto editor = TestApplication::mousepad(desktop);
    std::printf("%s\n", qUtf8Printable(desktop.folders().home()));
    std::fflush(stdout);
    std::raise(SIGKILL);
}
