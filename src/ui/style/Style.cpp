#include "ui/style/Style.h"

#include "ui/style/ButtonStyle.h"
#include "ui/style/Drawing.h"
#include "ui/style/FieldStyle.h"
#include "ui/style/MenuStyle.h"
#include "ui/style/Metrics.h"
#include "ui/style/PopUpStyle.h"
#include "ui/style/ScrollBarStyle.h"
#include "ui/style/SwitchStyle.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QApplication>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyleOptionComboBox>

namespace quillmender {

namespace {

// Parts of the toolkit without a public class.
bool isListFrame(const QWidget *widget) {
    return widget && widget->inherits("QComboBoxPrivateContainer");
}

bool isToolTip(const QWidget *widget) {
    return widget && widget->inherits("QTipLabel");
}

bool isEditor(const QWidget *widget) {
    return qobject_cast<const QPlainTextEdit *>(widget) != nullptr;
}

template <typename Option> const Option *as(const QStyleOption *option) {
    return qstyleoption_cast<const Option *>(option);
}

} // namespace

Style &Style::installed() {
    if (auto *style = qobject_cast<Style *>(QApplication::style()))
        return *style;
    // The texts are English and nothing is mirrored, whatever the toolkit is told.
    QApplication::setLayoutDirection(Qt::LeftToRight);
    auto *style = new Style;
    QApplication::setStyle(style);
    return *style;
}

Style::Style() : QProxyStyle(QStringLiteral("fusion")) {}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                          const QWidget *widget) const {
    switch (element) {
    case PE_PanelLineEdit:
        fieldStyle::drawField(*painter, *option, colors_);
        return;
    case PE_PanelMenu:
        menuStyle::drawPanel(*painter, *option, colors_, blends());
        return;
    case PE_FrameMenu:
        return;
    case PE_PanelTipLabel:
        menuStyle::drawToolTip(*painter, *option, colors_, blends());
        return;
    case PE_FrameFocusRect:
        drawing::ring(*painter, option->rect, metrics::itemRadius, colors_.accentMark);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                        const QWidget *widget) const {
    const auto *button = as<QStyleOptionButton>(option);
    const auto *item = as<QStyleOptionMenuItem>(option);
    const auto *choice = as<QStyleOptionComboBox>(option);
    if (element == CE_PushButton && button)
        buttonStyle::draw(*painter, *button, colors_);
    else if (element == CE_CheckBox && button)
        switchStyle::draw(*painter, *button, colors_);
    else if (element == CE_ComboBoxLabel && choice)
        popUpStyle::drawLabel(*painter, *choice, colors_);
    else if (element == CE_MenuItem && item)
        menuStyle::drawItem(*painter, *item, colors_);
    else if (element == CE_ShapedFrame && isEditor(widget))
        fieldStyle::drawEditor(*painter, *option, colors_);
    else if (element == CE_ShapedFrame && isListFrame(widget))
        menuStyle::drawPanel(*painter, *option, colors_, blends());
    else if (element != CE_MenuEmptyArea)
        QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                               QPainter *painter, const QWidget *widget) const {
    const auto *choice = as<QStyleOptionComboBox>(option);
    const auto *slider = as<QStyleOptionSlider>(option);
    if (control == CC_ComboBox && choice)
        popUpStyle::drawButton(*painter, *choice, colors_);
    else if (control == CC_ScrollBar && slider)
        scrollBarStyle::draw(*painter, *slider, colors_);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect Style::subElementRect(SubElement element, const QStyleOption *option,
                            const QWidget *widget) const {
    const auto *button = as<QStyleOptionButton>(option);
    switch (element) {
    case SE_LineEditContents:
        return option->rect.adjusted(metrics::fieldPadding, 0, -metrics::fieldPadding, 0);
    case SE_CheckBoxClickRect:
        return option->rect;
    case SE_CheckBoxIndicator:
        return button ? switchStyle::trackOf(*button) : option->rect;
    case SE_CheckBoxContents:
        return button ? switchStyle::textAreaOf(*button) : option->rect;
    default:
        return QProxyStyle::subElementRect(element, option, widget);
    }
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                            SubControl part, const QWidget *widget) const {
    const auto *choice = as<QStyleOptionComboBox>(option);
    const auto *slider = as<QStyleOptionSlider>(option);
    if (control == CC_ComboBox && choice)
        return popUpStyle::partOf(*choice, part);
    if (control == CC_ScrollBar && slider)
        return scrollBarStyle::partOf(*slider, part);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                              const QWidget *widget) const {
    const auto *button = as<QStyleOptionButton>(option);
    const auto *choice = as<QStyleOptionComboBox>(option);
    const auto *item = as<QStyleOptionMenuItem>(option);
    if (type == CT_PushButton && button)
        return buttonStyle::sizeOf(*button);
    if (type == CT_CheckBox && button)
        return switchStyle::sizeOf(*button);
    if (type == CT_ComboBox && choice)
        return popUpStyle::sizeOf(*choice, contents.width());
    if (type == CT_MenuItem && item)
        return menuStyle::sizeOf(*item, contents);
    if (type == CT_LineEdit)
        return QSize(metrics::fieldWidth, fieldStyle::heightOf(*option));
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption *option,
                       const QWidget *widget) const {
    switch (metric) {
    case PM_DefaultFrameWidth:
        if (isListFrame(widget))
            return metrics::floatingPadding;
        return isEditor(widget) ? metrics::editorFrame : int(metrics::hairline);
    case PM_ScrollBarExtent:
        return metrics::scrollBarBreadth;
    case PM_ScrollBarSliderMin:
        return metrics::shortestScrollThumb;
    case PM_ScrollView_ScrollBarSpacing:
    case PM_MenuPanelWidth:
        return 0;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        // The frame of a list has that room already.
        return qobject_cast<const QMenu *>(widget) ? metrics::floatingPadding : 0;
    case PM_ToolTipLabelFrameWidth:
        return metrics::toolTipPadding;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int Style::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                     QStyleHintReturn *answer) const {
    switch (hint) {
    case SH_Menu_Mask:
    case SH_ToolTip_Mask:
        if (auto *mask = qstyleoption_cast<QStyleHintReturnMask *>(answer)) {
            const qreal radius =
                hint == SH_ToolTip_Mask ? metrics::toolTipRadius : metrics::floatingRadius;
            // What is seen through has its round corners already, and softer ones.
            mask->region = blends() ? option->rect : menuStyle::maskOf(option->rect, radius);
            return 1;
        }
        return 0;
    case SH_ComboBox_PopupFrameStyle:
        return QFrame::StyledPanel | QFrame::Plain;
    case SH_ComboBox_Popup:
    case SH_Menu_MouseTracking:
    case SH_ComboBox_ListMouseTracking:
        return 1;
    case SH_LineEdit_PasswordCharacter:
        return metrics::passwordCharacter;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_ScrollBar_Transient:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, answer);
    }
}

void Style::polish(QWidget *widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractSlider *>(widget)) {
        widget->setAttribute(Qt::WA_Hover);
        widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
    }
    // Round corners show what is behind the window.
    if (qobject_cast<QMenu *>(widget) || isListFrame(widget) || isToolTip(widget))
        widget->setAttribute(Qt::WA_TranslucentBackground);
    if (auto *list = qobject_cast<QAbstractItemView *>(widget);
        list && list->inherits("QComboBoxListView"))
        list->viewport()->setAutoFillBackground(false);
}

} // namespace quillmender
