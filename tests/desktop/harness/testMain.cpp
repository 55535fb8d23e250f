#include <QCoreApplication>
#include <gtest/gtest.h>

// Harness objects wait in an event loop, which needs an application object.
int main(int argc, char *argv[]) {
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
