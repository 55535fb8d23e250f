#include "ui/ScrollRegion.h"

#include "ui/FocusFollower.h"
#include "ui/SlimScrollBar.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>

namespace quillmender {

namespace {

// Between what is brought into view and the edge.
constexpr int revealedAir = 10;

class Hairline : public QWidget {
  public:
    Hairline(Theme &theme, QWidget *parent) : QWidget(parent), theme_(theme) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFixedHeight(1);
        hide();
    }

  protected:
    void paintEvent(QPaintEvent *) override {
        QPainter(this).fillRect(rect(), theme_.colors().controlOutline);
    }

  private:
    Theme &theme_;
};

} // namespace

ScrollRegion::ScrollRegion(Theme &theme, QWidget *content, QWidget *parent)
    : QScrollArea(parent),
      follower_(std::make_unique<FocusFollower>(*this)),
      topEdge_(new Hairline(theme, this)),
      bottomEdge_(new Hairline(theme, this)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBar(new SlimScrollBar(theme, this));
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setAutoFillBackground(false);
    setWidget(content);
    content->setAutoFillBackground(false);
    verticalScrollBar()->setSingleStep(20);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ScrollRegion::placeEdges);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &ScrollRegion::placeEdges);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

ScrollRegion::~ScrollRegion() = default;

QSize ScrollRegion::sizeHint() const {
    return QSize(200, 200);
}

void ScrollRegion::reveal(const QWidget *descendant) {
    const int top = descendant->mapTo(widget(), QPoint()).y();
    ensureVisible(0, top + descendant->height() + revealedAir, 0, 0);
    ensureVisible(0, top - revealedAir, 0, 0);
}

bool ScrollRegion::shows(const QWidget *descendant) const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const QRect place(descendant->mapTo(viewport(), QPoint()), descendant->size());
    return viewport()->rect().contains(place);
}

void ScrollRegion::showTop(QWidget *focus) {
    follower_->expect(focus);
    if (focus)
        focus->setFocus(Qt::ActiveWindowFocusReason);
    verticalScrollBar()->setValue(verticalScrollBar()->minimum());
}

bool ScrollRegion::viewportEvent(QEvent *event) {
    const bool handled = QScrollArea::viewportEvent(event);
    if (event->type() == QEvent::Resize)
        placeEdges();
    return handled;
}

void ScrollRegion::placeEdges() {
    const QScrollBar *bar = verticalScrollBar();
    topEdge_->setGeometry(0, 0, width(), 1);
    bottomEdge_->setGeometry(0, height() - 1, width(), 1);
    topEdge_->setVisible(bar->value() > bar->minimum());
    bottomEdge_->setVisible(bar->value() < bar->maximum());
    topEdge_->raise();
    bottomEdge_->raise();
}

} // namespace quillmender
