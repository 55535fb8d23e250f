#include "desktop/harness/wayland/OrdinaryUser.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char *argv[]) {
    quillmender::harness::becomeOrdinaryUser(argv);
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
