#include "ui/ActionTile.h"

#include "ui/ElidedText.h"
#include "ui/TextStyle.h"
#include "ui/style/Drawing.h"
#include "ui/style/Metrics.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace quillmender {

namespace {
constexpr int smallestHeight = 72;
constexpr int padding = 16;
constexpr int leastVerticalPadding = 8;
constexpr int mostVerticalPadding = 12;
constexpr int symbolGap = 12;
constexpr int lineGap = 2;
constexpr int mostTitleLines = 2;
constexpr int mostSubtitleLines = 2;
} // namespace

ActionTile::ActionTile(Theme &theme, QWidget *parent)
    : Button(theme, parent),
      titleFont_(fontFor(TextStyle::body)),
      subtitleFont_(fontFor(TextStyle::caption)) {
    titleFont_.setWeight(QFont::DemiBold);
}

bool ActionTile::setAction(const PromptAction &action) {
    if (action == action_)
        return false;
    action_ = action;
    measuredWidth_ = -1;
    title_ = action.title().simplified();
    subtitle_ = action.subtitle();
    setCaption(action.title());
    setAccessibleDescription(subtitle_);
    update();
    return true;
}

int ActionTile::heightOf(int titleLines, int subtitleLines) const {
    const int text = titleLines * QFontMetrics(titleFont_).height() + lineGap +
                     subtitleLines * QFontMetrics(subtitleFont_).height();
    const int air = std::min(grown(leastVerticalPadding), mostVerticalPadding);
    return std::max(smallestHeight, text + 2 * air);
}

QSize ActionTile::sizeHint() const {
    return QSize(280, heightOf(1, mostSubtitleLines));
}

int ActionTile::heightForWidth(int width) const {
    if (width == measuredWidth_)
        return measuredHeight_;
    const int room = textWidth(width);
    measuredWidth_ = width;
    measuredHeight_ = std::max(
        sizeHint().height(),
        heightOf(int(elidedLines(title_, titleFont_, room, mostTitleLines).size()),
                 int(elidedLines(subtitle_, subtitleFont_, room, mostSubtitleLines).size())));
    return measuredHeight_;
}

QSize ActionTile::minimumSizeHint() const {
    return QSize(10, sizeHint().height());
}

int ActionTile::textWidth(int width) const {
    return std::max(0, width - 2 * padding - symbolForText() - symbolGap);
}

QString ActionTile::unreadablePart() const {
    const auto fits = [this](const QString &text, const QFont &font, int lines) {
        return elidedLines(text, font, textWidth(width()), lines + 1).size() <= lines;
    };
    QStringList parts;
    if (!fits(title_, titleFont_, mostTitleLines))
        parts.append(title_);
    if (!fits(subtitle_, subtitleFont_, mostSubtitleLines))
        parts.append(subtitle_);
    return parts.join(u'\n');
}

void ActionTile::paintEvent(QPaintEvent *) {
    const State state = !isEnabled()  ? State::disabled
                        : isDown()    ? State::pressed
                        : isHovered() ? State::hovered
                                      : State::rest;
    const Look look = lookOf(Part::tile, state, theme_.colors());
    QPainter painter(this);
    drawing::focusable(painter, rect(), metrics::cardRadius, look, hasFocus());

    const QFontMetrics titleMetrics(titleFont_);
    const QFontMetrics subtitleMetrics(subtitleFont_);
    const int room = textWidth(width());
    const QStringList title = elidedLines(title_, titleFont_, room, mostTitleLines);
    const QStringList subtitle = elidedLines(subtitle_, subtitleFont_, room, mostSubtitleLines);
    const int textHeight = int(title.size()) * titleMetrics.height() + lineGap +
                           int(subtitle.size()) * subtitleMetrics.height();
    const int symbol = symbolForText();
    const int left = padding + symbol + symbolGap;
    int y = (height() - textHeight) / 2;

    painter.drawPixmap(
        QPoint(padding, y + (titleMetrics.height() - symbol) / 2),
        theme_.symbol(action_->systemImage(), symbol, devicePixelRatioF(), look.symbol));

    painter.setFont(titleFont_);
    painter.setPen(look.text);
    for (const QString &line : title) {
        drawLine(painter, QRect(left, y, room, titleMetrics.height()), line);
        y += titleMetrics.height();
    }
    y += lineGap;
    painter.setFont(subtitleFont_);
    painter.setPen(look.secondaryText);
    for (const QString &line : subtitle) {
        drawLine(painter, QRect(left, y, room, subtitleMetrics.height()), line);
        y += subtitleMetrics.height();
    }
}

} // namespace quillmender
