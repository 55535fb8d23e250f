#include "desktop/gnome/ActivationCount.h"

namespace quillmender {

ActivationCount::ActivationCount(QDBusConnection bus) {
    bus.connect(QStringLiteral("org.freedesktop.portal.Desktop"),
                QStringLiteral("/org/freedesktop/portal/desktop"),
                QStringLiteral("org.freedesktop.portal.GlobalShortcuts"),
                QStringLiteral("Activated"), this, SLOT(add()));
}

} // namespace quillmender
