#pragma once

#include <functional>

namespace quillmender {

/// Calls the listener on the main thread when the session ends the process (SIGTERM, SIGINT,
/// SIGHUP), so that it can put the user's clipboard back first. A second signal ends it at once.
void onTerminationSignal(std::function<void()> listener);

} // namespace quillmender
