#include "ui/WholeLines.h"

#include "ui/TextLabel.h"

#include <QEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

namespace quillmender {

WholeLines::WholeLines(Theme &theme, QScrollArea &area)
    : QWidget(area.viewport()),
      theme_(theme),
      area_(area) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(area.viewport()->rect());
    area.viewport()->installEventFilter(this);
    connect(area.verticalScrollBar(), &QScrollBar::valueChanged, this,
            qOverload<>(&QWidget::update));
    connect(area.verticalScrollBar(), &QScrollBar::rangeChanged, this,
            qOverload<>(&QWidget::update));
}

bool WholeLines::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Resize)
        setGeometry(area_.viewport()->rect());
    return QWidget::eventFilter(watched, event);
}

void WholeLines::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    for (const TextLabel *label : area_.widget()->findChildren<TextLabel *>()) {
        const QPoint place = label->mapTo(area_.viewport(), QPoint());
        for (const QRect &line : label->lines()) {
            const QRect here = line.translated(place);
            if (here.intersects(rect()) && (here.top() < 0 || here.bottom() >= height()))
                painter.fillRect(0, here.top(), width(), here.height(), theme_.colors().window);
        }
    }
}

} // namespace quillmender
