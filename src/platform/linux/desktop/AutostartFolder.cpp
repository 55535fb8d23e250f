#include "platform/linux/desktop/AutostartFolder.h"

#include <QStandardPaths>

namespace quillmender {

QString autostartFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart");
}

} // namespace quillmender
