#include "ui/style/Look.h"

namespace quillmender {

namespace {

constexpr double textContrast = 4.5;
constexpr double lineContrast = 3;
constexpr double disabledTextContrast = 2.8;
constexpr double disabledLineContrast = 1.5;
constexpr double noticeable = 1.06;

constexpr double hoverShare = 0.06;
constexpr double pressShare = 0.13;
constexpr double accentHoverShare = 0.12;
constexpr double accentPressShare = 0.22;

constexpr double tileRestOpacity = 0.08;
constexpr double tileHoverOpacity = 0.14;
constexpr double tilePressedOpacity = 0.22;
constexpr double tileOutlineOpacity = 0.12;
constexpr double rowOpacity = 0.08;
constexpr double editorOutlineOpacity = 0.15;

double byState(State state, double hovered, double pressed) {
    return state == State::hovered ? hovered : state == State::pressed ? pressed : 0;
}

QColor readable(const QColor &text, const QColor &fill, const Colors &colors) {
    return visibleOn(text, {fill}, textContrast, colors.strongest);
}

QColor seen(const QColor &mark, const QColor &fill, const Colors &colors) {
    return visibleOn(mark, {fill}, lineContrast, colors.strongest);
}

/// What stands on the fill gives way until it is plain that it does nothing now.
Look disabled(Look look, const QList<QColor> &grounds) {
    const QList<QColor> under = look.fill.isValid() ? QList<QColor>{look.fill} : grounds;
    for (QColor Look::*text : {&Look::text, &Look::secondaryText, &Look::placeholder})
        if ((look.*text).isValid())
            look.*text = faded(look.*text, under, disabledTextContrast);
    if (look.symbol.isValid())
        look.symbol = faded(look.symbol, under, disabledTextContrast);
    if (look.outline.isValid() && look.outlineTells)
        look.outline = faded(look.outline, under, disabledLineContrast);
    look.outlineTells = false;
    look.fillTells = false;
    look.ring = QColor();
    return look;
}

Look label(const Colors &colors) {
    Look look;
    look.text = colors.text;
    look.secondaryText = colors.secondary;
    look.error = colors.error;
    look.success = colors.success;
    return look;
}

Look symbol(const Colors &colors) {
    Look look;
    look.symbol = colors.accentMark;
    return look;
}

Look button(const QColor &text, State state, const Colors &colors) {
    Look look;
    look.fill = mixed(colors.control, colors.text, byState(state, hoverShare, pressShare));
    look.outline = colors.controlOutline;
    look.outlineTells = colors.moreContrast;
    look.text = readable(text, look.fill, colors);
    look.ring = seen(colors.accentMark, look.fill, colors);
    return look;
}

/// The accent, moved away from its text where there is room, so that the text only gains.
QColor shifted(double share, const Colors &colors) {
    const bool textIsLight = colors.onAccent == QColor(Qt::white);
    const QColor away(textIsLight ? Qt::black : Qt::white);
    const QColor candidate = mixed(colors.accentFill, away, share);
    if (share <= 0 || contrast(candidate, colors.accentFill) >= noticeable)
        return candidate;
    return mixed(colors.accentFill, colors.onAccent, share);
}

Look prominentButton(State state, const Colors &colors) {
    Look look;
    if (state == State::disabled) {
        look.fill = mixed(colors.card, colors.text, hoverShare);
        look.text = colors.text;
        return look;
    }
    look.fill = shifted(byState(state, accentHoverShare, accentPressShare), colors);
    look.outline =
        visibleOn(look.fill, {colors.window, colors.card}, lineContrast, colors.strongest);
    look.outlineTells = true;
    look.text = colors.onAccent;
    look.ring = colors.onAccent;
    look.ringPlace = RingPlace::inside;
    return look;
}

/// A caption alone until it is pointed at.
Look quietButton(const QColor &text, const QColor &textAtRest, State state, const Colors &colors) {
    if (state == State::hovered || state == State::pressed)
        return button(text, state, colors);
    Look look;
    look.text = textAtRest;
    look.ring = colors.accentMark;
    return look;
}

Look field(State state, const Colors &colors) {
    Look look;
    look.fill = state == State::disabled ? mixed(colors.textBackground, colors.window, 0.5)
                                         : colors.textBackground;
    look.outline = colors.fieldOutline;
    look.outlineTells = true;
    look.text = colors.text;
    look.placeholder = colors.secondary;
    look.ring = colors.accentMark;
    return look;
}

Look editor(State state, const Colors &colors) {
    Look look = field(state, colors);
    look.halo = withOpacity(colors.secondary, editorOutlineOpacity);
    return look;
}

Look selection(const Colors &colors) {
    Look look;
    look.fill = colors.accentFill;
    look.text = colors.onAccent;
    return look;
}

Look popUpButton(State state, const Colors &colors) {
    Look look = button(colors.text, state, colors);
    look.outline = seen(colors.fieldOutline, look.fill, colors);
    look.outlineTells = true;
    look.symbol = seen(colors.secondary, look.fill, colors);
    return look;
}

Look toggle(const QColor &track, State state, const Colors &colors) {
    Look look;
    look.fill = track;
    look.fillTells = true;
    look.symbol = colors.knob;
    look.ring = colors.accentMark;
    look.ringPlace = RingPlace::around;
    if (state == State::disabled)
        look.fill = faded(track, {colors.card}, disabledLineContrast);
    return look;
}

Look scrollThumb(State state, const Colors &colors) {
    Look look;
    look.fill = mixed(colors.fieldOutline, colors.secondary, byState(state, 0.5, 1));
    look.fillTells = true;
    return look;
}

Look floating(const Colors &colors) {
    Look look;
    look.fill = colors.lifted;
    look.outline = composited(colors.controlOutline, colors.lifted);
    look.text = colors.text;
    return look;
}

Look menuItem(State state, const Colors &colors) {
    const bool highlighted = state == State::hovered || state == State::pressed;
    Look look;
    look.fill = highlighted ? colors.accentFill : colors.lifted;
    look.text = highlighted ? colors.onAccent : colors.text;
    look.secondaryText =
        highlighted ? colors.onAccent : readable(colors.secondary, look.fill, colors);
    look.symbol = highlighted ? colors.onAccent : colors.accentMark;
    return look;
}

Look tile(State state, const Colors &colors) {
    const double opacity = state == State::hovered   ? tileHoverOpacity
                           : state == State::pressed ? tilePressedOpacity
                                                     : tileRestOpacity;
    Look look;
    look.fill = composited(withOpacity(colors.accent, opacity), colors.card);
    // An accent like the card itself would not answer.
    if (opacity > tileRestOpacity && contrast(look.fill, colors.card) < noticeable)
        look.fill = mixed(look.fill, colors.text, byState(state, hoverShare, pressShare));
    // The ring, which takes its place, has the accent for itself where lines are strong.
    look.outline = colors.moreContrast
                       ? visibleOn(composited(colors.cardOutline, colors.card),
                                   {look.fill, colors.window}, lineContrast, colors.strongest)
                       : withOpacity(colors.accentMark, tileOutlineOpacity);
    look.outlineTells = colors.moreContrast;
    look.text = readable(colors.text, look.fill, colors);
    look.secondaryText = readable(colors.secondary, look.fill, colors);
    look.symbol = seen(colors.accentMark, look.fill, colors);
    look.ring = look.symbol;
    return look;
}

Look row(State state, const Colors &colors) {
    const bool stressed = state == State::hovered || state == State::pressed;
    Look look;
    look.fill =
        stressed ? composited(withOpacity(colors.accent, rowOpacity), colors.card) : colors.card;
    look.outline = colors.cardOutline;
    look.ring = colors.accentMark;
    return look;
}

Look lively(Part part, State state, const Colors &colors) {
    switch (part) {
    case Part::label:
        return label(colors);
    case Part::symbol:
        return symbol(colors);
    case Part::button:
        return button(colors.text, state, colors);
    case Part::prominentButton:
        return prominentButton(state, colors);
    case Part::destructiveButton:
        return button(colors.error, state, colors);
    case Part::quietButton:
        return quietButton(colors.text, colors.secondary, state, colors);
    case Part::quietDestructiveButton:
        return quietButton(colors.error, colors.secondary, state, colors);
    case Part::field:
        return field(state, colors);
    case Part::editor:
        return editor(state, colors);
    case Part::selection:
        return selection(colors);
    case Part::popUpButton:
        return popUpButton(state, colors);
    case Part::switchOff:
        return toggle(colors.trackOff, state, colors);
    case Part::switchOn:
        return toggle(colors.trackOn, state, colors);
    case Part::scrollThumb:
        return scrollThumb(state, colors);
    case Part::menu:
    case Part::toolTip:
        return floating(colors);
    case Part::menuItem:
        return menuItem(state, colors);
    case Part::tile:
        return tile(state, colors);
    case Part::row:
        return row(state, colors);
    }
    return {};
}

} // namespace

Look lookOf(Part part, State state, const Colors &colors) {
    const Look look = lively(part, state, colors);
    return state == State::disabled ? disabled(look, groundsOf(part, colors)) : look;
}

QList<QColor> groundsOf(Part part, const Colors &colors) {
    switch (part) {
    case Part::selection:
        return {colors.textBackground};
    case Part::scrollThumb:
        return {colors.window, colors.textBackground, colors.lifted};
    case Part::menuItem:
        return {colors.lifted};
    case Part::tile:
        return {colors.window};
    case Part::row:
        return {colors.card};
    case Part::label:
    case Part::symbol:
    case Part::button:
    case Part::destructiveButton:
    case Part::quietButton:
    case Part::quietDestructiveButton:
        return {colors.card, colors.window, lookOf(Part::row, State::hovered, colors).fill};
    case Part::prominentButton:
    case Part::field:
    case Part::editor:
    case Part::popUpButton:
    case Part::switchOff:
    case Part::switchOn:
    case Part::menu:
    case Part::toolTip:
        return {colors.card, colors.window};
    }
    return {};
}

} // namespace quillmender
