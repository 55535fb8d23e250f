#include "ui/TextField.h"

#include "ui/TextStyle.h"

#include <QFocusEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int smallestHeight = 32;
constexpr int padding = 8;
constexpr qreal cornerRadius = 8;
} // namespace

TextField::TextField(Theme &theme, QWidget *parent) : QLineEdit(parent), theme_(theme) {
    setFrame(false);
    setFont(fontFor(TextStyle::body));
    setTextMargins(padding, 0, padding, 0);
    QPalette clear;
    clear.setBrush(QPalette::Base, Qt::transparent);
    setPalette(clear);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
    connect(this, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (rendering_)
            return;
        known_ = text;
        Q_EMIT edited(text);
    });
}

void TextField::render(const QString &text) {
    if (text == known_)
        return;
    const QScopedValueRollback<bool> guard(rendering_, true);
    known_ = text;
    const int cursor = cursorPosition();
    setText(text);
    setCursorPosition(std::min(cursor, int(text.size())));
}

QSize TextField::sizeHint() const {
    return QSize(240, std::max(smallestHeight, fontMetrics().height() + 12));
}

QSize TextField::minimumSizeHint() const {
    return QSize(80, sizeHint().height());
}

void TextField::focusInEvent(QFocusEvent *event) {
    if (!text().isEmpty()) {
        QLineEdit::focusInEvent(event);
        return;
    }
    // Tab selects everything, which is told before the focus is; of an empty field a screen reader
    // then takes that for the news, and does not say which field it is.
    QFocusEvent plain(event->type(), Qt::OtherFocusReason);
    QLineEdit::focusInEvent(&plain);
}

void TextField::paintEvent(QPaintEvent *event) {
    const Colors &colors = theme_.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal width = hasFocus() ? 2 : 1;
    painter.setPen(QPen(hasFocus() ? colors.accentMark : colors.controlOutline, width));
    painter.setBrush(colors.textBackground);
    const qreal inset = width / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                            cornerRadius - inset, cornerRadius - inset);
    painter.end();
    QLineEdit::paintEvent(event);
}

} // namespace quillmender
