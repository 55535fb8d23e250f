#include "desktop/harness/Desktop.h"
#include "desktop/harness/TestApplication.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

// Starts a desktop with an editor, prints its folder and its display, and dies without a chance to
// clean up.
int main(int argc, char *argv[]) {
    const QCoreApplication application(argc, argv);
    quillmender::harness::Desktop desktop;
    const auto editor = quillmender::harness::TestApplication::mousepad(desktop);
    std::printf("%s %s\n", qUtf8Printable(desktop.folders().home()),
                qUtf8Printable(desktop.display()));
    std::fflush(stdout);
    std::raise(SIGKILL);
}
