#include "desktop/gnome/GnomeSessionFixture.h"
#include "desktop/sessions/SessionStories.h"

namespace quillmender {
namespace {

/// The sessions that go the same way on every desktop.
class GnomeSessionTest : public GnomeSessionFixture,
                         public testing::WithParamInterface<SessionStory> {};

TEST_P(GnomeSessionTest, Plays) {
    GetParam().play(*this);
}

INSTANTIATE_TEST_SUITE_P(On, GnomeSessionTest, testing::ValuesIn(sessionStories()),
                         [](const auto &instance) {
                             return std::string("gnome_") + instance.param.name;
                         });

} // namespace
} // namespace quillmender
