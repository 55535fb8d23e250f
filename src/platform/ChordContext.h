#pragma once

#include <memory>

namespace quillmender {

/// What a chord needs to know of the place that it is typed into. Opaque: accessibility makes it,
/// key events look inside. It belongs to one capture, so that nothing that happens elsewhere
/// meanwhile changes what is typed.
class ChordContext {
  public:
    ChordContext() = default;
    ChordContext(const ChordContext &) = delete;
    ChordContext &operator=(const ChordContext &) = delete;
    virtual ~ChordContext() = default;
};

using ChordContextRef = std::shared_ptr<const ChordContext>;

} // namespace quillmender
