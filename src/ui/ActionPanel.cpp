#include "ui/ActionPanel.h"

#include "ui/Theme.h"
#include "ui/WindowPixels.h"
#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <QCloseEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <QWindow>

namespace quillmender {

ActionPanel::ActionPanel(QWidget *content)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint) {
    setWindowTitle(QStringLiteral("Quillmender"));
    setAttribute(Qt::WA_QuitOnClose, false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(content);
}

void ActionPanel::frameItself(Theme &theme) {
    theme_ = &theme;
    setAttribute(Qt::WA_TranslucentBackground);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void ActionPanel::paintEvent(QPaintEvent *event) {
    if (!theme_) {
        QDialog::paintEvent(event);
        return;
    }
    QPainter painter(this);
    Look look;
    look.fill = theme_->colors().window;
    // Nobody casts a shadow for it: the edge alone tells it from what is behind.
    look.outline = theme_->colors().fieldOutline;
    drawing::surface(painter, rect(), metrics::cardRadius, look);
}

bool ActionPanel::event(QEvent *event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WinIdChange && internalWinId() != 0) {
        windowHandle()->installEventFilter(this);
        Q_EMIT nativeWindowMade();
    }
    if (event->type() == QEvent::Hide && !event->spontaneous())
        releasePixels(*this);
    return handled;
}

bool ActionPanel::eventFilter(QObject *watched, QEvent *event) {
    // The toolkit would destroy the native window, which the next show would have to make anew.
    if (watched == windowHandle() && event->type() == QEvent::Close) {
        hide();
        // A refused close event would also refuse to quit.
        event->accept();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void ActionPanel::keyPressEvent(QKeyEvent *event) {
    event->ignore();
}

void ActionPanel::closeEvent(QCloseEvent *event) {
    // Accepted, since a refused close event would also refuse to quit.
    event->accept();
}

} // namespace quillmender
