#include "PrivateSession.h"

#include <QApplication>
#include <gmock/gmock.h>

#include <cstdio>

int main(int argc, char **argv) {
    testing::InitGoogleMock(&argc, argv);
    const quillmender::PrivateSession session;
    if (!session.isReady()) {
        std::fputs("dbus-daemon or Xvfb did not start\n", stderr);
        return 1;
    }
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
