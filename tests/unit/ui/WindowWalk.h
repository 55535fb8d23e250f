#pragma once

#include <QAccessible>
#include <QApplication>
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

    /// Where Tab goes, from the one that stands highest.
    QList<QAccessibleInterface *> tabStops() const {
        QList<QAccessibleInterface *> stops;
        for (QWidget *next = window_.nextInFocusChain(); next != &window_;
             next = next->nextInFocusChain()) {
            if (next->window() == &window_ && next->isVisible() && next->isEnabled() &&
                !next->focusProxy() && (next->focusPolicy() & Qt::TabFocus) == Qt::TabFocus)
                stops.append(QAccessible::queryAccessibleInterface(next));
        }
        const auto first =
            std::ranges::min_element(stops, {}, [](auto *stop) { return stop->rect().top(); });
        std::ranges::rotate(stops, first);
        return stops;
    }

    void expectNamesAndOrder() const {
        EXPECT_FALSE(objects_.isEmpty());
        for (QAccessibleInterface *object : objects_)
            EXPECT_FALSE(name(object).empty()) << object->role() << " in " << title();
        for (qsizetype i = 1; i < objects_.size(); ++i)
            EXPECT_TRUE(follows(objects_[i - 1]->rect(), objects_[i]->rect()))
                << name(objects_[i]) << " after " << name(objects_[i - 1]) << " in " << title();
        const auto stops = tabStops();
        for (qsizetype i = 1; i < stops.size(); ++i) {
            EXPECT_FALSE(isAbove(stops[i]->rect(), stops[i - 1]->rect()))
                << name(stops[i]) << " after " << name(stops[i - 1]) << " in " << title();
            EXPECT_TRUE(follows(stops[i - 1]->rect(), stops[i]->rect()))
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

    static bool isAbove(const QRect &one, const QRect &other) { return one.bottom() < other.top(); }

    /// Whether the eye comes to `second` after `first`: it is lower, or farther along the line.
    static bool follows(const QRect &first, const QRect &second) {
        return isAbove(first, second) || second.left() >= first.left() + first.width();
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
