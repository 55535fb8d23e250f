#pragma once

#include "bench/ScreenCopies.h"
#include "bench/Stage.h"
#include "desktop/harness/wayland/WaylandDesktop.h"

#include <optional>

namespace quillmender::bench {

/// A compositor lists no surface of its layers: the accessibility bus tells what programs show.
class WaylandStage : public Stage {
  public:
    explicit WaylandStage(harness::CompositorKind kind);

    harness::WaylandDesktop &desktop() override { return desktop_; }
    ScreenCopies &paint() override { return paint_; }
    QString windowFloor() const override { return QStringLiteral("floor-layer"); }

    void waitForWindow(qint64 processId, const QString &title) override;
    void close(qint64 processId, const QString &title) override;
    void waitUntilHidden(qint64 processId, const QString &title) override;
    QPoint middleOf(const harness::Accessible &widget, qint64 processId,
                    const QString &title) override;

  private:
    std::optional<harness::Accessible> shown(qint64 processId, const QString &title);

    harness::WaylandDesktop desktop_;
    ScreenCopies paint_{desktop_.compositor().screenSocketPath()};
};

} // namespace quillmender::bench
