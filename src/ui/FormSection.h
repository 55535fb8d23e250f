#pragma once

#include "ui/Theme.h"

#include <QWidget>

class QBoxLayout;
class QVBoxLayout;

namespace quillmender {

class TextLabel;

/// One group of a form: a title above a card with rows. It reads its model in `render`.
class FormSection : public QWidget {
    Q_OBJECT

  public:
    /// An empty title makes a card alone.
    FormSection(Theme &theme, const QString &title, QWidget *parent = nullptr);

    /// Shows what the model has now. Cheap when nothing has changed.
    virtual void render() {}

  protected:
    /// The field stands beside its label, which is its accessible name.
    void addField(const QString &label, QWidget *field);
    TextLabel *addCaption(const QString &text);
    /// `overhang` pixels of the row, at most 3, go beyond the trailing edge of the others.
    void addRow(QWidget *row, int overhang = 0);
    /// From the leading edge; the rest of the row stays free.
    void addButtons(const QList<QWidget *> &buttons);

    QWidget *card() const { return card_; }
    Theme &theme() const { return theme_; }

  private:
    void append(QBoxLayout *line, bool isText, const QMargins &around);

    Theme &theme_;
    QWidget *card_ = nullptr;
    QVBoxLayout *rows_ = nullptr;
};

} // namespace quillmender
