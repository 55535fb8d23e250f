#pragma once

#include "ui/TextStyle.h"
#include "ui/Theme.h"

#include <QHash>
#include <QLabel>
#include <QList>
#include <QTextLayout>

#include <memory>

namespace quillmender {

/// Plain text that wraps to any width, also inside a word that is longer than a line; each text
/// is laid out in its own direction.
class TextLabel : public QLabel {
    Q_OBJECT

  public:
    enum class Tone { primary, secondary, success, error };

    TextLabel(Theme &theme, TextStyle style, Tone tone, QWidget *parent = nullptr);
    ~TextLabel() override;

    /// Shows the text; nothing happens when it is the same.
    void show(const QString &text);

    /// What is set in a monospaced face: of a text of our own what stands between grave accents, or
    /// all of it.
    enum class Code { none, marked, all };
    void setCode(Code code);

    void setTone(Tone tone);

    /// Shows no more than so many lines; the last one ends in an ellipsis then, and the tool tip
    /// has the whole text.
    void setMaximumLines(int lines);

    /// Whether assistive technology can jump here from section to section. Titles and headlines are
    /// headings unless they say otherwise or label a control.
    bool isHeading() const { return isHeading_ && !buddy(); }
    void setHeading(bool isHeading) { isHeading_ = isHeading; }

    /// Where its lines are, from the first to the last, in its own coordinates.
    QList<QRect> lines() const;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

    /// The lines as they stand in the label.
    const QTextLayout &laidOut() const;
    /// Whether the text goes on beyond the last line.
    bool isCut() const;
    /// What a place in the lines is the beginning of, up to the end of the text.
    QString textFrom(int position) const;
    QColor color() const;

    Theme &theme_;

  private:
    void forgetLayout();
    void layOut(int width) const;
    /// False when it would be more lines than there may be.
    bool layOutLines(const QString &text, int width) const;

    Tone tone_;
    int maximumLines_ = 0; ///< any number
    Code code_ = Code::none;
    bool isHeading_;
    QString laidOutText_;
    mutable std::unique_ptr<QTextLayout> layout_;
    mutable int layoutWidth_ = -1;
    mutable int layoutHeight_ = 0;
    mutable QHash<int, int> heights_; ///< by width: layouts ask for the same ones again and again
};

} // namespace quillmender
