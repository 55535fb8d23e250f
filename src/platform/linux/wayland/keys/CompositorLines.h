#pragma once

#include <QKeyCombination>
#include <QString>

namespace quillmender::wayland {

/// What a user puts into a compositor's configuration so that keys of theirs do what the hot key
/// would: they run a program that calls this one over the session bus, and start it if need be.
struct CompositorLines {
    QString file;  ///< as the user names it; empty when it is not known
    QString place; ///< where in it, in words for the user
    QString lines; ///< ends with a line feed
    QString after; ///< the command that has the compositor read it; empty when it is not known
};

/// The command alone, in the language of a shell.
QString transformCommand();

CompositorLines linesForSway(QKeyCombination keys);

/// labwc, and what else has the configuration of Openbox.
CompositorLines linesForLabwc(QKeyCombination keys);

/// The command, for whatever place a compositor has for it.
CompositorLines linesForAny(QKeyCombination keys);

} // namespace quillmender::wayland
