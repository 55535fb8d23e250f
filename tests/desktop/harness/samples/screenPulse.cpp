// A point without colour that is painted anew with every frame, so that the compositor's screen
// never rests.
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>

namespace {

class Pulse : public QRasterWindow {
  public:
    Pulse() {
        QSurfaceFormat transparent = format();
        transparent.setAlphaBufferSize(8);
        setFormat(transparent);
        setFlags(Qt::FramelessWindowHint);
        resize(1, 1);
    }

  protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(QRect(QPoint(), size()), Qt::transparent);
        update();
    }
};

} // namespace

int main(int argc, char *argv[]) {
    const QGuiApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("screen-pulse"));
    Pulse pulse;
    pulse.show();
    return QGuiApplication::exec();
}
