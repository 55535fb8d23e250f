#pragma once

#include <QtGlobal>

#include <optional>
#include <ostream>

class QDBusConnection;

namespace quillmender {

/// What a process holds of things that could leak.
struct ResourceUse {
    qint64 memoryKiB = 0; ///< its own, with its share of what others map too
    qint64 descriptors = 0;
    qint64 threads = 0;
    /// On the session bus, of all its connections; absent when the bus daemon keeps no statistics.
    std::optional<qint64> matchRules;

    static ResourceUse ofProcess(qint64 processId, const QDBusConnection &sessionBus);
};

std::ostream &operator<<(std::ostream &stream, const ResourceUse &use);

} // namespace quillmender
