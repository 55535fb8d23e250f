// A surface over all windows that takes the keyboard, as a launcher or a screen lock does. Says so
// in the file that it is given when it has it.
#include <QFile>
#include <QGuiApplication>
#include <QRasterWindow>

#include <LayerShellQt/Window>

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QRasterWindow window;
    window.resize(200, 100);
    auto *const layer = LayerShellQt::Window::get(&window);
    layer->setLayer(LayerShellQt::Window::LayerOverlay);
    layer->setAnchors({});
    layer->setKeyboardInteractivity(LayerShellQt::Window::KeyboardInteractivityExclusive);
    QObject::connect(&application, &QGuiApplication::focusWindowChanged, &window,
                     [&](QWindow *focused) {
                         QFile file(application.arguments().value(1));
                         if (focused && file.open(QIODevice::WriteOnly))
                             file.close();
                     });
    window.show();
    return QGuiApplication::exec();
}
