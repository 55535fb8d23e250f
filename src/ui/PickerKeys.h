#pragma once

#include "ui/FreshKeys.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <chrono>

class QInputMethodEvent;
class QInputMethodQueryEvent;
class QKeyEvent;
class QWidget;

namespace quillmender {

class InstructionEditor;
class ScrollRegion;

/// What keys do in the panel beyond what each control does with its own: arrows and the page keys
/// move as the eye does, what is typed on a button goes to the instruction, and a key that was down already when
/// the panel came does nothing.
class PickerKeys : public QObject {
    Q_OBJECT

  public:
    /// Region and editor are in the panel, which owns this. It comes before every filter that was
    /// installed earlier. `keyboard` as FreshKeys asks it.
    PickerKeys(QWidget &panel, ScrollRegion &region, InstructionEditor &editor,
               FreshKeys::Keyboard keyboard);

    bool eventFilter(QObject *watched, QEvent *event) override;

    /// The column that Up goes back to is forgotten.
    void reset();

    /// How long nothing more may be typed until the hand counts as at rest; 0 when it does.
    std::chrono::milliseconds untilRest() const;

    /// A closing panel keeps every key from going elsewhere, and does nothing with it.
    void setClosing(bool isClosing) { isClosing_ = isClosing; }

  private:
    bool handleKey(QWidget *focus, QKeyEvent &event);
    bool move(QWidget *focus, const QKeyEvent &event);
    bool isForInstruction(const QWidget *focus) const;
    bool handleInputMethod(QWidget *focus, QEvent &event);
    bool compose(QWidget *focus, QInputMethodEvent &event);
    void answer(QWidget *focus, QInputMethodQueryEvent &query);
    void noteCommit(const QInputMethodEvent &event);
    void endComposition(const QWidget *focus);
    void noteTyping(bool isTyped);

    QWidget &panel_;
    ScrollRegion &region_;
    InstructionEditor &editor_;
    FreshKeys fresh_;
    QString ended_; ///< the composition that was ended last
    QElapsedTimer sinceEnded_;
    bool isLeaving_ = false;
    bool isClosing_ = false;
    QElapsedTimer sinceTyped_;
    int column_ = -1; ///< where the eye is, from the panel's left edge
};

} // namespace quillmender
