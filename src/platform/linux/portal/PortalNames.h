#pragma once

#include <QString>

namespace quillmender::portal {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace quillmender::portal
