#include "platform/linux/atspi/FocusMemory.h"

#include <gmock/gmock.h>

namespace quillmender::atspi {
namespace {

ObjectRef object(int service, int path) {
    return {QStringLiteral(":1.%1").arg(service), QStringLiteral("/%1").arg(path)};
}

/// A memory that no bus tells anything.
class FocusMemoryTest : public testing::Test {
  protected:
    AtspiBus bus{QDBusConnection(QStringLiteral("nobody"))};
    BusApplications applications{bus};
    FocusMemory memory{bus, applications};
};

TEST_F(FocusMemoryTest, LatestComesFirstAndOnlyOnce) {
    memory.remember(object(1, 1));
    memory.remember(object(2, 1));
    memory.remember(object(1, 2));
    memory.remember(object(1, 1));
    EXPECT_THAT(memory.latest(QStringLiteral(":1.1")),
                testing::ElementsAre(object(1, 1), object(1, 2)));
    EXPECT_THAT(memory.services(),
                testing::ElementsAre(QStringLiteral(":1.1"), QStringLiteral(":1.2")));
    memory.clear();
    EXPECT_TRUE(memory.services().isEmpty());
    EXPECT_TRUE(memory.latest(QStringLiteral(":1.1")).isEmpty());
}

TEST_F(FocusMemoryTest, OldOnesAreForgotten) {
    for (int path = 0; path < 100; ++path)
        memory.remember(object(0, path));
    EXPECT_LT(memory.latest(QStringLiteral(":1.0")).size(), 10);
    EXPECT_EQ(memory.latest(QStringLiteral(":1.0")).first(), object(0, 99));
    for (int service = 1; service < 1000; ++service)
        memory.remember(object(service, 0));
    EXPECT_LT(memory.services().size(), 100);
    EXPECT_TRUE(memory.latest(QStringLiteral(":1.0")).isEmpty());
    EXPECT_EQ(memory.latest(QStringLiteral(":1.999")).size(), 1);
}

} // namespace
} // namespace quillmender::atspi
