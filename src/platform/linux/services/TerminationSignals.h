#pragma once

#include <functional>

namespace quillmender {

/// Calls the listener once, on the main thread, when the session ends the process (SIGTERM, SIGINT,
/// SIGHUP), so that it can put the user's clipboard back first. Further signals change nothing: a
/// log-out sends several.
void onTerminationSignal(std::function<void()> listener);

} // namespace quillmender
