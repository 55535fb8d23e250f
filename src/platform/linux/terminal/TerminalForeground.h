#pragma once

#include <QtGlobal>

namespace quillmender {

/// Whether pasted line ends are text, not Enter, in every window of the terminal emulator with this
/// process: each of its terminal devices, and each that is shown inside of those, has a full-screen
/// editor and nothing else that reads in its foreground. False when that cannot be told. Takes some
/// milliseconds.
bool hasEditorsOnly(qint64 terminalEmulator);

} // namespace quillmender
