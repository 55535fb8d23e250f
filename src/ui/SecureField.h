#pragma once

#include "ui/TextField.h"

namespace quillmender {

/// A field for a secret. It shows bullets, gives its text neither to the clipboard nor to
/// assistive technology, and can be neither undone nor cut: both would only lose it.
class SecureField : public TextField {
    Q_OBJECT

  public:
    explicit SecureField(Theme &theme, QWidget *parent = nullptr);

    /// Drops the text and its history without calling it an edit.
    void forget();

  protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
};

} // namespace quillmender
