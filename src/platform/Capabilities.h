#pragma once

#include <QMap>
#include <QString>

namespace quillmender {

/// What a session can lack.
enum class Capability {
    sourceApplications, ///< which application is in front, and bringing it there
    clipboard,          ///< the contents that other applications see
    chords,             ///< typing copy and paste for the user
    hotKeys,            ///< the shortcut that works everywhere
    panel,              ///< a panel above other windows that gets the keyboard
};

/// Why, in a sentence for the user. What is not in it is there.
using MissingCapabilities = QMap<Capability, QString>;

} // namespace quillmender
