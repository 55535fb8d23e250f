#include "ui/SecureField.h"

#include "ui/AccessibleUpdates.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

namespace quillmender {

namespace {

// Where nothing can be copied, undoing and cutting would only lose the text.
bool wouldLoseText(const QKeyEvent &event) {
    return event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo) ||
           event.matches(QKeySequence::Cut);
}

} // namespace

SecureField::SecureField(Theme &theme, QWidget *parent) : TextField(theme, parent) {
    superviseAccessibleUpdates();
    setEchoMode(QLineEdit::Password);
    setDragEnabled(false);
}

void SecureField::forget() {
    render(QString());
}

bool SecureField::event(QEvent *event) {
    if (event->type() == QEvent::ShortcutOverride &&
        wouldLoseText(*static_cast<QKeyEvent *>(event))) {
        event->accept();
        return true;
    }
    return TextField::event(event);
}

void SecureField::keyPressEvent(QKeyEvent *event) {
    if (wouldLoseText(*event))
        event->accept();
    else
        TextField::keyPressEvent(event);
}

void SecureField::contextMenuEvent(QContextMenuEvent *event) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Paste"), this, &QLineEdit::paste)
        ->setEnabled(QGuiApplication::clipboard()->mimeData()->hasText());
    menu->addAction(QStringLiteral("Select All"), this, &QLineEdit::selectAll)
        ->setEnabled(!text().isEmpty());
    menu->popup(event->globalPos());
}

} // namespace quillmender
