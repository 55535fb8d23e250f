#include "ui/InstructionEditor.h"

#include "ui/SlimScrollBar.h"
#include "ui/TextStyle.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QTextBlock>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int smallestHeight = 96;
constexpr int padding = 8;
constexpr qreal cornerRadius = 12;
constexpr double outlineOpacity = 0.15;
} // namespace

InstructionEditor::InstructionEditor(Theme &theme, const QString &name, const QString &placeholder,
                                     QWidget *parent)
    : QPlainTextEdit(parent),
      theme_(theme) {
    setAccessibleName(name);
    setAccessibleDescription(placeholder);
    setPlaceholderText(placeholder);
    setFrameShape(QFrame::NoFrame);
    setFont(fontFor(TextStyle::body));
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new SlimScrollBar(theme, this));
    setViewportMargins(padding, padding, padding, padding);
    document()->setDocumentMargin(4);
    viewport()->setAutoFillBackground(false);
    setFixedHeight(std::max(smallestHeight, 4 * fontMetrics().lineSpacing() + 2 * padding + 8));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        alignToWriting();
        if (rendering_)
            return;
        known_ = exactText();
        Q_EMIT edited(known_);
    });
}

void InstructionEditor::render(const QString &text) {
    if (text == known_)
        return;
    const QScopedValueRollback<bool> guard(rendering_, true);
    known_ = text;
    setPlainText(text);
}

void InstructionEditor::alignToWriting() {
    QTextOption option = document()->defaultTextOption();
    const Qt::Alignment wanted = document()->firstBlock().textDirection() == Qt::RightToLeft
                                     ? Qt::AlignRight
                                     : Qt::AlignLeft;
    if (option.alignment() == wanted)
        return;
    option.setAlignment(wanted);
    document()->setDefaultTextOption(option);
}

QString InstructionEditor::exactText() const {
    // toPlainText() would turn a no-break space into a space.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

bool InstructionEditor::event(QEvent *event) {
    if (event->type() == QEvent::Paint) {
        const Colors &colors = theme_.colors();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const qreal width = hasFocus() ? 2 : 1;
        painter.setPen(hasFocus() ? QPen(colors.accentMark, width)
                                  : QPen(withOpacity(colors.secondary, outlineOpacity), width));
        painter.setBrush(colors.textBackground);
        const qreal inset = width / 2;
        painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                                cornerRadius - inset, cornerRadius - inset);
        return true;
    }
    return QPlainTextEdit::event(event);
}

void InstructionEditor::focusInEvent(QFocusEvent *event) {
    QPlainTextEdit::focusInEvent(event);
    update();
}

void InstructionEditor::focusOutEvent(QFocusEvent *event) {
    QPlainTextEdit::focusOutEvent(event);
    update();
}

} // namespace quillmender
