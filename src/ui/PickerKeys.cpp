#include "ui/PickerKeys.h"

#include "ui/InstructionEditor.h"
#include "ui/Neighbours.h"
#include "ui/ScrollRegion.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <optional>
#include <utility>

namespace quillmender {

namespace {

bool isPage(const QKeyEvent &event) {
    return event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
}

/// Where the key leads, when it is one that leads anywhere.
std::optional<Qt::Key> direction(const QKeyEvent &event) {
    if (isPage(event))
        return event.key() == Qt::Key_PageUp ? Qt::Key_Up : Qt::Key_Down;
    if (event.key() >= Qt::Key_Left && event.key() <= Qt::Key_Down)
        return Qt::Key(event.key());
    return std::nullopt;
}

bool isChord(const QKeyEvent &event) {
    return (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier;
}

bool isTyped(const QKeyEvent &event) {
    constexpr auto chords = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const QList<uint> text = event.text().toUcs4();
    return !(event.modifiers() & chords) && event.key() != Qt::Key_Space && !text.isEmpty() &&
           QChar::isPrint(text.first());
}

QString composed(const InstructionEditor &editor) {
    return editor.textCursor().block().layout()->preeditAreaText();
}

bool isComposing(const InstructionEditor &editor) {
    return !composed(editor).isEmpty();
}

bool isInFirstLine(const InstructionEditor &editor) {
    const QTextCursor cursor = editor.textCursor();
    const QTextBlock block = cursor.block();
    if (cursor.hasSelection() || block.blockNumber() > 0 || isComposing(editor))
        return false;
    const QTextLine line = block.layout()->lineForTextPosition(cursor.positionInBlock());
    return !line.isValid() || line.lineNumber() == 0;
}

/// All that Tab walks, and where it stands in the panel with everything scrolled out beneath.
struct Controls {
    QList<QWidget *> widgets;
    QList<QRect> places;

    Controls(const QWidget &panel, const ScrollRegion &region) {
        const QWidget *body = region.widget();
        for (QWidget *widget : panel.findChildren<QWidget *>()) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible() ||
                !widget->isEnabled())
                continue;
            const bool scrolls = body->isAncestorOf(widget);
            QPoint corner = widget->mapTo(scrolls ? body : &panel, QPoint());
            if (!scrolls)
                corner.ry() += body->height();
            widgets.append(widget);
            places.append(QRect(corner, widget->size()));
        }
    }
};

/// The farthest that can be seen together with where the way begins, and the next at least.
std::optional<qsizetype> pageAway(const QList<QRect> &places, qsizetype from, Qt::Key arrow,
                                  int column, int page) {
    std::optional<qsizetype> farthest = neighbour(places, from, arrow, column);
    while (farthest) {
        const auto next = neighbour(places, *farthest, arrow, column);
        if (!next || places[from].united(places[*next]).height() > page)
            break;
        farthest = next;
    }
    return farthest;
}

} // namespace

PickerKeys::PickerKeys(QWidget &panel, ScrollRegion &region, InstructionEditor &editor,
                       FreshKeys::Keyboard keyboard)
    : QObject(&panel),
      panel_(panel),
      region_(region),
      editor_(editor),
      fresh_(std::move(keyboard)) {
    QCoreApplication::instance()->installEventFilter(this);
}

void PickerKeys::reset() {
    column_ = -1;
    ended_.clear();
}

std::chrono::milliseconds PickerKeys::untilRest() const {
    constexpr qint64 pause = 500;
    return std::chrono::milliseconds(
        sinceTyped_.isValid() ? std::max<qint64>(pause - sinceTyped_.elapsed(), 0) : 0);
}

void PickerKeys::noteTyping(bool isTyped) {
    if (isTyped)
        sinceTyped_.start();
    else
        sinceTyped_.invalidate();
}

bool PickerKeys::eventFilter(QObject *watched, QEvent *event) {
    const QEvent::Type type = event->type();
    if (watched == &panel_ && (type == QEvent::WindowDeactivate || type == QEvent::Hide)) {
        fresh_.forget();
        return false;
    }
    const bool isKey = type == QEvent::KeyPress || type == QEvent::KeyRelease;
    if (type == QEvent::MouseButtonPress && watched->isWidgetType() &&
        static_cast<QWidget *>(watched)->window() == &panel_) {
        noteTyping(false);
        if (isClosing_)
            return true;
    }
    if (type == QEvent::InputMethod && watched == &editor_)
        noteCommit(static_cast<QInputMethodEvent &>(*event));
    // A key can come before the toolkit has heard that the window is the active one.
    const QWidget *focused = QApplication::focusWidget();
    if (watched != (focused ? focused : panel_.focusWidget()))
        return false;
    auto *focus = static_cast<QWidget *>(watched);
    if (focus->window() != &panel_)
        return false;
    if (type == QEvent::FocusAboutToChange)
        endComposition(focus);
    return isKey ? handleKey(focus, *static_cast<QKeyEvent *>(event))
                 : isForInstruction(focus) && handleInputMethod(focus, *event);
}

bool PickerKeys::handleInputMethod(QWidget *focus, QEvent &event) {
    switch (event.type()) {
    case QEvent::InputMethod:
        return compose(focus, static_cast<QInputMethodEvent &>(event));
    case QEvent::InputMethodQuery:
        answer(focus, static_cast<QInputMethodQueryEvent &>(event));
        return true;
    default:
        return false;
    }
}

// A click ends a composition before it moves the focus, in the same turn.
void PickerKeys::noteCommit(const QInputMethodEvent &event) {
    if (!event.preeditString().isEmpty())
        ended_.clear();
    if (event.commitString().isEmpty() || event.commitString() != composed(editor_))
        return;
    ended_ = event.commitString();
    sinceEnded_.start();
}

void PickerKeys::endComposition(const QWidget *focus) {
    const QString text = composed(editor_);
    // The editor ends its own by itself.
    if (!text.isEmpty() && focus != &editor_) {
        const QScopedValueRollback leaving(isLeaving_, true);
        QGuiApplication::inputMethod()->commit();
    }
    if (text.isEmpty())
        return;
    ended_ = text;
    sinceEnded_.start();
}

bool PickerKeys::handleKey(QWidget *focus, QKeyEvent &event) {
    if (!fresh_.isFresh(event))
        return true;
    if (event.type() == QEvent::KeyRelease)
        return isClosing_;
    const bool leaves = event.key() == Qt::Key_Escape || event.key() == Qt::Key_Tab;
    noteTyping(isTyped(event) || (focus == &editor_ && !leaves));
    if (isClosing_)
        return true;
    if (focus->isEnabled() && direction(event) && focus->focusPolicy() & Qt::TabFocus)
        return move(focus, event);
    if (!isForInstruction(focus) || !isTyped(event))
        return false;
    editor_.setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(&editor_, &event);
    return true;
}

bool PickerKeys::move(QWidget *focus, const QKeyEvent &event) {
    const Qt::Key arrow = *direction(event);
    const bool isText = focus == &editor_;
    // In a text the arrows are the text's, but for the one that leads out of it. A held key stops
    // at the edge.
    if (isText &&
        (arrow != Qt::Key_Up || isChord(event) || event.isAutoRepeat() || !isInFirstLine(editor_)))
        return false;
    const Controls controls(panel_, region_);
    const qsizetype from = controls.widgets.indexOf(focus);
    if (from < 0)
        return false;
    const QRect &place = controls.places[from];
    // What is wider than a column keeps the one that the eye came from.
    if (column_ < place.left() || column_ > place.right())
        column_ = isText || place.width() > panel_.width() / 2 ? place.left() : place.center().x();
    const auto to = isPage(event) ? pageAway(controls.places, from, arrow, column_,
                                             region_.viewport()->height())
                                  : neighbour(controls.places, from, arrow, column_);
    if (to)
        controls.widgets[*to]->setFocus(Qt::TabFocusReason);
    else if (arrow == Qt::Key_Up)
        region_.verticalScrollBar()->setValue(region_.verticalScrollBar()->minimum());
    return true;
}

bool PickerKeys::isForInstruction(const QWidget *focus) const {
    // What started a run is disabled and still has the focus.
    return focus != &editor_ && editor_.isEnabled() && focus->focusPolicy() & Qt::TabFocus;
}

bool PickerKeys::compose(QWidget *focus, QInputMethodEvent &event) {
    const QString &text = event.commitString();
    const bool isPlainCommit = !text.isEmpty() && event.preeditString().isEmpty();
    // An engine that hears of a change of the focus hands out what the change has ended already.
    constexpr qint64 soon = 500;
    if (isPlainCommit && text == ended_ && !isLeaving_ && sinceEnded_.elapsed() < soon) {
        ended_.clear();
        return true;
    }
    if (!event.preeditString().isEmpty())
        ended_.clear();
    // An engine also says that there is nothing.
    if (!text.isEmpty() || !event.preeditString().isEmpty())
        noteTyping(true);
    if (isClosing_)
        return true;
    // Some input methods make a wide blank of Space.
    auto *button = qobject_cast<QAbstractButton *>(focus);
    if (button && button->isEnabled() && !isComposing(editor_) && !text.isEmpty() &&
        text.trimmed().isEmpty()) {
        button->click();
        return true;
    }
    // The focus stays until the composition has ended, which a change of the focus would end.
    QCoreApplication::sendEvent(&editor_, &event);
    if (isPlainCommit && !isLeaving_)
        editor_.setFocus(Qt::OtherFocusReason);
    else if (!event.preeditString().isEmpty())
        region_.reveal(&editor_);
    return true;
}

void PickerKeys::answer(QWidget *focus, QInputMethodQueryEvent &query) {
    QCoreApplication::sendEvent(&editor_, &query);
    const QPoint offset = focus->mapFromGlobal(editor_.mapToGlobal(QPoint()));
    for (const auto property :
         {Qt::ImCursorRectangle, Qt::ImAnchorRectangle, Qt::ImInputItemClipRectangle}) {
        if (query.queries() & property)
            query.setValue(property, query.value(property).toRectF().translated(offset));
    }
}

} // namespace quillmender
