// main() of tests with fake services: a session bus of the test's own, which starts no others.

#include "desktop/harness/SessionBus.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <optional>

int main(int argc, char **argv) {
    testing::InitGoogleMock(&argc, argv);
    const QTemporaryDir folder;
    std::optional<quillmender::harness::SessionBus> bus;
    {
        const QCoreApplication beforeTheBus(argc, argv);
        bus.emplace(folder.path(), QProcessEnvironment::systemEnvironment(),
                    folder.filePath(QStringLiteral("bus.log")));
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
    }
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
