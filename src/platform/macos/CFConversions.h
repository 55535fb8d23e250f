#pragma once

#include "platform/macos/CFRef.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace quillmender {

/// Null when the system has no memory for it.
CFRef<CFStringRef> toCFString(const QString &text);
CFRef<CFDataRef> toCFData(const QByteArray &bytes);

/// Nothing when `value` is null or of another type.
std::optional<QString> stringFrom(CFTypeRef value);
std::optional<QByteArray> bytesFrom(CFTypeRef value);

} // namespace quillmender
