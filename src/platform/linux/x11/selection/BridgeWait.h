#pragma once

#include <QCoroTask>

#include <chrono>

namespace quillmender::x11 {

/// Waits until the X server that `DISPLAY` names has learned of what Wayland programs offer as
/// CLIPBOARD and PRIMARY: the compositor, who is its window manager too (ICCCM, 2.8: the owner of
/// WM_S0), then owns both selections there. It learns in its own time, and until it has, programs
/// of the server paste what another of them offers.
///
/// False when it has not within `limit`. True also where nobody can tell. Does not block; starts
/// the server where the compositor starts it for the first that connects.
QCoro::Task<bool> waitForBridge(std::chrono::milliseconds limit);

} // namespace quillmender::x11
