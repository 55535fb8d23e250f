#pragma once

namespace quillmender {

/// Gives the proxies of the environment (`http_proxy`, `https_proxy`, `all_proxy`, and in capitals)
/// a scheme where they have none: `host:port` is the usual way to write an HTTP proxy, and the
/// network library takes it for no proxy at all.
void completeProxyVariables();

} // namespace quillmender
