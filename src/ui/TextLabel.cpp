#include "ui/TextLabel.h"

#include "ui/ElidedText.h"
#include "ui/style/Look.h"

#include <QEvent>
#include <QFontDatabase>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace quillmender {

namespace {

// A single user-perceived character may hold any number of combining marks.
constexpr qsizetype longestLaidOut = 20000;
constexpr qsizetype longestLastLine = 2000;

constexpr QChar codeMark = u'`';

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

/// A monospaced face for what stands between two grave accents, or for everything.
QList<QTextLayout::FormatRange> codeFormats(const QString &text, TextLabel::Code code,
                                            int pixelSize) {
    if (code == TextLabel::Code::none)
        return {};
    QFont face = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    face.setPixelSize(pixelSize);
    QTextCharFormat format;
    format.setFont(face);
    if (code == TextLabel::Code::all)
        return {{0, int(text.size()), format}};
    QList<QTextLayout::FormatRange> formats;
    for (qsizetype start = text.indexOf(codeMark); start >= 0;) {
        const qsizetype end = text.indexOf(codeMark, start + 1);
        if (end < 0)
            break;
        formats.append({int(start), int(end - start + 1), format});
        start = text.indexOf(codeMark, end + 1);
    }
    return formats;
}

/// Ends a line before the code that it would break, where the next one has room for it.
void keepTogether(QTextLine &line, const QList<QTextLayout::FormatRange> &codes) {
    const int end = line.textStart() + line.textLength();
    for (const QTextLayout::FormatRange &code : codes) {
        const bool isBroken = code.start < end && end < code.start + code.length;
        if (!isBroken || code.start <= line.textStart())
            continue;
        const QFontMetrics face(code.format.font());
        const QString text = QString(code.length, u'x');
        if (face.horizontalAdvance(text) <= line.width())
            line.setLineWidth(line.cursorToX(code.start));
        return;
    }
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
    laidOutText_ = displayed(text);
    setText(text);
    forgetLayout();
    update();
}

void TextLabel::forgetLayout() {
    layout_.reset();
    heights_.clear();
    updateGeometry();
}

void TextLabel::setCode(Code code) {
    code_ = code;
    forgetLayout();
}

void TextLabel::setTone(Tone tone) {
    if (tone == tone_)
        return;
    tone_ = tone;
    update();
}

void TextLabel::setMaximumLines(int lines) {
    maximumLines_ = lines;
    forgetLayout();
}

void TextLabel::layOut(int width) const {
    if (layout_ && width == layoutWidth_)
        return;
    if (!layOutLines(laidOutText_, width)) {
        const int last = layout_->lineAt(maximumLines_ - 1).textStart();
        QString rest = laidOutText_.mid(last, longestLastLine);
        rest.replace(QChar::LineSeparator, u' ');
        // The ellipsis stands there also where the first words of the rest would fit. Words of both
        // directions take more room among the others than alone.
        rest.append(QChar(0x2026));
        const QString before = laidOutText_.left(last);
        for (int room = width;
             !layOutLines(before + elided(rest, font(), room), width) && room > width / 2;)
            room -= fontMetrics().averageCharWidth();
    }
    layoutWidth_ = width;
}

bool TextLabel::layOutLines(const QString &text, int width) const {
    layout_ = std::make_unique<QTextLayout>(text, font());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const bool rightToLeft = laidOutText_.isRightToLeft();
    option.setTextDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(rightToLeft ? Qt::AlignRight : Qt::AlignLeft);
    layout_->setTextOption(option);
    layout_->setFormats(codeFormats(text, code_, font().pixelSize()));
    layout_->setCacheEnabled(true);
    layout_->beginLayout();
    qreal y = 0;
    bool fits = true;
    for (QTextLine line = layout_->createLine(); line.isValid(); line = layout_->createLine()) {
        line.setLineWidth(std::max(width, 1));
        keepTogether(line, layout_->formats());
        line.setPosition(QPointF(0, y));
        y += std::ceil(line.height());
        fits = maximumLines_ == 0 || layout_->lineCount() <= maximumLines_;
        if (!fits)
            break;
    }
    layout_->endLayout();
    layoutHeight_ = int(std::ceil(y));
    return fits;
}

const QTextLayout &TextLabel::laidOut() const {
    layOut(contentsRect().width());
    return *layout_;
}

bool TextLabel::isCut() const {
    return laidOut().text() != laidOutText_;
}

QString TextLabel::textFrom(int position) const {
    QString text = laidOutText_.mid(position);
    text.replace(QChar::LineSeparator, u'\n');
    return text;
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
    const int room = width - margins.left() - margins.right();
    auto height = heights_.find(room);
    if (height == heights_.end()) {
        constexpr qsizetype manyWidths = 32;
        if (heights_.size() >= manyWidths)
            heights_.clear();
        layOut(room);
        height = heights_.insert(room, std::max(layoutHeight_, fontMetrics().height()));
    }
    return *height + margins.top() + margins.bottom();
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
    const Look look = lookOf(Part::label, State::rest, theme_.colors());
    switch (tone_) {
    case Tone::primary:
        return look.text;
    case Tone::secondary:
        return look.secondaryText;
    case Tone::success:
        return look.success;
    case Tone::error:
        return look.error;
    }
    return look.text;
}

bool TextLabel::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip || maximumLines_ == 0)
        return QLabel::event(event);
    if (isCut())
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                           QStringLiteral("<p>%1</p>").arg(textFrom(0).toHtmlEscaped()), this);
    else
        QToolTip::hideText();
    return true;
}

void TextLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setPen(color());
    laidOut().draw(&painter, contentsRect().topLeft());
}

void TextLabel::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        forgetLayout();
    QLabel::changeEvent(event);
}

} // namespace quillmender
