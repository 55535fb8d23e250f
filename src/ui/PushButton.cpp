#include "ui/PushButton.h"

#include "ui/TextStyle.h"
#include "ui/style/ButtonStyle.h"
#include "ui/style/Metrics.h"

#include <QMouseEvent>
#include <QStylePainter>

namespace quillmender {

PushButton::PushButton(Theme &theme, const QString &caption, Prominence prominence, QWidget *parent)
    : Button(theme, parent),
      prominence_(prominence) {
    QFont font = fontFor(TextStyle::body);
    font.setWeight(QFont::Medium);
    setFont(font);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setCaption(caption);
}

void PushButton::setQuiet(bool quiet) {
    quiet_ = quiet;
    update();
}

QSize PushButton::sizeHint() const {
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text = caption();
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, QSize(), this);
}

QSize PushButton::minimumSizeHint() const {
    return QSize(metrics::narrowestButton, sizeHint().height());
}

QString PushButton::unreadablePart() const {
    return fontMetrics().horizontalAdvance(caption()) > buttonStyle::captionWidth(width())
               ? caption()
               : QString();
}

Part PushButton::part() const {
    switch (prominence_) {
    case Prominence::standard:
        return quiet_ ? Part::quietButton : Part::button;
    case Prominence::prominent:
        return Part::prominentButton;
    case Prominence::destructive:
        return quiet_ ? Part::quietDestructiveButton : Part::destructiveButton;
    }
    return Part::button;
}

void PushButton::mouseDoubleClickEvent(QMouseEvent *event) {
    if (prominence_ == Prominence::destructive)
        event->accept();
    else
        Button::mouseDoubleClickEvent(event);
}

void PushButton::paintEvent(QPaintEvent *) {
    PushButtonOption option;
    initStyleOption(&option);
    option.text = caption();
    option.part = part();
    QStylePainter(this).drawControl(QStyle::CE_PushButton, option);
}

} // namespace quillmender
