#pragma once

#include <QStringList>

namespace quillmender {

/// Starts another program of the user's, which outlives this one and has the limits that this one
/// was started with. What it prints goes nowhere, as it is not ours to log; its working folder is
/// the home folder. False when there is no command or it cannot be executed.
bool startDetached(QStringList command);

} // namespace quillmender
