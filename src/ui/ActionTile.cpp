#include "ui/ActionTile.h"

#include "ui/ElidedText.h"
#include "ui/TextStyle.h"

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
constexpr qreal cornerRadius = 14;
constexpr double restOpacity = 0.08;
constexpr double hoverOpacity = 0.14;
constexpr double pressedOpacity = 0.22;
constexpr double outlineOpacity = 0.12;
constexpr double disabledOpacity = 0.4;
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
    const Colors &colors = theme_.colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double opacity = isDown() ? pressedOpacity : (isHovered() ? hoverOpacity : restOpacity);
    painter.setPen(withOpacity(colors.accentMark, outlineOpacity));
    painter.setBrush(withOpacity(colors.accent, opacity));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                            cornerRadius);
    if (hasFocus()) {
        painter.setPen(QPen(colors.accentMark, 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), cornerRadius - 1,
                                cornerRadius - 1);
    }
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);

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
                                                           devicePixelRatioF(), colors.accentMark));

    painter.setFont(titleFont_);
    painter.setPen(colors.text);
    drawLine(painter, QRect(left, y, textWidth(), titleMetrics.height()),
             titleMetrics.elidedText(title_, Qt::ElideRight, textWidth()));
    y += titleMetrics.height() + lineGap;
    painter.setFont(subtitleFont_);
    painter.setPen(colors.secondary);
    for (const QString &line : subtitle) {
        drawLine(painter, QRect(left, y, textWidth(), subtitleMetrics.height()), line);
        y += subtitleMetrics.height();
    }
}

} // namespace quillmender
