#include "ui/InstructionEditor.h"

#include "ui/SlimScrollBar.h"
#include "ui/TextStyle.h"
#include "ui/style/Metrics.h"

#include <QScopedValueRollback>
#include <QTextBlock>

#include <algorithm>

namespace quillmender {

InstructionEditor::InstructionEditor(Theme &theme, const QString &name, const QString &placeholder,
                                     QWidget *parent)
    : QPlainTextEdit(parent) {
    setAccessibleName(name);
    setAccessibleDescription(placeholder);
    setPlaceholderText(placeholder);
    setFrameShape(QFrame::StyledPanel);
    setFont(fontFor(TextStyle::body));
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new SlimScrollBar(theme, this));
    constexpr int padding = metrics::editorPadding;
    setViewportMargins(padding, padding, padding, padding);
    document()->setDocumentMargin(metrics::documentMargin);
    viewport()->setAutoFillBackground(false);
    setFixedHeight(
        std::max(metrics::editorHeight, 4 * fontMetrics().lineSpacing() + 2 * metrics::textInset));
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

} // namespace quillmender
