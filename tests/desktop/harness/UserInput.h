#pragma once

#include <QList>
#include <QPoint>
#include <QString>

namespace quillmender::harness {

/// A keyboard and a mouse in the hands of the test's user. Keys are named by X keysyms (XK_...), of
/// the first group of the keyboard's layout unless it says otherwise.
class UserInput {
  public:
    using Keysym = quint32;

    virtual ~UserInput() = default;

    virtual void press(Keysym key) = 0;
    virtual void release(Keysym key) = 0;

    /// Presses the keys in their order and releases them in the opposite one.
    virtual void chord(const QList<Keysym> &keys) = 0;

    /// One stroke per character; a line break is Return. Throws HarnessError for a character that
    /// is not on the keyboard.
    virtual void type(const QString &text) = 0;

    /// Position in pixels of the screen. Button 1 is the left one.
    virtual void movePointer(QPoint position) = 0;
    virtual void click(QPoint position, int button = 1) = 0;
    virtual void doubleClick(QPoint position) = 0;
};

} // namespace quillmender::harness
