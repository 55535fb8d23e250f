#pragma once

#include "ui/Colors.h"

#include <QProxyStyle>

#include <functional>

namespace quillmender {

/// Paints and measures every control of the program. What it does not know looks as the toolkit
/// has it, in the same palette.
class Style : public QProxyStyle {
    Q_OBJECT

  public:
    /// The application's, which it becomes with the first call.
    static Style &installed();

    Style();

    /// Tells whether a window may be seen through in part, as a compositor has it. Without an
    /// answer it may.
    void setBlending(std::function<bool()> blending) { blending_ = std::move(blending); }

    void setColors(const Colors &colors) { colors_ = colors; }
    const Colors &colors() const { return colors_; }

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption *option,
                         const QWidget *widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                         const QWidget *widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                           const QWidget *widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *answer) const override;
    using QProxyStyle::polish;
    void polish(QWidget *widget) override;

  private:
    bool blends() const { return !blending_ || blending_(); }

    std::function<bool()> blending_;
    Colors colors_ = Colors::make(false, std::nullopt);
};

} // namespace quillmender
