#pragma once

#include "ui/Theme.h"

#include <QWidget>

class QVBoxLayout;

namespace quillmender {

/// What the program is, which version runs, who made it, and the legal notice.
class AboutView : public QWidget {
    Q_OBJECT

  public:
    AboutView(Theme &theme, const QString &version, QWidget *parent = nullptr);

  private:
    void addName(QVBoxLayout *stack);
    void addLegalNotice(QVBoxLayout *stack);

    Theme &theme_;
};

} // namespace quillmender
