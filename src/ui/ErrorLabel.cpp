#include "ui/ErrorLabel.h"

#include "ui/style/Look.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int mostLines = 4;
} // namespace

ErrorLabel::ErrorLabel(Theme &theme, QWidget *parent)
    : TextLabel(theme, TextStyle::body, Tone::error, parent) {
    setMaximumLines(mostLines);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
}

void ErrorLabel::show(const QString &message) {
    if (message != text())
        select(0, 0);
    TextLabel::show(message);
}

QString ErrorLabel::selectedText() const {
    const int first = std::min(anchor_, position_);
    const int last = std::max(anchor_, position_);
    if (first == last)
        return {};
    const QString rest = textFrom(first);
    const bool reachesTheEnd = last >= laidOut().text().size();
    if (first == 0 && reachesTheEnd)
        return text();
    return reachesTheEnd ? rest : rest.left(last - first);
}

int ErrorLabel::positionAt(QPointF point) const {
    const QTextLayout &layout = laidOut();
    const QPointF place = point - QPointF(contentsRect().topLeft());
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        if (place.y() < line.y() + line.height() || i + 1 == layout.lineCount())
            return line.xToCursor(place.x());
    }
    return 0;
}

void ErrorLabel::select(int anchor, int position) {
    anchor_ = anchor;
    position_ = position;
    update();
}

void ErrorLabel::selectAll() {
    select(0, int(laidOut().text().size()));
}

void ErrorLabel::copy() const {
    const QString selected = selectedText();
    QGuiApplication::clipboard()->setText(selected.isEmpty() ? text() : selected);
}

void ErrorLabel::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton)
        return;
    const int position = positionAt(event->position());
    select(event->modifiers() & Qt::ShiftModifier ? anchor_ : position, position);
}

void ErrorLabel::mouseMoveEvent(QMouseEvent *event) {
    if (event->buttons() & Qt::LeftButton)
        select(anchor_, positionAt(event->position()));
}

void ErrorLabel::mouseDoubleClickEvent(QMouseEvent *event) {
    if (event->button() == Qt::LeftButton)
        selectAll();
}

void ErrorLabel::keyPressEvent(QKeyEvent *event) {
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else
        TextLabel::keyPressEvent(event);
}

void ErrorLabel::contextMenuEvent(QContextMenuEvent *event) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Copy"), this, &ErrorLabel::copy);
    menu->addAction(QStringLiteral("Select All"), this, &ErrorLabel::selectAll);
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    menu->popup(isByKey ? mapToGlobal(contentsRect().bottomLeft()) : event->globalPos());
}

void ErrorLabel::focusInEvent(QFocusEvent *event) {
    // It shows where the keyboard is, as in a field.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        selectAll();
    TextLabel::focusInEvent(event);
}

void ErrorLabel::focusOutEvent(QFocusEvent *event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        select(0, 0);
    TextLabel::focusOutEvent(event);
}

void ErrorLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setPen(color());
    QTextLayout::FormatRange selection;
    selection.start = std::min(anchor_, position_);
    selection.length = std::max(anchor_, position_) - selection.start;
    const Look look = lookOf(Part::selection, State::rest, theme_.colors());
    selection.format.setBackground(look.fill);
    selection.format.setForeground(look.text);
    laidOut().draw(&painter, contentsRect().topLeft(), {selection});
}

} // namespace quillmender
