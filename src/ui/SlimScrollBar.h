#pragma once

#include "ui/Theme.h"
#include "ui/style/Metrics.h"

#include <QScrollBar>

namespace quillmender {

/// A narrow vertical scroll bar that is invisible while there is nothing to scroll.
class SlimScrollBar : public QScrollBar {
    Q_OBJECT

  public:
    static constexpr int breadth = metrics::scrollBarBreadth;

    explicit SlimScrollBar(Theme &theme, QWidget *parent = nullptr);
};

} // namespace quillmender
