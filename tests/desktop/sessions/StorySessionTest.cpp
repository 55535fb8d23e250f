#include "desktop/sessions/SessionFixture.h"
#include "desktop/sessions/SessionStories.h"

#include <string>

namespace quillmender {
namespace {

/// The sessions that go the same way on every desktop.
class StorySessionTest : public SessionFixture, public testing::WithParamInterface<SessionStory> {};

TEST_P(StorySessionTest, Plays) {
    GetParam().play(*this);
}

INSTANTIATE_TEST_SUITE_P(OnX11, StorySessionTest, testing::ValuesIn(sessionStories()),
                         [](const auto &instance) { return std::string(instance.param.name); });

} // namespace
} // namespace quillmender
