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
constexpr int symbolSize = 20;
constexpr int symbolGap = 12;
constexpr int lineGap = 2;
constexpr int subtitleLines = 2;
} // namespace

ActionTile::ActionTile(Theme &theme, QWidget *parent)
    : Button(theme, parent),
      titleFont_(fontFor(TextStyle::body)),
      subtitleFont_(fontFor(TextStyle::caption)) {
    titleFont_.setWeight(QFont::DemiBold);
}

void ActionTile::setAction(const PromptAction &action) {
    if (action == action_)
        return;
    action_ = action;
    title_ = action.title().simplified();
    subtitle_ = action.subtitle();
    setCaption(action.title());
    setAccessibleDescription(subtitle_);
    update();
}

QSize ActionTile::sizeHint() const {
    const int text = QFontMetrics(titleFont_).height() + lineGap +
                     subtitleLines * QFontMetrics(subtitleFont_).height();
    return QSize(280, std::max(smallestHeight, text + padding));
}

QSize ActionTile::minimumSizeHint() const {
    return QSize(10, sizeHint().height());
}

int ActionTile::textWidth() const {
    return std::max(0, width() - 2 * padding - symbolSize - symbolGap);
}

QString ActionTile::unreadablePart() const {
    QStringList parts;
    if (QFontMetrics(titleFont_).horizontalAdvance(title_) > textWidth())
        parts.append(title_);
    if (QFontMetrics(subtitleFont_).horizontalAdvance(subtitle_) > subtitleLines * textWidth())
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
    const QStringList subtitle = elidedLines(subtitle_, subtitleFont_, textWidth(), subtitleLines);
    const int textHeight =
        titleMetrics.height() + lineGap + int(subtitle.size()) * subtitleMetrics.height();
    const int left = padding + symbolSize + symbolGap;
    int y = (height() - textHeight) / 2;

    const QRect symbolArea(padding, y + (titleMetrics.height() - symbolSize) / 2, symbolSize,
                           symbolSize);
    painter.drawPixmap(symbolArea.topLeft(), theme_.symbol(action_->systemImage(), symbolSize,
                                                           devicePixelRatioF(), look.symbol));

    painter.setFont(titleFont_);
    painter.setPen(look.text);
    drawLine(painter, QRect(left, y, textWidth(), titleMetrics.height()),
             titleMetrics.elidedText(title_, Qt::ElideRight, textWidth()));
    y += titleMetrics.height() + lineGap;
    painter.setFont(subtitleFont_);
    painter.setPen(look.secondaryText);
    for (const QString &line : subtitle) {
        drawLine(painter, QRect(left, y, textWidth(), subtitleMetrics.height()), line);
        y += subtitleMetrics.height();
    }
}

} // namespace quillmender
