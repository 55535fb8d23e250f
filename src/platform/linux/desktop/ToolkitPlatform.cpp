#include "platform/linux/desktop/ToolkitPlatform.h"

#include <QByteArray>

namespace quillmender {

namespace {

constexpr const char *variable = "QT_QPA_PLATFORM";
// The second serves where the toolkit was installed without the first.
const QByteArray choice = "wayland;xcb";

} // namespace

void chooseToolkitPlatform() {
    if (qgetenv(variable).isEmpty() && !qgetenv("WAYLAND_DISPLAY").isEmpty())
        qputenv(variable, choice);
}

void forgetToolkitPlatform() {
    if (qgetenv(variable) == choice)
        qunsetenv(variable);
}

} // namespace quillmender
