// A window that writes on its standard output whether it is active and what keys it gets. With
// --offered it has no window and writes what the compositor offers to it.

#include "platform/linux/wayland/WaylandConnection.h"
#include "platform/linux/wayland/kwin/FakeInput.h"
#include "platform/linux/wayland/kwin/KeystateModifiers.h"
#include "platform/linux/wayland/kwin/PlasmaToplevels.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QRasterWindow>

#include <cstdio>

using namespace quillmender;

namespace {

void write(const QString &line) {
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

class Window : public QRasterWindow {
  protected:
    void keyPressEvent(QKeyEvent *event) override {
        const bool isModifier = event->key() >= Qt::Key_Shift && event->key() <= Qt::Key_ScrollLock;
        if (!isModifier && !event->isAutoRepeat())
            write(QKeySequence(event->keyCombination()).toString(QKeySequence::PortableText));
    }
    bool event(QEvent *event) override {
        if (event->type() == QEvent::FocusIn)
            write(QStringLiteral("active"));
        if (event->type() == QEvent::FocusOut)
            write(QStringLiteral("inactive"));
        return QRasterWindow::event(event);
    }
};

int writeOffered() {
    const auto connection = wayland::WaylandConnection::open();
    if (!connection)
        return 1;
    write(kwin::PlasmaToplevels::create(*connection) ? QStringLiteral("windows")
                                                     : QStringLiteral("no windows"));
    write(kwin::FakeInput::create(*connection, nullptr, {}) ? QStringLiteral("keys")
                                                            : QStringLiteral("no keys"));
    write(kwin::KeystateModifiers::create(*connection) ? QStringLiteral("modifiers")
                                                       : QStringLiteral("no modifiers"));
    return 0;
}

} // namespace

int main(int argc, char *argv[]) {
    const QGuiApplication application(argc, argv);
    const QString title = QGuiApplication::arguments().value(1);
    if (title == QStringLiteral("--offered"))
        return writeOffered();
    QGuiApplication::setDesktopFileName(QStringLiteral("test.") + title);
    Window window;
    window.setTitle(title);
    window.resize(400, 300);
    window.show();
    return QGuiApplication::exec();
}
