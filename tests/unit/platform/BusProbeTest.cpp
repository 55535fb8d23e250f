#include "platform/linux/atspi/BusProbe.h"

#include <gtest/gtest.h>

namespace quillmender::atspi {
namespace {

TEST(BusProbeTest, AddressGivesTheSocket) {
    EXPECT_EQ(unixSocketName(QStringLiteral("unix:path=/run/bus,guid=00")),
              QByteArrayLiteral("/run/bus"));
    EXPECT_EQ(unixSocketName(QStringLiteral("unix:guid=00,path=/a%20b")),
              QByteArrayLiteral("/a b"));
    EXPECT_EQ(unixSocketName(QStringLiteral("unix:abstract=/tmp/x,guid=00")),
              QByteArrayLiteral("\0/tmp/x"));
    EXPECT_EQ(unixSocketName(QStringLiteral("tcp:host=localhost,port=1;unix:path=/b")),
              QByteArrayLiteral("/b"));
    for (const auto &bad : {QStringLiteral("tcp:host=localhost"), QString(),
                            QStringLiteral("unix:runtime=yes"), QStringLiteral("nonsense")})
        EXPECT_TRUE(unixSocketName(bad).isEmpty());
}

TEST(BusProbeTest, NobodyThereIsNoBus) {
    for (const auto &address : {QStringLiteral("unix:path=/nonexistent/bus"), QString(),
                                QStringLiteral("unix:path=/") + QString(200, u'x')})
        EXPECT_FALSE(busAuthenticates(address, QDeadlineTimer(1000)));
}

} // namespace
} // namespace quillmender::atspi
