#include "ui/HostedWindow.h"

#include "ui/ActionPanel.h"
#include "ui/WindowPixels.h"
#include "ui/WindowPlacement.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QVBoxLayout>
#include <QWindow>

namespace quillmender {

namespace {
QWidget *shownPanel() {
    for (QWidget *widget : QApplication::topLevelWidgets())
        if (qobject_cast<ActionPanel *>(widget) && widget->isVisible())
            return widget;
    return nullptr;
}

} // namespace

HostedWindow::HostedWindow(const QString &title, QSize contentSize, QWidget *content,
                           OwnWindows &ownWindows)
    : QWidget(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                           Qt::WindowCloseButtonHint),
      contentSize_(contentSize),
      ownWindows_(ownWindows),
      follower_(*this, contentSize) {
    setWindowTitle(title);
    setAttribute(Qt::WA_QuitOnClose, false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(content);
    centre();
}

void HostedWindow::centre() {
    if (QScreen *screen = screenInUse(ownWindows_))
        centreOnScreen(*this, *screen, contentSize_);
}

QWidget *HostedWindow::sheet() const {
    for (auto *dialog : findChildren<QDialog *>())
        if (dialog->isVisible())
            return dialog;
    return nullptr;
}

void HostedWindow::floatWith(QWidget *panel) {
    create();
    const Qt::WindowFlags before = windowHandle()->flags();
    windowHandle()->setFlag(Qt::WindowStaysOnTopHint, panel != nullptr);
    // The toolkit may have taken the attributes back with the flag.
    if (windowHandle()->flags() != before)
        ownWindows_.applyWindowAttributes(windowHandle());
    if (panel)
        panel->installEventFilter(this);
}

bool HostedWindow::event(QEvent *event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WinIdChange && internalWinId() != 0)
        ownWindows_.applyWindowAttributes(windowHandle());
    if (event->type() == QEvent::Hide && !event->spontaneous())
        releasePixels(*this);
    return handled;
}

bool HostedWindow::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Hide) {
        watched->removeEventFilter(this);
        floatWith(nullptr);
    }
    return QWidget::eventFilter(watched, event);
}

void HostedWindow::makeKeyAndOrderFront() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    floatWith(shownPanel());
    show();
    raise();
    QWidget *front = sheet() ? sheet() : this;
    front->raise();
    front->activateWindow();
    ownWindows_.activate(front->windowHandle());
    // A window that was hidden only for a moment never lost the focus of the window system, and
    // the toolkit then misses that it is the active window again.
    if (QGuiApplication::focusWindow() == front->windowHandle())
        QApplication::setActiveWindow(front);
}

void HostedWindow::closeEvent(QCloseEvent *event) {
    // Accepted, since a refused close event would also refuse to quit.
    event->accept();
}

} // namespace quillmender
