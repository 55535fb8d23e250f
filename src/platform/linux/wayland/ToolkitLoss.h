#pragma once

#include <QString>

namespace quillmender::wayland {

/// From now on a toolkit that has lost the compositor ends the program with EXIT_FAILURE and a line
/// in the log. By itself it ends it on the spot with a status of its own, and tells nobody before
/// but the log. What the program has to keep is kept by then: settings are written when they
/// change, and without a compositor there is no clipboard to hand over.
void endWhenToolkitLosesCompositor();

/// Whether the toolkit says by this warning that it has lost the compositor.
bool tellsOfLoss(const QString &warning);

} // namespace quillmender::wayland
