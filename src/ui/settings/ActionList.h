#pragma once

#include <QWidget>

namespace quillmender {

/// What holds the rows of the actions: a list for assistive technology.
class ActionList : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;
};

} // namespace quillmender
