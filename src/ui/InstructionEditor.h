#pragma once

#include "ui/Theme.h"

#include <QPlainTextEdit>

namespace quillmender {

/// A rounded multi-line editor of plain text. Tab leaves it.
class InstructionEditor : public QPlainTextEdit {
    Q_OBJECT

  public:
    InstructionEditor(Theme &theme, const QString &name, const QString &placeholder,
                      QWidget *parent = nullptr);

    /// Shows the model's text, unless it is what the user has just typed: cursor and undo history
    /// then stay as they are.
    void render(const QString &text);

    /// The text as it is, no-break spaces included.
    QString exactText() const;

  Q_SIGNALS:
    void edited(const QString &text);

  private:
    void alignToWriting();

    QString known_;
    bool rendering_ = false;
};

} // namespace quillmender
