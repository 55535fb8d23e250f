#pragma once

#include "desktop/harness/AnyDesktop.h"

#include <QPoint>

#include <memory>

namespace quillmender::bench {

class PaintWatch;

enum class StageKind { x11, sway, kwin };

/// A private desktop on which programs are measured, and what differs between window systems in
/// looking at them.
class Stage {
  public:
    static std::unique_ptr<Stage> open(StageKind kind);

    Stage() = default;
    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;
    virtual ~Stage() = default;

    virtual harness::AnyDesktop &desktop() = 0;
    virtual PaintWatch &paint() = 0;

    /// The program beside this one that shows an empty window with Control + Alt + Return.
    virtual QString windowFloor() const = 0;

    /// Waits until a window of the process with that title is shown and has the keyboard.
    virtual void waitForWindow(qint64 processId, const QString &title) = 0;
    /// The user closes it; it has the keyboard.
    virtual void close(qint64 processId, const QString &title) = 0;
    virtual void waitUntilHidden(qint64 processId, const QString &title) = 0;

    /// Where on the screen a widget has its middle, in that window of the process.
    virtual QPoint middleOf(const harness::Accessible &widget, qint64 processId,
                            const QString &title) = 0;
};

} // namespace quillmender::bench
