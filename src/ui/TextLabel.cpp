#include "ui/TextLabel.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quillmender {

namespace {

// A single user-perceived character may hold any number of combining marks.
constexpr qsizetype longestLaidOut = 20000;

bool isTitle(TextStyle style) {
    return style == TextStyle::largeTitle || style == TextStyle::title ||
           style == TextStyle::headline;
}

QString displayed(const QString &text) {
    QString shown = text.left(longestLaidOut);
    if (shown.size() < text.size())
        shown.append(QChar(0x2026));
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown.replace(u'\n', QChar::LineSeparator);
    return shown;
}

} // namespace

TextLabel::TextLabel(Theme &theme, TextStyle style, Tone tone, QWidget *parent)
    : QLabel(parent),
      theme_(theme),
      tone_(tone),
      isHeading_(isTitle(style)) {
    setTextFormat(Qt::PlainText);
    setFont(fontFor(style));
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

TextLabel::~TextLabel() = default;

void TextLabel::show(const QString &text) {
    if (text == this->text())
        return;
    layout_.reset();
    layoutWidth_ = -1;
    laidOutText_ = displayed(text);
    setText(text);
    updateGeometry();
    update();
}

void TextLabel::setTone(Tone tone) {
    if (tone == tone_)
        return;
    tone_ = tone;
    update();
}

void TextLabel::layOut(int width) const {
    if (layout_ && width == layoutWidth_)
        return;
    layout_ = std::make_unique<QTextLayout>(laidOutText_, font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const bool rightToLeft = laidOutText_.isRightToLeft();
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(rightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    layout_->setTextOption(option);
    layout_->setCacheEnabled(true);
    layout_->beginLayout();
    qreal y = 0;
    for (QTextLine line = layout_->createLine(); line.isValid(); line = layout_->createLine()) {
        line.setLineWidth(std::max(width, 1));
        line.setPosition(QPointF(0, y));
        y += std::ceil(line.height());
    }
    layout_->endLayout();
    layoutWidth_ = width;
    layoutHeight_ = int(std::ceil(y));
}

QList<QRect> TextLabel::lines() const {
    const QRect area = contentsRect();
    layOut(area.width());
    QList<QRect> found;
    for (int i = 0; i < layout_->lineCount(); ++i)
        found.append(layout_->lineAt(i).rect().toAlignedRect().translated(area.topLeft()));
    return found;
}

int TextLabel::heightForWidth(int width) const {
    const QMargins margins = contentsMargins();
    layOut(width - margins.left() - margins.right());
    return std::max(layoutHeight_, fontMetrics().height()) + margins.top() + margins.bottom();
}

QSize TextLabel::sizeHint() const {
    const int natural = fontMetrics().horizontalAdvance(laidOutText_.left(200)) + 1;
    return QSize(std::min(natural, 400), fontMetrics().height()).grownBy(contentsMargins());
}

QSize TextLabel::minimumSizeHint() const {
    return QSize(fontMetrics().averageCharWidth() * 4, fontMetrics().height())
        .grownBy(contentsMargins());
}

QColor TextLabel::color() const {
    const Colors &colors = theme_.colors();
    switch (tone_) {
    case Tone::primary:
        return colors.text;
    case Tone::secondary:
        return colors.secondary;
    case Tone::success:
        return colors.success;
    case Tone::error:
        return colors.error;
    }
    return colors.text;
}

void TextLabel::paintEvent(QPaintEvent *) {
    const QRect area = contentsRect();
    layOut(area.width());
    QPainter painter(this);
    painter.setPen(color());
    layout_->draw(&painter, area.topLeft());
}

void TextLabel::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange) {
        layout_.reset();
        updateGeometry();
    }
    QLabel::changeEvent(event);
}

} // namespace quillmender
