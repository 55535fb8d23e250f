#include "KdeKey.h"
#include "SwayKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

#include <LayerShellQt/Window>
#include <memory>

namespace {

constexpr QSize windowSize(620, 620);

class Layer : public QWidget {
  public:
    Layer() {
        setWindowTitle(QStringLiteral("Floor"));
        setFixedSize(windowSize);
        winId();
        auto *const layer = LayerShellQt::Window::get(windowHandle());
        layer->setLayer(LayerShellQt::Window::LayerOverlay);
        layer->setAnchors(LayerShellQt::Window::AnchorNone);
        layer->setKeyboardInteractivity(LayerShellQt::Window::KeyboardInteractivityExclusive);
    }

  protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (event->key() == Qt::Key_Escape)
            hide();
    }
};

} // namespace

// The least that answers a hot key with a layer: binds Control + Alt + Return, shows an empty layer
// of the panel's size above everything, and keeps it for the next time. Escape hides it.
int main(int argc, char *argv[]) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    std::unique_ptr<Layer> layer;
    const auto show = [&] {
        if (!layer)
            layer = std::make_unique<Layer>();
        layer->show();
    };
    std::unique_ptr<SwayKey> swayKey;
    std::unique_ptr<KdeKey> kdeKey;
    if (qEnvironmentVariableIsSet("SWAYSOCK"))
        swayKey = std::make_unique<SwayKey>(show);
    else
        kdeKey = std::make_unique<KdeKey>(show);
    return QApplication::exec();
}
