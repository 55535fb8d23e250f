#pragma once

#include "model/TextAction.h"

#include <QList>

namespace quillmender {

/// A built-in action as the user has it now.
struct BuiltInActionConfig {
    TextAction action = TextAction::formalize;
    QString title;
    QString promptTemplate;
    bool isHidden = false;

    friend bool operator==(const BuiltInActionConfig &, const BuiltInActionConfig &) = default;
};

/// Every built-in action in its order, with its default title and template, none hidden.
QList<BuiltInActionConfig> starterActions();

/// One entry for each built-in action in its order: the first stored one, else the default.
QList<BuiltInActionConfig> reconciledBuiltInActions(const QList<BuiltInActionConfig> &stored);

} // namespace quillmender
