#pragma once

#include "ui/Theme.h"

#include <QWidget>

namespace quillmender {

class Announcer;
class PushButton;
class TextLabel;

/// Lines for a file of the user's, with a button that puts them on the clipboard.
class CopyableLines : public QWidget {
    Q_OBJECT

  public:
    CopyableLines(Theme &theme, const QString &lines, QWidget *parent = nullptr);

  private:
    void copy();

    QString lines_;
    TextLabel *label_;
    PushButton *button_;
    Announcer *announcer_;
};

} // namespace quillmender
