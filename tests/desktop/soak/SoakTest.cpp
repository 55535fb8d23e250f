#include "desktop/sessions/SessionFixture.h"
#include "desktop/soak/ServerResources.h"
#include "desktop/soak/SoakRun.h"

namespace quillmender {
namespace {

using harness::TestApplication;

class SoakTest : public SessionFixture {};

TEST_F(SoakTest, ManySessionsLeaveNothingBehind) {
    start();
    SoakRun run(*this);
    run.add(makeField(*this, TestApplication::mousepad(desktop(), soakLetter())));
    run.add(makeField(*this, TestApplication::gedit(desktop(), soakLetter())));
    run.add(makeField(
        *this, TestApplication::sampleEditor(desktop(), QStringLiteral("plain"), soakLetter())));
    run.add(makeField(
        *this, TestApplication::sampleEditor(desktop(), QStringLiteral("line"), soakLetter())));
    run.play([this] {
        const qint64 resources = serverResources(program().pid(), desktop().display());
        EXPECT_GT(resources, 0);
        return resources;
    });
}

} // namespace
} // namespace quillmender
