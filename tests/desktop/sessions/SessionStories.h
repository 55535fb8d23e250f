#pragma once

#include "desktop/sessions/SessionSteps.h"

#include <ostream>
#include <vector>

namespace quillmender {

/// A session that goes the same way on every desktop, from start to end.
struct SessionStory {
    const char *name;
    void (*play)(SessionSteps &session);
};

const std::vector<SessionStory> &sessionStories();

inline void PrintTo(const SessionStory &story, std::ostream *stream) {
    *stream << story.name;
}

} // namespace quillmender
