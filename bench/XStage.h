#pragma once

#include "bench/DamageWatch.h"
#include "bench/Stage.h"
#include "desktop/harness/Desktop.h"

namespace quillmender::bench {

class XStage : public Stage {
  public:
    harness::Desktop &desktop() override { return desktop_; }
    DamageWatch &paint() override { return paint_; }
    QString windowFloor() const override { return QStringLiteral("floor-window"); }

    void waitForWindow(qint64 processId, const QString &title) override;
    void close(qint64 processId, const QString &title) override;
    void waitUntilHidden(qint64 processId, const QString &title) override;
    QPoint middleOf(const harness::Accessible &widget, qint64 processId,
                    const QString &title) override;

  private:
    harness::Desktop desktop_;
    DamageWatch paint_{desktop_.display()};
};

} // namespace quillmender::bench
