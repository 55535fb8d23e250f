#include <QApplication>
#include <gmock/gmock.h>

int main(int argc, char **argv) {
    testing::InitGoogleMock(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // As the toolkit's own option says it, which the interface does not follow.
    QApplication::setLayoutDirection(Qt::RightToLeft);
    return RUN_ALL_TESTS();
}
