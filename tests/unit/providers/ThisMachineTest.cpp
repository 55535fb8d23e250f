#include "providers/ThisMachine.h"

#include <QHostInfo>
#include <QNetworkInterface>
#include <QUrl>
#include <gtest/gtest.h>

namespace quillmender::test {

namespace {

bool isHere(const QString &host) {
    return isThisMachine(QUrl(QStringLiteral("http://%1:8080/v1").arg(host)).host());
}

TEST(ThisMachineTest, EverySpellingOfItIsKnown) {
    for (const auto *host : {"localhost",
                             "LOCALHOST",
                             "localhost.",
                             "api.localhost",
                             "api.localhost.",
                             "localhost.localdomain",
                             "ip6-localhost",
                             "ip6-loopback",
                             "127.0.0.1",
                             "127.0.0.1.",
                             "127.1",
                             "127.255.255.254",
                             "2130706433",
                             "0x7f.0.0.1",
                             "0.0.0.0",
                             "0",
                             "[::1]",
                             "[::]",
                             "[0:0:0:0:0:0:0:1]",
                             "[::ffff:127.0.0.1]",
                             "[::ffff:0.0.0.0]"})
        EXPECT_TRUE(isHere(QString::fromUtf8(host))) << host;
}

TEST(ThisMachineTest, ItsOwnNameIsKnown) {
    const QString name = QHostInfo::localHostName();
    ASSERT_FALSE(name.isEmpty());
    EXPECT_TRUE(isHere(name));
    EXPECT_TRUE(isHere(name.toUpper() + u'.'));
    EXPECT_TRUE(isHere(name.section(u'.', 0, 0) + QStringLiteral(".local")));
}

TEST(ThisMachineTest, OthersAreElsewhere) {
    for (const auto *host : {"api.test", "localhost.test", "notlocalhost", "ip6-localhost.test",
                             "128.0.0.1", "10.0.0.1", "[2001:db8::1]", "127.0.0.1.test", "1.0.0.0"})
        EXPECT_FALSE(isHere(QString::fromUtf8(host))) << host;
    EXPECT_FALSE(isThisMachine(QString()));
}

TEST(ThisMachineTest, AnAddressOfAnInterfaceIsOfThisMachine) {
    for (QHostAddress address : QNetworkInterface::allAddresses()) {
        address.setScopeId({});
        const QString shown = address.toString();
        EXPECT_TRUE(address.isLinkLocal() || isThisMachine(shown)) << shown.toStdString();
    }
    EXPECT_FALSE(isThisMachine(QStringLiteral("192.0.2.77")));
}

} // namespace

} // namespace quillmender::test
