#include "ui/TextField.h"

#include "ui/TextStyle.h"
#include "ui/style/Metrics.h"

#include <QFocusEvent>
#include <QScopedValueRollback>
#include <QStyleOptionFrame>

#include <algorithm>

namespace quillmender {

TextField::TextField(Theme &theme, QWidget *parent) : QLineEdit(parent) {
    setAttribute(Qt::WA_MacShowFocusRect, false);
    setFont(fontFor(TextStyle::body));
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
    QStyleOptionFrame option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_LineEdit, &option, QSize(), this);
}

QSize TextField::minimumSizeHint() const {
    return QSize(metrics::narrowestField, sizeHint().height());
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

} // namespace quillmender
