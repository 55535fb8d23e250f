#pragma once

#include <set>
#include <string>

#ifdef __OBJC__
@class NSImage;
#endif

namespace quillmender::doubles {

/// The symbols that the system has. Each is a black rectangle, twice as wide as high: its upper
/// half covers wholly, its lower half by a third.
struct Symbols {
    static Symbols &shared();

    std::set<std::string> names{"text.quote", "globe"};
    bool hasNoContext = false; ///< a bitmap cannot be drawn into
};

#ifdef __OBJC__
struct Symbol {
    std::string name;
    std::string description;
    double pointSize = 10;
};

/// An empty one for no image.
Symbol symbolOf(NSImage *image);
#endif

} // namespace quillmender::doubles
