#include <QApplication>
#include <QFont>
#include <gmock/gmock.h>

/// Two screens, one of them lower than our windows, and a text size at which nothing is scaled.
int main(int argc, char **argv) {
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" QUILLMENDER_TEST_SCREENS);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
    return RUN_ALL_TESTS();
}
