#pragma once

#include <QAccessible>
#include <QApplication>
#include <QScrollArea>
#include <QWidget>
#include <gtest/gtest.h>

namespace quillmender {

/// What assistive technology and the Tab key meet in a window, one after the other.
class WindowWalk {
  public:
    explicit WindowWalk(QWidget &window) : window_(window) {
        collect(QAccessible::queryAccessibleInterface(&window));
    }

    /// The texts and controls that can be seen, in the order of the accessible tree.
    const QList<QAccessibleInterface *> &objects() const { return objects_; }

    /// Where Tab goes.
    QList<QAccessibleInterface *> tabStops() const {
        QList<QAccessibleInterface *> stops;
        for (QWidget *next = window_.nextInFocusChain(); next != &window_;
             next = next->nextInFocusChain()) {
            if (next->window() == &window_ && next->isVisible() && next->isEnabled() &&
                !next->focusProxy() && (next->focusPolicy() & Qt::TabFocus) == Qt::TabFocus)
                stops.append(QAccessible::queryAccessibleInterface(next));
        }
        return stops;
    }

    void expectNamesAndOrder() const {
        EXPECT_FALSE(objects_.isEmpty());
        for (QAccessibleInterface *object : objects_)
            EXPECT_FALSE(name(object).empty()) << object->role() << " in " << title();
        for (qsizetype i = 1; i < objects_.size(); ++i)
            EXPECT_TRUE(follows(objects_[i - 1], objects_[i]))
                << name(objects_[i]) << " after " << name(objects_[i - 1]) << " in " << title();
        const auto stops = tabStops();
        for (qsizetype i = 1; i < stops.size(); ++i) {
            EXPECT_TRUE(follows(stops[i - 1], stops[i]))
                << name(stops[i]) << " after " << name(stops[i - 1]) << " in " << title();
        }
    }

    /// Whatever can get the focus, by Tab or otherwise, says what it is.
    void expectNothingNamelessHasTheFocus() const {
        for (QWidget *widget : window_.findChildren<QWidget *>()) {
            if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() ||
                widget->focusProxy())
                continue;
            QAccessibleInterface *object = QAccessible::queryAccessibleInterface(widget);
            EXPECT_FALSE(name(object).empty())
                << widget->metaObject()->className() << " in " << title();
            EXPECT_NE(object->role(), QAccessible::Client) << name(object) << " in " << title();
        }
        if (QWidget *focus = QApplication::focusWidget()) {
            EXPECT_NE(QAccessible::queryAccessibleInterface(focus)->role(), QAccessible::Client)
                << title();
        }
    }

  private:
    static std::string name(QAccessibleInterface *object) {
        return object->text(QAccessible::Name).toStdString();
    }
    std::string title() const { return window_.windowTitle().toStdString(); }

    static QScrollArea *areaOf(QAccessibleInterface *object) {
        for (QWidget *widget = static_cast<QWidget *>(object->object()); widget;
             widget = widget->parentWidget())
            if (auto *area = qobject_cast<QScrollArea *>(widget->parentWidget()))
                return area;
        return nullptr;
    }

    /// What can be scrolled is where it is scrolled to only for what scrolls with it.
    static QRect placeBeside(QAccessibleInterface *object, QAccessibleInterface *other) {
        const QScrollArea *area = areaOf(object);
        return area && area != areaOf(other) ? QRect(area->mapToGlobal(QPoint()), area->size())
                                             : object->rect();
    }

    /// Whether the eye comes to `second` after `first`: it is lower, or farther along the line.
    static bool follows(QAccessibleInterface *first, QAccessibleInterface *second) {
        const QRect before = placeBeside(first, second);
        const QRect after = placeBeside(second, first);
        return before.bottom() < after.top() || after.left() >= before.left() + before.width();
    }

    void collect(QAccessibleInterface *object) {
        static const QList<QAccessible::Role> read = {
            QAccessible::StaticText, QAccessible::Heading,    QAccessible::Paragraph,
            QAccessible::PushButton, QAccessible::CheckBox,   QAccessible::EditableText,
            QAccessible::ComboBox,   QAccessible::ProgressBar};
        if (object->state().invisible)
            return;
        if (read.contains(object->role())) {
            objects_.append(object);
            return;
        }
        for (int i = 0; i < object->childCount(); ++i)
            collect(object->child(i));
    }

    QWidget &window_;
    QList<QAccessibleInterface *> objects_;
};

} // namespace quillmender
