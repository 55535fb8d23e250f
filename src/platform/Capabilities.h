#pragma once

#include "platform/Permission.h"

#include <QMap>
#include <QString>

#include <memory>

namespace quillmender {

/// What a session can lack.
enum class Capability {
    sourceApplications, ///< which application is in front, and bringing it there
    clipboard,          ///< the contents that other applications see
    chords,             ///< typing copy and paste for the user
    hotKeys,            ///< the shortcut that works everywhere
    panel,              ///< a panel above other windows that gets the keyboard
};

/// Why something is missing and what the user can do about it, in sentences for the user.
struct Lack {
    Lack() = default;
    Lack(QString why) : sentence(std::move(why)) {}

    QString sentence;
    QString remedy; ///< empty when nothing can be done
    QString lines;  ///< what the remedy wants in a configuration file, as it stands there
    /// By which the user can be asked for it, and then says how it stands; the remedy says what
    /// happens then. Null where nobody can be asked.
    std::shared_ptr<Permission> permission;

    friend bool operator==(const Lack &, const Lack &) = default;
};

/// What is not in it is there.
using MissingCapabilities = QMap<Capability, Lack>;

} // namespace quillmender
