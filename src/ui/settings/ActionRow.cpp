#include "ui/settings/ActionRow.h"

#include "ui/PushButton.h"
#include "ui/SymbolView.h"
#include "ui/TextLabel.h"
#include "ui/style/Look.h"
#include "ui/style/Metrics.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

namespace quillmender {

namespace {
constexpr int padding = 8;
constexpr int longestTitle = 3; // lines
constexpr int focusLine = int(metrics::ringWidth);
} // namespace

ActionRow::ActionRow(Theme &theme, QWidget *parent)
    : QWidget(parent),
      theme_(theme),
      symbol_(new SymbolView(theme, symbolForText(), this)),
      title_(new TextLabel(theme, TextStyle::body, TextLabel::Tone::primary, this)),
      caption_(new TextLabel(theme, TextStyle::caption, TextLabel::Tone::secondary, this)),
      edit_(new PushButton(theme, QStringLiteral("Edit"), PushButton::Prominence::standard, this)),
      remove_(new PushButton(theme, QStringLiteral("Remove"), PushButton::Prominence::destructive,
                             this)) {
    setFocusPolicy(Qt::ClickFocus);
    title_->setMaximumLines(longestTitle);
    caption_->show(QStringLiteral("Starter"));
    auto *texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addStretch(1);
    texts->addWidget(title_);
    texts->addWidget(caption_);
    texts->addStretch(1);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, padding, 0, padding);
    row->setSpacing(8);
    row->addWidget(symbol_, 0, Qt::AlignVCenter);
    row->addSpacing(4);
    row->addLayout(texts, 1);
    row->addWidget(edit_, 0, Qt::AlignVCenter);
    row->addWidget(remove_, 0, Qt::AlignVCenter);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
    for (QWidget *button : {edit_, remove_})
        button->installEventFilter(this);
}

void ActionRow::quieten() {
    const bool isAwake = underMouse() || hasFocus() || edit_->hasFocus() || remove_->hasFocus();
    edit_->setQuiet(!isAwake);
    remove_->setQuiet(!isAwake);
}

bool ActionRow::event(QEvent *event) {
    const bool handled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Show:
        quieten();
        break;
    default:
        break;
    }
    return handled;
}

bool ActionRow::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        quieten();
    return QWidget::eventFilter(watched, event);
}

void ActionRow::setItem(const ActionListItem &item) {
    if (item == item_)
        return;
    item_ = item;
    const QString title = actionTitle(item.record());
    symbol_->setSymbol(item.systemImage());
    title_->show(title);
    setAccessibleName(title);
    caption_->setVisible(std::holds_alternative<BuiltInActionConfig>(item.record()));
    // All the rows have the same two captions; the description says whose they are.
    edit_->setAccessibleDescription(title);
    remove_->setAccessibleDescription(title);
}

void ActionRow::paintEvent(QPaintEvent *) {
    const Look look = lookOf(Part::row, hasFocus() ? State::hovered : State::rest, theme_.colors());
    QPainter painter(this);
    if (hasFocus()) {
        painter.fillRect(rect(), look.fill);
        for (const int y : {0, height() - focusLine})
            painter.fillRect(0, y, width(), focusLine, look.ring);
    } else {
        painter.fillRect(0, height() - 1, width(), 1, look.outline);
    }
}

} // namespace quillmender
