#pragma once

#include <memory>

namespace quillmender::wayland {

/// Ends a protocol object the way its interface has for it; one specialization for each interface
/// that is held in a Proxy.
template <typename T> struct ProxyDeleter;

/// An object of the protocol, held by its one owner.
template <typename T> using Proxy = std::unique_ptr<T, ProxyDeleter<T>>;

} // namespace quillmender::wayland
